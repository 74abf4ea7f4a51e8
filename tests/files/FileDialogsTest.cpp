#include "files/FileDialogs.h"

#include "files/FilesFixture.h"
#include "files/zelFiles.h"
#include "platform/LateBound.h"
#include "support/Spelled.h"

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

// Asks all questions late, with nothing given but to be asked for several files at last.
TEST_F(FileDialogs, CancellingIsEmptyAndAFailureIsLoggedBesides) {
  const LateBound functions(Ref<Object>(make<FunctionClass>(zelFiles::describeClass())));
  const auto answers = [&] {
    return spelled({functions(u"zel_GetOpenFilename"), functions(u"zel_GetSaveAsFilename"),
                    functions(u"zel_SelectFolder"), zel_GetOpenFilename({}, u"", u"", u"", 1, true)});
  };
  chosen = {u"C:\\a.txt"};
  EXPECT_EQ(answers(), "C:\\a.txt|C:\\a.txt|C:\\a.txt|Variant()") << "an array even of one";
  const Variant one = zel_GetOpenFilename({}, u"", u"", u"", 1, true);
  EXPECT_EQ(one.array().bounds()[0].lower, 0);
  ASSERT_EQ(one.array().size(), 1u);
  EXPECT_EQ(toText(one.array().at(0)), u"C:\\a.txt");
  chosen.clear();
  EXPECT_EQ(answers(), "|||");
  EXPECT_TRUE(logged.empty());
  fails = true;
  EXPECT_EQ(answers(), "|||");
  EXPECT_THAT(logged, testing::ElementsAre("zelFiles.zel_GetOpenFilename", "zelFiles.zel_GetSaveAsFilename",
                                           "zelFiles.zel_SelectFolder", "zelFiles.zel_GetOpenFilename"));
}

}  // namespace
}  // namespace zelUtilities
