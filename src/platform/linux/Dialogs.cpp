#include "platform/Dialogs.h"

#include <cstdio>

#include "platform/linux/FileChooser.h"

namespace zelUtilities {

namespace {

class LinuxDialogs : public Dialogs {
 public:
  std::int32_t messageBox(StringView text, StringView title, std::int32_t) override {
    // One write, so that boxes of several threads do not mix.
    const std::string lines = toUtf8(title) + "\n" + toUtf8(text) + "\n";
    std::fwrite(lines.data(), 1, lines.size(), stderr);
    return MessageBoxAnswer::Ok;
  }

  std::vector<String> openFiles(const FileQuestion& question) override {
    return fileChooser::openFiles(question);
  }
  String saveFile(const FileQuestion& question) override { return fileChooser::saveFile(question); }
  String selectFolder(StringView title, StringView folder) override {
    return fileChooser::selectFolder(title, folder);
  }
};

}  // namespace

Dialogs& Dialogs::system() {
  static auto& service = *new LinuxDialogs;
  return service;
}

}  // namespace zelUtilities
