#include "files/FileDialogs.h"

#include <gmock/gmock.h>

#include "automation/ArrayData.h"
#include "automation/Conversions.h"
#include "automation/Error.h"
#include "files/zelFiles.h"
#include "foundation/ErrorWatch.h"
#include "platform/Dialogs.h"

namespace zelUtilities {
namespace {

using testing::ElementsAre;

class FileDialogs : public testing::Test, public Dialogs {
 protected:
  std::int32_t messageBox(StringView, StringView, std::int32_t) override { return MessageBoxAnswer::Ok; }
  std::vector<String> openFiles(const FileQuestion& question) override { return answer("open", question); }
  String saveFile(const FileQuestion& question) override {
    const std::vector<String> paths = answer("save", question);
    return paths.empty() ? String() : paths[0];
  }
  String selectFolder(StringView title, StringView folder) override {
    FileQuestion question;
    question.title = title;
    question.folder = folder;
    return saveFile(question);
  }

  std::vector<String> answer(const std::string& purpose, const FileQuestion& question) {
    if (fails) throw Error(ErrorNumber::CannotCreateObject);
    asked =
        purpose + "|" +
        toUtf8(question.title + u"|" + question.folder + u"|" + question.name + u"|" + question.extension) +
        "|" + std::to_string(question.kind) + "|" + std::to_string(question.several);
    for (const FileKind& kind : question.kinds) asked += "|" + toUtf8(kind.name + u":" + kind.patterns);
    return chosen;
  }

  std::string asked;
  std::vector<String> chosen;
  bool fails = false;
  Replaced<Dialogs> replaced{*this};
  std::vector<std::string> logged;
  ErrorWatch watch{[this](const ErrorReport& report) { logged.push_back(toUtf8(report.source)); }};
};

TEST_F(FileDialogs, AskWithTheFiltersOfAList) {
  const auto filters = make<zelFileFilters>();
  filters->Create(u"txt", u"*.txt;*.log", u"Texts");
  filters->Create(u"All files", u"*.*");
  chosen = {u"C:\\a.txt", u"C:\\b.txt"};
  EXPECT_EQ(toText(zel_GetOpenFilename(filters, u"C:\\Data", u"Open", u".txt", 2)), u"C:\\a.txt");
  EXPECT_EQ(asked, "open|Open|C:\\Data||txt|2|0|Texts:*.txt;*.log|All files:*.*");
  EXPECT_EQ(zel_GetSaveAsFilename(filters, u"C:\\Data", u"Save", u"txt", 1, u"new.txt"), u"C:\\a.txt");
  EXPECT_EQ(asked, "save|Save|C:\\Data|new.txt|txt|1|0|Texts:*.txt;*.log|All files:*.*");
  EXPECT_EQ(zel_SelectFolder(u"Choose", u"C:\\"), u"C:\\a.txt");
  EXPECT_EQ(asked, "save|Choose|C:\\|||1|0");
}

TEST_F(FileDialogs, SeveralFilesComeAsAnArrayEvenOfOne) {
  chosen = {u"C:\\a.txt"};
  const Variant one = zel_GetOpenFilename({}, u"", u"", u"", 1, true);
  ASSERT_EQ(toUtf8(typeName(one)), "Variant()");
  EXPECT_EQ(one.array().bounds()[0].lower, 0);
  ASSERT_EQ(one.array().size(), 1u);
  EXPECT_EQ(toText(one.array().at(0)), u"C:\\a.txt");
}

TEST_F(FileDialogs, CancellingIsEmptyAndAFailureIsLoggedBesides) {
  const auto all = [] {
    EXPECT_EQ(toText(zel_GetOpenFilename()), u"");
    EXPECT_EQ(toText(zel_GetOpenFilename({}, u"", u"", u"", 1, true)), u"");
    EXPECT_EQ(zel_GetSaveAsFilename(), u"");
    EXPECT_EQ(zel_SelectFolder(), u"");
  };
  all();
  EXPECT_EQ(logged.size(), 0u);
  fails = true;
  all();
  EXPECT_THAT(logged, ElementsAre("zelFiles.zel_GetOpenFilename", "zelFiles.zel_GetOpenFilename",
                                  "zelFiles.zel_GetSaveAsFilename", "zelFiles.zel_SelectFolder"));
}

TEST_F(FileDialogs, MayBeCalledLateWithNothingGiven) {
  chosen = {u"C:\\a.txt"};
  FunctionClass zelFilesObject(zelFiles::describeClass());
  zelFilesObject.retain();
  for (const StringView operation : {u"zel_GetOpenFilename", u"zel_GetSaveAsFilename", u"zel_SelectFolder"})
    EXPECT_EQ(toText(zelFilesObject.Invoke(operation, InvokeKind::Method, {})), u"C:\\a.txt");
}

}  // namespace
}  // namespace zelUtilities
