// FilesFixture: a folder of the test's own, the message boxes that are shown, and what is logged.
#pragma once

#include <gmock/gmock.h>

#include "automation/Error.h"
#include "foundation/ErrorWatch.h"
#include "platform/Dialogs.h"
#include "platform/Files.h"

namespace zelUtilities {

class FilesFixture : public ::testing::Test, private Dialogs {
 protected:
  FilesFixture() {
    do {
      folder = files().temporaryFolder() + u"\\zelFiles" + decimalText(++counter);
    } while (files().folderExists(folder));
    files().createFolder(folder);
  }
  ~FilesFixture() override { files().removeFolder(folder, true); }

  String path(StringView name) const { return folder + u"\\" + String(name); }
  String put(StringView name, std::string_view bytes = "x",
             std::uint32_t attributes = FileAttribute::Normal) {
    files().replaceWhole(path(name), bytes);
    if (attributes != FileAttribute::Normal) files().setAttributes(path(name), attributes);
    return path(name);
  }
  String putFolder(StringView name) {
    files().createFolder(path(name));
    return path(name);
  }
  std::string bytesIn(StringView name) const { return files().readWhole(path(name)); }

  String folder;
  std::string boxes;                // as "[style|title|text]", with the folder's name left out
  std::vector<std::string> logged;  // sources

 private:
  std::int32_t messageBox(StringView text, StringView title, std::int32_t style) override {
    String shown = u"[" + decimalText(style) + u"|" + String(title) + u"|" + String(text) + u"]";
    if (const auto at = shown.find(folder + u"\\"); at != String::npos) shown.erase(at, folder.size() + 1);
    boxes += toUtf8(shown);
    return MessageBoxAnswer::Ok;
  }

  static inline int counter = 0;
  Replaced<Dialogs> dialogs_{*this};
  ErrorWatch watch_{[this](const ErrorReport& report) { logged.push_back(toUtf8(report.source)); }};
};

}  // namespace zelUtilities
