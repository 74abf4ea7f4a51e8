// Lists of files, and the questions that ask the user for files.

#include "files/FileDialogs.h"
#include "files/FilesFixture.h"
#include "files/zelFileFilters.h"
#include "files/zelFileList.h"
#include "files/zelFiles.h"
#include "platform/LateBound.h"
#include "support/Testing.h"

namespace zelUtilities {
namespace {

class FileLists : public FilesFixture {};

TEST_F(FileLists, AFileKnowsItsSizeAndDateFromItsPath) {
  const auto file = make<zelFile>();
  file->setFullPath(put(u"Report.TXT", std::string(1536, 'x')));
  EXPECT_EQ(propertiesOf(*file, u"Size SizeKB Extension Name Selected"), "1536|1.5|txt|Report.TXT|True");
  EXPECT_EQ(file->Folder(), folder);
  const Date date = file->FileDate();
  EXPECT_EQ(date, files().details(file->FullPath()).modified);
  file->setName(u"Mine");
  EXPECT_EQ(file->Name(), u"Mine");
  file->setName(u"");
  EXPECT_EQ(file->Name(), u"Report.TXT");
  for (const String& none : {path(u"no"), folder, String()}) {
    file->setFullPath(none);
    EXPECT_EQ(file->Size(), 0);
    EXPECT_EQ(file->FileDate(), date) << "a missing file leaves the date";
  }
}

TEST_F(FileLists, ASizeIsAtLeastOneKilobyteAndHalvesRoundToEven) {
  const auto file = make<zelFile>();
  std::string sizes = toUtf8(file->SizeAsString());
  for (const std::int32_t size : {0, 1023, 1536, 2560, 2561, -9999, 2147483647}) {
    file->setSize(size);
    sizes += ", " + toUtf8(file->SizeAsString());
  }
  EXPECT_EQ(sizes, "1 KB, 1 KB, 1 KB, 2 KB, 2 KB, 3 KB, 1 KB, 2097152 KB");
}

TEST_F(FileLists, FilesLieUnderTheirPaths) {
  const auto list = make<zelFileList>();
  EXPECT_EQ(list->SelectedCount(), 0);
  EXPECT_EQ(list->Create(put(u"a.txt"))->Size(), 1);
  EXPECT_FALSE(list->Create(path(u"no"), u"gone", false)->Selected());
  EXPECT_TRUE(list->Create(u"")) << "no path is a path like any other";
  EXPECT_EQ(list->Item(3), list->Item(u""));
  EXPECT_FALSE(list->Create(path(u"A.TXT")) || list->Add(nullptr));
  EXPECT_EQ(reports.taken(), "zelFileList.Add|457 zelFileList.Add|91 ");
  EXPECT_EQ(list->Item(path(u"NO"))->Comment(), u"gone");
  EXPECT_EQ(spelled({list->SelectedCount(), list->Remove(1), list->Count()}), "2|True|2");
  list->Clear();
  EXPECT_EQ(list->Count(), 0);
}

TEST_F(FileLists, FiltersLieUnderTheirKeys) {
  const auto filters = make<zelFileFilters>();
  const Ref<zelFileFilter> texts = filters->Create(u"txt", u"*.txt;*.log", u"Texts");
  texts->setKey(u"other");
  EXPECT_EQ(propertiesOf(*texts, u"Key Name"), "txt|Texts");
  EXPECT_EQ(filters->Create(u"1", u"*")->Name(), u"1") << "the key while there is no name";
  EXPECT_EQ(filters->Item(u"1")->Filter(), u"*") << "a text is a key";
  EXPECT_EQ(make<zelFileFilter>()->Filter(), u"*.*");
  EXPECT_FALSE(filters->Create(u"TXT", u"*"));
  EXPECT_FALSE(filters->Item(u"no") || filters->Item(3) || filters->Remove(u"no"));
  EXPECT_EQ(reports.taken(),
            "zelFileFilters.Add|457 zelFileFilters.Item|5 zelFileFilters.Item|9 zelFileFilters.Remove|5 ");
}

TEST_F(FileLists, AClientReachesEveryMember) {
  const LateBound list(zelFileList::describeClass().create());
  const LateBound file = list.object(u"Create", path(u"a.txt"));
  constexpr auto members =
      u"Name Comment DSOURL POPServer POPAccount POPPassword From ReplyTo Tag Size POPPort";
  setProperties(*file.get(), members, {u"n", u"c", u"d", u"s", u"a", u"p", u"f", u"r", u"t", 5, 6});
  EXPECT_EQ(propertiesOf(*file.get(), members), "n|c|d|s|a|p|f|r|t|5|6");
}

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
  fails = true;
  EXPECT_EQ(answers(), "|||");
  EXPECT_EQ(reports.taken(),
            "zelFiles.zel_GetOpenFilename|429 zelFiles.zel_GetSaveAsFilename|429 "
            "zelFiles.zel_SelectFolder|429 zelFiles.zel_GetOpenFilename|429 ");
}

}  // namespace
}  // namespace zelUtilities
