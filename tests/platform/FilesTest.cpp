// What every platform answers about files; names are given as clients give them, with backslashes.
#include "platform/Files.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "automation/Error.h"
#include "platform/FilePattern.h"
#include "support/FailingFiles.h"

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

class FilesContract : public testing::Test {
 protected:
  FilesContract() {
    if (files().folderExists(folder_)) files().removeFolder(folder_, true);
    files().createFolder(folder_);
  }
  ~FilesContract() override { files().removeFolder(folder_, true); }

  String in(StringView name) const { return folder_ + u"\\" + String(name); }

  // Whether the file system keeps attributes beside a file; where not, tests of them have nothing to test.
  bool keepsAttributes() {
    files().replaceWhole(in(u"probe"), "");
    const bool kept = raised([&] { files().setAttributes(in(u"probe"), FileAttribute::Hidden); }) == 0;
    files().remove(in(u"probe"));
    return kept;
  }

  const String folder_ = u"files-contract";
};

#define SKIP_WITHOUT_ATTRIBUTES() \
  if (!keepsAttributes()) GTEST_SKIP() << "the file system keeps no attributes"

TEST_F(FilesContract, ContentsComeBackByteForByte) {
  std::string every;
  for (int i = 0; i < 256; ++i) every.push_back(static_cast<char>(i));
  every += "\r\n\n\r\x1A after the end mark";
  files().replaceWhole(in(u"a.bin"), every);
  EXPECT_EQ(files().readWhole(in(u"a.bin")), every);
  EXPECT_EQ(files().details(in(u"a.bin")).length, every.size());
  files().replaceWhole(in(u"a.bin"), "");
  EXPECT_EQ(files().readWhole(in(u"a.bin")), "");
  EXPECT_EQ(files().details(in(u"a.bin")).length, 0U);
}

TEST_F(FilesContract, ReplacingLeavesNothingElseInTheFolder) {
  files().replaceWhole(in(u"a.txt"), "a longer text");
  files().replaceWhole(in(u"a.txt"), "short");
  EXPECT_EQ(files().readWhole(in(u"a.txt")), "short");
  files().remove(in(u"a.txt"));
  EXPECT_EQ(files().findFirst(in(u"*"), FileAttribute::Hidden | FileAttribute::System), u"");
}

TEST_F(FilesContract, NamesInOtherLettersAndScriptsAreKept) {
  const String name = u"Gr\u00F6\u00DFe \u65E5\u672C \u20AC.txt";
  files().replaceWhole(in(name), "x");
  EXPECT_EQ(files().findFirst(in(name)), name);
  EXPECT_EQ(files().findFirst(in(u"*")), name);
}

TEST_F(FilesContract, BothSeparatorsAreUnderstood) {
  files().createFolder(in(u"Sub"));
  files().replaceWhole(folder_ + u"/Sub\\a.txt", "x");
  EXPECT_EQ(files().readWhole(folder_ + u"\\Sub/a.txt"), "x");
}

TEST_F(FilesContract, NamesAreFoundInAnyLetterCase) {
  files().createFolder(in(u"Data"));
  files().replaceWhole(in(u"Data\\Settings.INI"), "x");
  EXPECT_TRUE(files().fileExists(in(u"DATA\\settings.ini")));
  EXPECT_EQ(files().findFirst(in(u"data\\SETTINGS.ini")), u"Settings.INI");
  files().replaceWhole(in(u"data\\settings.ini"), "y");
  EXPECT_EQ(files().readWhole(in(u"Data\\Settings.INI")), "y");
  EXPECT_EQ(files().findFirst(in(u"Data\\*")), u"Settings.INI");
  files().remove(in(u"DATA\\SETTINGS.INI"));
  EXPECT_FALSE(files().fileExists(in(u"Data\\Settings.INI")));
}

// What each operation that takes one name raises for it.
std::vector<std::int32_t> raisedBy(StringView name) {
  Files& all = files();
  return {raised([&] { all.readWhole(name); }),      raised([&] { all.replaceWhole(name, "x"); }),
          raised([&] { all.overwrite(name, "x"); }), raised([&] { all.append(name, "x"); }),
          raised([&] { all.remove(name); }),         raised([&] { all.details(name); }),
          raised([&] { all.attributes(name); }),     raised([&] { all.rename(name, u"other"); }),
          raised([&] { all.copy(name, u"other"); }), raised([&] { all.removeFolder(name); }),
          raised([&] { all.createFolder(name); })};
}

TEST_F(FilesContract, AMissingFileAndAMissingFolderAreDifferentFailures) {
  EXPECT_EQ(raisedBy(in(u"no\\a")), std::vector<std::int32_t>(11, ErrorNumber::PathNotFound));
  EXPECT_EQ(raised([&] { files().readWhole(in(u"no")); }), ErrorNumber::FileNotFound);
  EXPECT_EQ(raised([&] { files().details(in(u"no")); }), ErrorNumber::FileNotFound);
  EXPECT_EQ(raised([&] { files().copy(in(u"no"), in(u"a")); }), ErrorNumber::FileNotFound);
  EXPECT_EQ(raised([&] { files().rename(in(u"no"), in(u"a")); }), ErrorNumber::FileNotFound);
  EXPECT_EQ(raised([&] { files().remove(in(u"no")); }), ErrorNumber::FileNotFound);
}

TEST_F(FilesContract, NamesThatCanBeNoFilesAreRefusedAndNameNothing) {
  for (const StringView name :
       {StringView(u""), StringView(u"a\0b", 3), StringView(u"*.txt"), StringView(u"a?")}) {
    EXPECT_EQ(raisedBy(name), std::vector<std::int32_t>(11, ErrorNumber::BadFileName));
    EXPECT_FALSE(files().fileExists(name));
    EXPECT_FALSE(files().folderExists(name));
    EXPECT_FALSE(files().isSame(name, name));
  }
  EXPECT_EQ(files().findFirst(u""), u"");
  EXPECT_EQ(files().findFirst(StringView(u"a\0b", 3)), u"");
}

TEST_F(FilesContract, AFolderIsNoFile) {
  files().createFolder(in(u"Sub"));
  const String sub = in(u"Sub");
  EXPECT_EQ(files().findFirst(sub), u"");
  EXPECT_EQ(files().findAll(sub, FileAttribute::Folder), (std::vector<FileEntry>{{u"Sub", true}}));
  EXPECT_FALSE(files().fileExists(sub));
  EXPECT_TRUE(files().folderExists(sub) && files().folderExists(in(u"sub\\")));
  EXPECT_TRUE(files().isSame(sub, in(u"SUB\\")) && !files().isSame(sub, folder_));
  EXPECT_EQ(files().attributes(sub), FileAttribute::Folder);
  EXPECT_EQ(files().details(sub).length, 0U);
  for (const auto& refused :
       {raised([&] { files().readWhole(sub); }), raised([&] { files().remove(sub); }),
        raised([&] { files().replaceWhole(sub, "x"); }), raised([&] { files().overwrite(sub, "x"); }),
        raised([&] { files().copy(sub, in(u"b")); })})
    EXPECT_EQ(refused, ErrorNumber::PathFileAccess);
  EXPECT_EQ(raised([&] { files().createFolder(sub); }), ErrorNumber::FileAlreadyExists);
}

TEST_F(FilesContract, WildcardsFindTheFirstNameInOrder) {
  for (const StringView name : {u"b.txt", u"C.txt", u"a.ini", u"noextension"})
    files().replaceWhole(in(name), "");
  EXPECT_EQ(files().findFirst(in(u"*.txt")), u"b.txt");
  EXPECT_EQ(files().findFirst(in(u"?.TXT")), u"b.txt");
  EXPECT_EQ(files().findFirst(in(u"*.*")), u"a.ini");
  EXPECT_EQ(files().findFirst(in(u"")), u"a.ini");
  EXPECT_EQ(files().findFirst(in(u"no*")), u"noextension");
  EXPECT_EQ(files().findFirst(in(u"*.doc")), u"");
  EXPECT_EQ(files().findFirst(in(u"none\\*")), u"");
  EXPECT_EQ(files().findAll(in(u"*.txt")), (std::vector<FileEntry>{{u"b.txt"}, {u"C.txt"}}));
  EXPECT_EQ(files().findAll(in(u"a.ini")), (std::vector<FileEntry>{{u"a.ini"}}));
  EXPECT_TRUE(files().findAll(in(u"*.doc")).empty());
}

TEST_F(FilesContract, HiddenAndSystemFilesAreSeenOnlyWhenAskedFor) {
  SKIP_WITHOUT_ATTRIBUTES();
  for (const std::uint32_t attribute : {FileAttribute::Hidden, FileAttribute::System}) {
    files().replaceWhole(in(u"a.txt"), "x");
    files().setAttributes(in(u"a.txt"), attribute);
    EXPECT_EQ(files().attributes(in(u"a.txt")) & ~FileAttribute::Archive, attribute);
    EXPECT_EQ(files().findFirst(in(u"a.txt")), u"");
    EXPECT_EQ(files().findFirst(in(u"*")), u"");
    EXPECT_EQ(files().findFirst(in(u"a.txt"), attribute), u"a.txt");
    EXPECT_TRUE(files().fileExists(in(u"a.txt")));
    EXPECT_EQ(files().readWhole(in(u"a.txt")), "x");
    files().remove(in(u"a.txt"));
  }
}

TEST_F(FilesContract, ReplacingKeepsTheAttributes) {
  SKIP_WITHOUT_ATTRIBUTES();
  files().replaceWhole(in(u"a.txt"), "x");
  files().setAttributes(in(u"a.txt"), FileAttribute::Hidden);
  files().replaceWhole(in(u"a.txt"), "new");
  EXPECT_EQ(files().attributes(in(u"a.txt")) & ~FileAttribute::Archive, FileAttribute::Hidden);
  EXPECT_EQ(files().readWhole(in(u"a.txt")), "new");
}

TEST_F(FilesContract, AReadOnlyFileIsSeenButNeitherChangedNorRemoved) {
  files().replaceWhole(in(u"a.txt"), "old");
  files().setAttributes(in(u"a.txt"), FileAttribute::ReadOnly);
  EXPECT_EQ(files().findFirst(in(u"a.txt")), u"a.txt");
  EXPECT_EQ(files().attributes(in(u"a.txt")) & FileAttribute::ReadOnly, FileAttribute::ReadOnly);
  EXPECT_EQ(raised([&] { files().replaceWhole(in(u"a.txt"), "new"); }), ErrorNumber::PathFileAccess);
  EXPECT_EQ(raised([&] { files().overwrite(in(u"a.txt"), "new"); }), ErrorNumber::PathFileAccess);
  EXPECT_EQ(raised([&] { files().append(in(u"a.txt"), "new"); }), ErrorNumber::PathFileAccess);
  EXPECT_EQ(raised([&] { files().remove(in(u"a.txt")); }), ErrorNumber::PathFileAccess);
  EXPECT_EQ(raised([&] { files().removeFolder(folder_); }), ErrorNumber::PathFileAccess);
  EXPECT_EQ(files().readWhole(in(u"a.txt")), "old");
  files().setAttributes(in(u"a.txt"), FileAttribute::Normal);
  files().replaceWhole(in(u"a.txt"), "new");
  files().setAttributes(in(u"a.txt"), FileAttribute::ReadOnly);
  files().remove(in(u"a.txt"), true);
  EXPECT_FALSE(files().fileExists(in(u"a.txt")));
}

TEST_F(FilesContract, OverwritingLeavesWhatLiesBehind) {
  files().replaceWhole(in(u"a.txt"), "0123456789");
  files().overwrite(in(u"a.txt"), "abc");
  EXPECT_EQ(files().readWhole(in(u"a.txt")), "abc3456789");
  files().overwrite(in(u"a.txt"), "longer than before");
  EXPECT_EQ(files().readWhole(in(u"a.txt")), "longer than before");
  files().overwrite(in(u"new.txt"), "x");
  EXPECT_EQ(files().readWhole(in(u"new.txt")), "x");
}

TEST_F(FilesContract, ACopyHasTheContentsTheAttributesAndTheDate) {
  const std::string large(300000, 'x');
  files().replaceWhole(in(u"a.txt"), large);
  files().replaceWhole(in(u"b.txt"), "old");
  if (keepsAttributes()) files().setAttributes(in(u"b.txt"), FileAttribute::Hidden);
  files().setAttributes(in(u"a.txt"), FileAttribute::ReadOnly | FileAttribute::Archive);
  for (const StringView name : {u"B.TXT", u"c.txt"}) {
    files().copy(in(u"a.txt"), in(name));
    EXPECT_EQ(files().readWhole(in(name)), large);
    EXPECT_EQ(files().attributes(in(name)), FileAttribute::ReadOnly | FileAttribute::Archive);
    EXPECT_EQ(files().details(in(name)).modified, files().details(in(u"a.txt")).modified);
  }
  EXPECT_EQ(files().findAll(in(u"*")), (std::vector<FileEntry>{{u"a.txt"}, {u"b.txt"}, {u"c.txt"}}));
}

TEST_F(FilesContract, ACopyThatIsRefusedLeavesWhatWasThere) {
  files().replaceWhole(in(u"a.txt"), "new");
  files().replaceWhole(in(u"b.txt"), "old");
  EXPECT_EQ(raised([&] { files().copy(in(u"a.txt"), in(u"b.txt"), false); }), ErrorNumber::FileAlreadyExists);
  EXPECT_EQ(raised([&] { files().copy(in(u"a.txt"), in(u"A.TXT")); }), ErrorNumber::PermissionDenied);
  EXPECT_EQ(raised([&] { files().copy(in(u"a.txt"), folder_); }), ErrorNumber::PathFileAccess);
  files().setAttributes(in(u"b.txt"), FileAttribute::ReadOnly);
  EXPECT_EQ(raised([&] { files().copy(in(u"a.txt"), in(u"b.txt")); }), ErrorNumber::PathFileAccess);
  EXPECT_EQ(files().readWhole(in(u"a.txt")) + files().readWhole(in(u"b.txt")), "newold");
  EXPECT_EQ(files().findAll(in(u"*")).size(), 2U);
}

TEST_F(FilesContract, RenamingReplacesOnlyWhenToldTo) {
  files().replaceWhole(in(u"a.txt"), "a");
  files().replaceWhole(in(u"b.txt"), "b");
  files().createFolder(in(u"Sub"));
  const auto renaming = [&](StringView from, StringView to, bool replacing) {
    return raised([&] { files().rename(in(from), in(to), replacing); });
  };
  EXPECT_EQ(renaming(u"a.txt", u"b.txt", false), ErrorNumber::FileAlreadyExists);
  EXPECT_EQ(renaming(u"a.txt", u"Sub", true), ErrorNumber::FileAlreadyExists);
  EXPECT_EQ(renaming(u"Sub", u"b.txt", true), ErrorNumber::FileAlreadyExists);
  EXPECT_NE(renaming(u"Sub", u"Sub\\Below", false), 0) << "into itself";
  files().setAttributes(in(u"b.txt"), FileAttribute::ReadOnly);
  EXPECT_EQ(renaming(u"a.txt", u"B.TXT", true), 0);
  EXPECT_EQ(renaming(u"Sub", u"SUB", false), 0) << "only the letter case changes";
  EXPECT_EQ(renaming(u"b.txt", u"Sub\\c.txt", false), 0);
  EXPECT_EQ(files().readWhole(in(u"Sub\\c.txt")), "a");
  EXPECT_EQ(files().findAll(in(u"*"), FileAttribute::Folder).size(), 1U);
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

TEST_F(FilesContract, AFolderGoesWithAllThatItHolds) {
  files().createFolder(in(u"Sub"));
  files().createFolder(in(u"Sub\\Below"));
  files().replaceWhole(in(u"Sub\\Below\\a.txt"), "x");
  files().setAttributes(in(u"Sub\\Below\\a.txt"), FileAttribute::ReadOnly);
  files().replaceWhole(in(u"Sub\\b.txt"), "x");
  EXPECT_EQ(raised([&] { files().removeFolder(in(u"Sub")); }), ErrorNumber::PathFileAccess);
  EXPECT_TRUE(files().fileExists(in(u"Sub\\b.txt")));
  files().removeFolder(in(u"Sub\\"), true);
  EXPECT_FALSE(files().folderExists(in(u"Sub")));
}

TEST_F(FilesContract, DrivesLeadToFolders) {
  EXPECT_TRUE(files().driveExists(u"C"));
  EXPECT_TRUE(files().driveExists(u"c:\\Data"));
  EXPECT_FALSE(files().driveExists(u"Q:"));
  EXPECT_FALSE(files().driveExists(u""));
  EXPECT_FALSE(files().driveExists(u"Data"));
  EXPECT_TRUE(files().folderExists(u"C:\\"));
  EXPECT_FALSE(files().fileExists(u"Q:\\a.txt"));
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
}

TEST_F(FilesContract, AChosenCallCanBeMadeToFail) {
  FailingFiles failing("replaceWhole", ErrorNumber::DiskFull, 1);
  const Replaced<Files> replaced(failing);
  files().replaceWhole(in(u"a.txt"), "old");
  EXPECT_EQ(raised([&] { files().replaceWhole(in(u"a.txt"), "new"); }), ErrorNumber::DiskFull);
  EXPECT_EQ(files().readWhole(in(u"a.txt")), "old");
}

struct PatternCase {
  StringView name;
  StringView pattern;
  bool matches;
};

TEST(FilePattern, MatchesAsTheTableSays) {
  const PatternCase cases[] = {
      {u"a.txt", u"a.txt", true},
      {u"A.TXT", u"a.txt", true},
      {u"a.txt", u"*", true},
      {u"a", u"*.*", true},
      {u"a.b.txt", u"*.txt", true},
      {u"a.txt", u"*.tx", false},
      {u"abcabc", u"a*c", true},
      {u"abcabd", u"a*c", false},
      {u"ab", u"a?", true},
      {u"abc", u"a?", false},
      {u"abc", u"a**c", true},
      {u"", u"", true},
      {u"aaaaaaab", u"*a*a*b", true},
      {u"x", u"", false},
      {u"x.html", u"*.htm", false},
      {u"a", u"a?", true},
      {u"a.txt", u"a??.txt", true},
      {u"abcd.txt", u"a??.txt", false},
      {u"file", u"f*.*", true},
      {u"noext", u"*.?", true},
      {u"a.txt", u"a.??", false},
      {u"noext", u"*.", true},
      {u"a.txt", u"*.", false},
      {u"a.txt", u"a.*.", true},
      {u"a.b.txt", u"a.*", true},
      {u"a.b.c", u"*.b.c", true},
      {u"a", u"?.", true},
  };
  for (const PatternCase& row : cases)
    EXPECT_EQ(matchesPattern(row.name, row.pattern), row.matches)
        << testing::PrintToString(row.name) << " by " << testing::PrintToString(row.pattern);
}

}  // namespace
}  // namespace zelUtilities
