// What every platform answers about files; names are given as clients give them, with backslashes.
#include "platform/Files.h"

#include <gtest/gtest.h>

#include <map>
#include <thread>

#include "automation/Error.h"
#include "platform/FilePattern.h"
#include "support/FileTree.h"

namespace zelUtilities {
namespace {

// The number that the action raises, 0 when it raises nothing.
template <class Action>
std::int32_t raised(Action action) {
  try {
    action();
  } catch (const Error& error) {
    EXPECT_EQ(error.source(), u"");
    EXPECT_EQ(error.description(), errorText(error.number()));
    return error.number();
  }
  return 0;
}

// What can be done to a name, and with another one.
using Operation = void (*)(StringView, StringView);
const std::map<std::string, Operation> operations = {
    {"read", [](StringView a, StringView) { files().readWhole(a); }},
    {"replace", [](StringView a, StringView) { files().replaceWhole(a, "new"); }},
    {"overwrite", [](StringView a, StringView) { files().overwrite(a, "new"); }},
    {"append", [](StringView a, StringView) { files().append(a, "new"); }},
    {"remove", [](StringView a, StringView) { files().remove(a); }},
    {"removeForced", [](StringView a, StringView) { files().remove(a, true); }},
    {"details", [](StringView a, StringView) { files().details(a); }},
    {"attributes", [](StringView a, StringView) { files().attributes(a); }},
    {"copy", [](StringView a, StringView b) { files().copy(a, b); }},
    {"copyNew", [](StringView a, StringView b) { files().copy(a, b, false); }},
    {"rename", [](StringView a, StringView b) { files().rename(a, b); }},
    {"renameOver", [](StringView a, StringView b) { files().rename(a, b, true); }},
    {"createFolder", [](StringView a, StringView) { files().createFolder(a); }},
    {"removeFolder", [](StringView a, StringView) { files().removeFolder(a); }},
    {"removeFolderForced", [](StringView a, StringView) { files().removeFolder(a, true); }},
};

struct Row {
  std::string before, operation, from, to;
  std::int32_t raised;
  std::string after = "as before";
};

class FilesContract : public testing::Test {
 protected:
  FilesContract() {
    if (files().folderExists(folder_)) files().removeFolder(folder_, true);
    files().createFolder(folder_);
  }
  ~FilesContract() override { files().removeFolder(folder_, true); }

  String in(StringView name) const { return folder_ + u"\\" + String(name); }
  void given(const std::string& tree) {
    files().removeFolder(folder_, true);
    files().createFolder(folder_);
    makeTree(folder_, tree);
  }
  void expectRows(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
      SCOPED_TRACE(row.before + ": " + row.operation + " " + row.from + " " + row.to);
      given(row.before);
      const String from = in(fromUtf8(row.from)), to = in(fromUtf8(row.to));
      EXPECT_EQ(raised([&] { operations.at(row.operation)(from, to); }), row.raised);
      EXPECT_EQ(treeIn(folder_), row.after == "as before" ? row.before : row.after);
    }
  }
  void expectAllRaise(StringView name, std::int32_t number) {
    for (const auto& [called, operation] : operations)
      EXPECT_EQ(raised([&] { operation(name, u"other"); }), number) << called;
  }
  // Whether the file system keeps attributes beside a file; where not, tests of them have nothing to test.
  bool keepsAttributes() {
    files().replaceWhole(in(u"probe"), "");
    const bool kept = raised([&] { files().setAttributes(in(u"probe"), FileAttribute::Hidden); }) == 0;
    files().remove(in(u"probe"));
    return kept;
  }

  const String folder_ = u"files-contract";
};

TEST_F(FilesContract, ContentsComeBackByteForByte) {
  std::string every;
  for (int i = 0; i < 256; ++i) every.push_back(static_cast<char>(i));
  for (const std::string& contents :
       {every + "\r\n\n\r\x1A after the end mark", std::string("short"), std::string()}) {
    files().replaceWhole(in(u"a.bin"), contents);
    EXPECT_EQ(files().readWhole(in(u"a.bin")), contents);
    EXPECT_EQ(files().details(in(u"a.bin")).length, contents.size());
    EXPECT_EQ(treeIn(folder_).substr(0, 6), "a.bin=") << "and nothing else in the folder";
  }
}

TEST_F(FilesContract, AnOpenFileIsReadPieceByPieceUpToWhereItEnded) {
  files().replaceWhole(in(u"a"), "0123456789");
  const auto file = files().open(in(u"a"));
  EXPECT_EQ(file->length(), 10u);
  files().append(in(u"a"), "later");
  std::string piece(7, ' ');
  EXPECT_EQ(file->read(piece), 7u);
  EXPECT_EQ(piece, "0123456");
  EXPECT_EQ(file->read(piece), 3u);
  EXPECT_EQ(piece, "7893456");
  EXPECT_EQ(file->read(piece), 0u);
  EXPECT_EQ(raised([&] { files().open(in(u"none")); }), ErrorNumber::FileNotFound);
}

TEST_F(FilesContract, NamesAreKeptInEveryScriptAndFoundInAnyLetterCaseAndWithBothSeparators) {
  const String name = u"Gr\u00F6\u00DFe \u65E5\u672C \u20AC.txt";
  files().replaceWhole(in(name), "x");
  EXPECT_EQ(files().findFirst(in(u"GR*")), name);
  given("Data\\ Data\\Settings.INI");
  EXPECT_TRUE(files().fileExists(in(u"DATA/settings.ini")));
  EXPECT_EQ(files().findFirst(in(u"data\\SETTINGS.ini")), u"Settings.INI");
  expectRows({{"Data\\ Data\\A", "replace", "data/a", "", 0, "Data\\ Data\\A=new"},
              {"Data\\ Data\\A", "remove", "DATA\\a", "", 0, "Data\\"}});
}

TEST_F(FilesContract, AMissingFileAndAMissingFolderAreDifferentFailures) {
  expectAllRaise(in(u"no\\a"), ErrorNumber::PathNotFound);
  for (const char* operation : {"read", "details", "copy", "rename", "remove"})
    expectRows({{"", operation, "no", "a", ErrorNumber::FileNotFound}});
}

TEST_F(FilesContract, NamesThatCanBeNoFilesAreRefusedAndNameNothing) {
  for (const StringView name :
       {StringView(u""), StringView(u"a\0b", 3), StringView(u"*.txt"), StringView(u"a?")}) {
    expectAllRaise(name, ErrorNumber::BadFileName);
    EXPECT_FALSE(files().fileExists(name) || files().folderExists(name) || files().isSame(name, name));
  }
  EXPECT_EQ(files().findFirst(u"") + files().findFirst(StringView(u"a\0b", 3)), u"");
}

TEST_F(FilesContract, OnlyAFoldersNameEndsInASeparator) {
  for (const char* operation : {"read", "replace", "overwrite", "append", "remove", "details", "copy"})
    expectRows({{"a", operation, "a\\", "b", ErrorNumber::PathNotFound},
                {"a", operation, "new\\", "b", ErrorNumber::PathNotFound}});
  for (const char* operation : {"copy", "copyNew", "rename", "renameOver"})
    expectRows({{"a", operation, "a", "b\\", ErrorNumber::PathNotFound}});
  expectRows({{"Sub\\", "rename", "Sub\\", "New\\", 0, "New\\"}, {"a", "attributes", "a/", "", 76}});
  EXPECT_FALSE(files().fileExists(in(u"a\\")));
}

TEST_F(FilesContract, AFolderIsNoFile) {
  const String sub = in(u"Sub");
  for (const char* operation : {"read", "remove", "replace", "overwrite", "copy"})
    expectRows({{"Sub\\", operation, "Sub", "b", ErrorNumber::PathFileAccess}});
  expectRows({{"Sub\\", "createFolder", "Sub", "", ErrorNumber::FileAlreadyExists}});
  EXPECT_EQ(files().findFirst(sub), u"");
  EXPECT_EQ(files().findAll(sub, FileAttribute::Folder), (std::vector<FileEntry>{{u"Sub", true}}));
  EXPECT_TRUE(files().folderExists(sub) && files().folderExists(in(u"sub\\")) && !files().fileExists(sub));
  EXPECT_TRUE(files().isSame(sub, in(u"SUB\\")) && !files().isSame(sub, folder_));
  EXPECT_EQ(files().attributes(sub), FileAttribute::Folder);
  EXPECT_EQ(files().details(sub).length, 0U);
}

TEST_F(FilesContract, WildcardsFindTheFirstNameInOrder) {
  given("a.ini b.txt C.txt noextension");
  String found;
  for (const StringView pattern : {u"*.txt", u"?.TXT", u"*.*", u"", u"no*", u"*.doc", u"none\\*"})
    found.append(files().findFirst(in(pattern))).append(u"|");
  EXPECT_EQ(found, u"b.txt|b.txt|a.ini|a.ini|noextension|||");
  EXPECT_EQ(files().findAll(in(u"*.txt")), (std::vector<FileEntry>{{u"b.txt"}, {u"C.txt"}}));
  EXPECT_EQ(files().findAll(in(u"a.ini")), (std::vector<FileEntry>{{u"a.ini"}}));
  EXPECT_TRUE(files().findAll(in(u"*.doc")).empty());
}

TEST_F(FilesContract, HiddenAndSystemFilesAreSeenOnlyWhenAskedFor) {
  if (!keepsAttributes()) GTEST_SKIP() << "the file system keeps no attributes";
  for (const std::uint32_t attribute : {FileAttribute::Hidden, FileAttribute::System}) {
    given(attribute == FileAttribute::Hidden ? "a:h" : "a:s");
    EXPECT_EQ(files().attributes(in(u"a")) & ~FileAttribute::Archive, attribute);
    EXPECT_EQ(files().findFirst(in(u"a")) + files().findFirst(in(u"*")), u"");
    EXPECT_EQ(files().findFirst(in(u"a"), attribute), u"a");
    EXPECT_TRUE(files().fileExists(in(u"a")));
  }
  expectRows({{"a=old:h", "replace", "a", "", 0, "a=new:h"}, {"a:s", "remove", "a", "", 0, ""}});
}

TEST_F(FilesContract, AReadOnlyFileIsSeenButNeitherChangedNorRemoved) {
  for (const char* operation : {"replace", "overwrite", "append", "remove"})
    expectRows({{"a=old:r", operation, "a", "", ErrorNumber::PathFileAccess}});
  expectRows({{"a=old:r", "removeForced", "a", "", 0, ""},
              {"d\\ d\\a:r", "removeFolder", "d", "", ErrorNumber::PathFileAccess},
              {"d\\ d\\Below\\ d\\Below\\a:r d\\c", "removeFolder", "d", "", ErrorNumber::PathFileAccess},
              {"d\\ d\\Below\\ d\\Below\\a:r d\\c", "removeFolderForced", "D\\", "", 0, ""}});
  given("a:r");
  EXPECT_EQ(files().findFirst(in(u"a")), u"a");
}

TEST_F(FilesContract, ACopyHasTheContentsTheAttributesAndTheDate) {
  const std::string large(300000, 'l');
  given("a=" + large + (keepsAttributes() ? " b:h" : " b"));
  files().setAttributes(in(u"a"), FileAttribute::ReadOnly | FileAttribute::Archive);
  for (const StringView name : {u"B", u"c"}) {
    files().copy(in(u"a"), in(name));
    EXPECT_EQ(files().attributes(in(name)), FileAttribute::ReadOnly | FileAttribute::Archive);
    EXPECT_EQ(files().details(in(name)).modified, files().details(in(u"a")).modified);
  }
  EXPECT_TRUE(treeIn(folder_) == "a=" + large + ":r b=" + large + ":r c=" + large + ":r");
}

TEST_F(FilesContract, ACopyThatIsRefusedLeavesWhatWasThere) {
  expectRows({{"a=new b=old", "copyNew", "a", "b", ErrorNumber::FileAlreadyExists},
              {"a=new", "copy", "a", "A", ErrorNumber::PermissionDenied},
              {"a=new b=old:r", "copy", "a", "b", ErrorNumber::PathFileAccess}});
}

TEST_F(FilesContract, RenamingReplacesOnlyWhenToldTo) {
  expectRows({{"a=a b=b", "rename", "a", "b", ErrorNumber::FileAlreadyExists},
              {"a Sub\\", "renameOver", "a", "Sub", ErrorNumber::FileAlreadyExists},
              {"a Sub\\", "renameOver", "Sub", "a", ErrorNumber::FileAlreadyExists},
              {"a=a b=b:r", "renameOver", "a", "b", 0, "b=a"},
              {"a Sub\\", "rename", "a", "Sub\\c", 0, "Sub\\ Sub\\c"}});
  EXPECT_EQ(raised([&] { files().rename(in(u"Sub"), in(u"SUB")); }), 0) << "only the letter case changes";
  EXPECT_NE(raised([&] { files().rename(in(u"Sub"), in(u"Sub\\Below")); }), 0) << "into itself";
}

TEST_F(FilesContract, PiecesAppendedByManyDoNotMix) {
  const auto append = [this](char letter) {
    for (int i = 0; i < 100; ++i) files().append(in(u"log"), std::string(300, letter) + "\n");
  };
  std::vector<std::thread> threads;
  for (const char letter : {'a', 'b', 'c', 'd'}) threads.emplace_back(append, letter);
  for (std::thread& thread : threads) thread.join();
  const std::string contents = files().readWhole(in(u"log"));
  ASSERT_EQ(contents.size(), 4U * 100 * 301);
  for (std::size_t at = 0; at < contents.size(); at += 301)
    ASSERT_EQ(contents.substr(at, 301), std::string(300, contents[at]) + "\n");
}

TEST_F(FilesContract, DrivesLeadToFolders) {
  for (const StringView drive : {u"C", u"c:\\Data"}) EXPECT_TRUE(files().driveExists(drive));
  for (const StringView none : {u"Q:", u"", u"Data"}) EXPECT_FALSE(files().driveExists(none));
  EXPECT_TRUE(files().folderExists(u"C:\\") && !files().fileExists(u"Q:\\a.txt"));
}

TEST_F(FilesContract, AFullPathNamesTheSameFileFromAnywhere) {
  files().replaceWhole(in(u"a.txt"), "x");
  const String whole = files().fullPath(in(u"Sub\\..\\a.txt"));
  EXPECT_NE(whole, in(u"a.txt"));
  EXPECT_EQ(whole.find(u".."), String::npos);
  EXPECT_EQ(files().readWhole(whole), "x");
  EXPECT_EQ(files().fullPath(in(u"none")).substr(whole.size() - 5), u"none");
}

TEST_F(FilesContract, TheSystemsFoldersAreOnDrives) {
  EXPECT_TRUE(files().folderExists(files().temporaryFolder()));
  for (const String& folder : {files().temporaryFolder(), files().windowsFolder()}) {
    EXPECT_EQ(folder.substr(1, 2), u":\\");
    EXPECT_EQ(folder.find(u'/'), String::npos);
    EXPECT_NE(folder.back(), u'\\');
  }
}

TEST_F(FilesContract, ATemporaryFileIsNewAndEmpty) {
  const String one = files().createTemporary(folder_, u"prefix");
  EXPECT_NE(files().createTemporary(folder_, u"prefix"), one);
  EXPECT_TRUE(one.starts_with(files().fullPath(folder_)) || one.starts_with(folder_)) << toUtf8(one);
  EXPECT_EQ(files().findAll(in(u"pre????.tmp")).size(), 2U);
  EXPECT_EQ(files().readWhole(one), "");
  EXPECT_EQ(raised([&] { files().createTemporary(in(u"no"), u"p"); }), ErrorNumber::PathNotFound);
  EXPECT_EQ(raised([&] { files().createTemporary(folder_, {u"p\0q", 3}); }), ErrorNumber::BadFileName);
}

TEST(FilePattern, MatchesInAnyLetterCaseAsOnTheOldestSystems) {
  const auto matches = [](StringView nameAndPattern) {
    const std::size_t blank = nameAndPattern.find(u' ');
    return matchesPattern(nameAndPattern.substr(0, blank), nameAndPattern.substr(blank + 1));
  };
  for (const StringView words :
       {u"a.txt a.txt", u"A.TXT a.txt", u"a.txt *", u"a *.*", u"a.b.txt *.txt", u"abcabc a*c", u"ab a?",
        u"abc a**c", u" ", u"aaaaaaab *a*a*b", u"a a?", u"a.txt a??.txt", u"file f*.*", u"noext *.?",
        u"noext *.", u"a.txt a.*.", u"a.b.txt a.*", u"a.b.c *.b.c", u"a ?."})
    EXPECT_TRUE(matches(words)) << toUtf8(words);
  for (const StringView words : {u"a.txt *.tx", u"abcabd a*c", u"abc a?", u"x ", u"x.html *.htm",
                                 u"abcd.txt a??.txt", u"a.txt a.??", u"a.txt *."})
    EXPECT_FALSE(matches(words)) << toUtf8(words);
}

}  // namespace
}  // namespace zelUtilities
