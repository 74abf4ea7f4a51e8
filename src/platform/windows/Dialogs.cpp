#include "platform/Dialogs.h"

#include <windows.h>

#include "platform/windows/FileDialogs.h"
#include "platform/windows/WideText.h"

namespace zelUtilities {

namespace {

class WindowsDialogs : public Dialogs {
 public:
  std::int32_t messageBox(StringView text, StringView title, std::int32_t style) override {
    const int answer = MessageBoxW(nullptr, wide(String(text)), wide(String(title)),
                                   static_cast<UINT>(style) | MB_TASKMODAL);
    // A box that could not be shown, in a service say, must not keep the caller from going on.
    return answer > 0 ? answer : MessageBoxAnswer::Ok;
  }

  std::vector<String> openFiles(const FileQuestion& question) override {
    return fileDialogs::openFiles(question);
  }
  String saveFile(const FileQuestion& question) override { return fileDialogs::saveFile(question); }
  String selectFolder(StringView title, StringView folder) override {
    return fileDialogs::selectFolder(title, folder);
  }
};

}  // namespace

Dialogs& Dialogs::system() {
  static auto& service = *new WindowsDialogs;
  return service;
}

}  // namespace zelUtilities
