#include "files/FileDialogs.h"

#include "files/FilesFixture.h"
#include "files/zelFiles.h"

namespace zelUtilities {
namespace {

class FileDialogs : public FilesFixture {
 protected:
  std::vector<String> openFiles(const FileQuestion& question) override { return answer("open", question); }
  String saveFile(const FileQuestion& question) override {
    const std::vector<String> paths = answer("save", question);
    return paths.empty() ? String() : paths[0];
  }
  String selectFolder(StringView title, StringView start) override {
    FileQuestion question;
    question.title = title;
    question.folder = start;
    return saveFile(question);
  }
  std::vector<String> answer(const std::string& purpose, const FileQuestion& question) {
    if (fails) throw Error(ErrorNumber::CannotCreateObject);
    asked = purpose;
    for (const String& part : {question.title, question.folder, question.name, question.extension,
                               decimalText(question.kind), decimalText(question.several)})
      asked += "|" + toUtf8(part);
    for (const FileKind& kind : question.kinds) asked += "|" + toUtf8(kind.name + u":" + kind.patterns);
    return chosen;
  }

  std::string asked;
  std::vector<String> chosen = {u"C:\\a.txt", u"C:\\b.txt"};
  bool fails = false;
};

TEST_F(FileDialogs, AskWithTheFiltersOfAList) {
  const auto filters = make<zelFileFilters>();
  filters->Create(u"txt", u"*.txt;*.log", u"Texts");
  filters->Create(u"All files", u"*.*");
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

// Asks all questions late, with nothing given but to be asked for several files at last.
TEST_F(FileDialogs, CancellingIsEmptyAndAFailureIsLoggedBesides) {
  FunctionClass zelFilesObject(zelFiles::describeClass());
  zelFilesObject.retain();
  const auto expectAll = [&](StringView answer) {
    for (const StringView name : {u"zel_GetOpenFilename", u"zel_GetSaveAsFilename", u"zel_SelectFolder"})
      EXPECT_EQ(toText(zelFilesObject.Invoke(name, InvokeKind::Method, {})), answer);
  };
  expectAll(u"C:\\a.txt");
  for (const bool failing : {false, true}) {
    chosen.clear();
    fails = failing;
    EXPECT_TRUE(logged.empty());
    expectAll(u"");
    EXPECT_EQ(toText(zel_GetOpenFilename({}, u"", u"", u"", 1, true)), u"");
  }
  EXPECT_THAT(logged, testing::ElementsAre("zelFiles.zel_GetOpenFilename", "zelFiles.zel_GetSaveAsFilename",
                                           "zelFiles.zel_SelectFolder", "zelFiles.zel_GetOpenFilename"));
}

}  // namespace
}  // namespace zelUtilities
