#include "platform/Dialogs.h"

#include <cstdio>

namespace zelUtilities {

namespace {

class StandardErrorDialogs : public Dialogs {
 public:
  std::int32_t messageBox(StringView text, StringView title, std::int32_t) override {
    // One write, so that boxes of several threads do not mix.
    const std::string lines = toUtf8(title) + "\n" + toUtf8(text) + "\n";
    std::fwrite(lines.data(), 1, lines.size(), stderr);
    return MessageBoxAnswer::Ok;
  }
};

}  // namespace

Dialogs& Dialogs::system() {
  static auto& service = *new StandardErrorDialogs;
  return service;
}

}  // namespace zelUtilities
