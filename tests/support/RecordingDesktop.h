// RecordingDesktop: a desktop that writes down what is asked of it, one line each, and answers as told.
#pragma once

#include <string>

#include "automation/Error.h"
#include "platform/Desktop.h"

namespace zelUtilities {

class RecordingDesktop : public Desktop {
 public:
  std::int32_t windowStyle(WindowHandle window) override { return window == 7 ? style : 0; }
  void stackWindow(WindowHandle window, WindowHandle insertAfter, std::uint32_t flags) override {
    calls += std::to_string(window) + " " + std::to_string(insertAfter) + " " + std::to_string(flags) + "\n";
  }
  WindowHandle htmlHelp(StringView, std::int32_t command, std::int32_t data) override {
    calls += "html " + std::to_string(command) + " " + std::to_string(data) + "\n";
    return data != unknownContext ? 100 + command : 0;
  }
  void windowHelp(StringView, std::int32_t command, std::int32_t data) override {
    calls += "window " + std::to_string(command) + " " + std::to_string(data) + "\n";
    if (data == unknownContext) throw Error(ErrorNumber::FileNotFound);
  }
  std::vector<ScreenArea> workAreas() override { return screens; }
  TwipsPerPixel twipsPerPixel() override { return {}; }

  static constexpr std::int32_t unknownContext = 99;
  std::int32_t style = 0;  // of the window 7, the only one
  std::vector<ScreenArea> screens;
  std::string calls;

 private:
  Replaced<Desktop> inForce_{*this};
};

}  // namespace zelUtilities
