// FilesFixture: a folder of the test's own, the message boxes that are shown, and what is logged.
#pragma once

#include <functional>
#include <optional>

#include "automation/ArrayData.h"
#include "platform/Dialogs.h"
#include "support/FailingFiles.h"
#include "support/FileTree.h"
#include "support/Testing.h"

namespace zelUtilities {

class FilesFixture : public ::testing::Test, protected Dialogs {
 protected:
  FilesFixture() {
    do {
      folder = files().temporaryFolder() + u"\\zelFiles" + decimalText(++counter);
    } while (files().folderExists(folder));
    files().createFolder(folder);
  }
  ~FilesFixture() override { files().removeFolder(folder, true); }

  String path(StringView name) const { return folder + u"\\" + String(name); }
  void given(const std::string& tree) {
    files().removeFolder(folder, true);
    files().createFolder(folder);
    makeTree(folder, tree);
  }
  String put(StringView name, std::string_view bytes = "x") {
    files().replaceWhole(path(name), bytes);
    return path(name);
  }
  std::string bytesIn(StringView name) const { return files().readWhole(path(name)); }

  // What an operation gives (of an array the type), or "number|source|description" of what it raises, and
  // behind it the boxes shown.
  std::string outcome(const std::function<Variant()>& operation) {
    boxes.clear();
    std::string result;
    const std::string raised = raisedError([&] {
      const Variant value = operation();
      result = toUtf8(value.isNull() || value.isArray() ? typeName(value) : toText(value));
    });
    return (raised == "nothing" ? result : raised) + boxes;
  }

  // The outcome where the folder holds these files; and " -> " and what it then holds, if that is not the
  // same.
  std::string resultOver(const std::string& before, const std::function<Variant()>& operation,
                         const std::string& failingCall = {}, std::int32_t number = 0, int letThrough = 0) {
    given(before);
    FailingFiles failing(failingCall, number, letThrough);
    std::optional<Replaced<Files>> replaced(failing);
    const std::string result = outcome(operation);
    replaced.reset();
    const std::string after = treeIn(folder);
    return after == before ? result : result + " -> " + after;
  }

  String folder;
  std::string boxes;  // as "[style|title|text]", with the folder's name left out
  Reports reports{""};

 private:
  std::int32_t messageBox(StringView text, StringView title, std::int32_t style) override {
    String shown = u"[" + decimalText(style) + u"|" + String(title) + u"|" + String(text) + u"]";
    if (const auto at = shown.find(folder + u"\\"); at != String::npos) shown.erase(at, folder.size() + 1);
    boxes += toUtf8(shown);
    return MessageBoxAnswer::Ok;
  }

  static inline int counter = 0;
  Replaced<Dialogs> dialogs_{*this};
};

}  // namespace zelUtilities
