#include "platform/Desktop.h"

#include "automation/Error.h"
#include "platform/Files.h"
#include "platform/linux/ChildProcess.h"

namespace zelUtilities {

namespace {

// By whatever program the user's desktop has for such a file.
void openFile(StringView file) {
  const std::string opener = findProgram("xdg-open");
  if (opener.empty())
    throw Error(ErrorNumber::FileNotFound, {},
                u"A help file is opened by the program xdg-open, which is not on PATH.");
  startDetached({opener, toUtf8(files().fullPath(file))});
}

// There are no windows whose numbers a client could have.
class LinuxDesktop : public Desktop {
 public:
  std::int32_t windowStyle(WindowHandle) override { return 0; }

  void stackWindow(WindowHandle, WindowHandle, std::uint32_t) override {}

  WindowHandle htmlHelp(StringView file, std::int32_t command, std::int32_t) override {
    if (command != HtmlHelpCommand::Context) openFile(file);
    return 0;
  }

  void windowHelp(StringView file, std::int32_t, std::int32_t) override { openFile(file); }

  std::vector<ScreenArea> workAreas() override { return {}; }

  TwipsPerPixel twipsPerPixel() override { return {}; }
};

}  // namespace

Desktop& Desktop::system() {
  static auto& service = *new LinuxDesktop;
  return service;
}

}  // namespace zelUtilities
