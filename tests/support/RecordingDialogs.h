// RecordingDialogs: message boxes that nobody sees, kept for the test.
#pragma once

#include <vector>

#include "platform/Dialogs.h"

namespace zelUtilities {

class RecordingDialogs : public Dialogs {
 public:
  struct Box {
    String text;
    String title;
    std::int32_t style;

    friend bool operator==(const Box&, const Box&) = default;
  };

  std::int32_t messageBox(StringView text, StringView title, std::int32_t style) override {
    boxes.push_back({String(text), String(title), style});
    return MessageBoxAnswer::Ok;
  }

  std::vector<Box> boxes;
};

}  // namespace zelUtilities
