#include "files/FilesFixture.h"
#include "files/zelFiles.h"
#include "support/FailingFiles.h"
#include "support/RaisedError.h"

namespace zelUtilities {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;

constexpr std::uint32_t readOnly = FileAttribute::ReadOnly;
constexpr std::uint32_t everything = FileAttribute::Hidden | FileAttribute::System | FileAttribute::Folder;
constexpr auto noOverwrite = ZEL_CopyFlags_NoOverwrite, noMakePath = ZEL_CopyFlags_NoMakePath,
               recurse = ZEL_CopyFlags_Recurse;

class FileOperations : public FilesFixture {
 protected:
  // All that is below a folder, as "a.txt Sub\\ Sub\\b.txt".
  std::string tree(const String& below, const String& prefix = {}) const {
    std::string found;
    for (const FileEntry& entry : files().findAll(below + u"\\*", everything)) {
      const String name = prefix + entry.name + (entry.isFolder ? u"\\" : u"");
      found += (found.empty() ? "" : " ") + toUtf8(name);
      if (!entry.isFolder) continue;
      const std::string inside = tree(below + u"\\" + entry.name, name);
      found += (inside.empty() ? "" : " ") + inside;
    }
    return found;
  }
  std::uint32_t attributes(StringView name) const {
    return static_cast<std::uint32_t>(zel_GetFileAttr(path(name)));
  }
};

TEST_F(FileOperations, ACopyGoesWhereItsDestinationSays) {
  const String a = put(u"a.txt", "new");
  putFolder(u"Sub");
  EXPECT_EQ(zel_FileCopy(a, u"b.txt"), 0) << "a bare name lies beside the source";
  EXPECT_EQ(zel_FileCopy(a, path(u"SUB")), 0);
  EXPECT_EQ(zel_FileCopy(a, path(u"Sub\\c.txt"), noMakePath), 0);
  EXPECT_EQ(tree(folder), "a.txt b.txt Sub\\ Sub\\a.txt Sub\\c.txt");
  EXPECT_EQ(zel_FileCopy(path(u"no"), u""), ZEL_CopyErrors_NoSourceFile);
  EXPECT_EQ(zel_FileCopy(folder, path(u"d")), ZEL_CopyErrors_NoSourceFile);
  EXPECT_EQ(zel_FileCopy(a, path(u"no\\a.txt"), noMakePath), ZEL_CopyErrors_NoPath);
  EXPECT_EQ(zel_FileCopy(a, path(u"no\\a.txt")), 76);
  EXPECT_EQ(zel_FileCopy(a, path(u"b.txt"), noOverwrite), ZEL_CopyErrors_Overwrite);
  EXPECT_EQ(zel_FileCopy(a, path(u"*.txt")), 52);
  EXPECT_EQ(zel_FileCopy(a, a), 70);
  EXPECT_NE(zel_FileCopy(a, path(String(300, u'n'))), 0);
  EXPECT_EQ(tree(folder), "a.txt b.txt Sub\\ Sub\\a.txt Sub\\c.txt");
  EXPECT_THAT(logged, IsEmpty());
  EXPECT_NE(zel_FileCopy(a, path(String(40000, u'n') + u"\\b")), 0);
}

TEST_F(FileOperations, ACopyReplacesAReadOnlyFileOrLeavesItAsItWas) {
  const String a = put(u"a.txt", "new");
  EXPECT_EQ(zel_FileCopy(a, put(u"b.txt", "old", readOnly)), 0);
  EXPECT_EQ(bytesIn(u"b.txt"), "new");
  EXPECT_EQ(attributes(u"b.txt") & readOnly, 0U);
  const String c = put(u"c.txt", "old", readOnly);
  {
    FailingFiles full("copy", ErrorNumber::DiskFull);
    const Replaced<Files> replaced(full);
    EXPECT_EQ(zel_FileCopy(a, c), 61);
  }
  EXPECT_EQ(bytesIn(u"c.txt"), "old");
  EXPECT_EQ(attributes(u"c.txt") & readOnly, readOnly);
  EXPECT_EQ(zel_FileCopy(c, path(u"d.txt")), 0);
  EXPECT_EQ(attributes(u"d.txt") & readOnly, readOnly);
}

TEST_F(FileOperations, FilesAreCopiedByPatternAndFoldersWithAllBelow) {
  putFolder(u"src");
  putFolder(u"src\\Sub");
  for (const StringView name : {u"src\\a.txt", u"src\\b.log", u"src\\Sub\\c.txt"}) put(name, "new");
  put(u"src\\hidden.txt", "x", FileAttribute::Hidden);
  EXPECT_EQ(zel_FilesCopy(path(u"src\\*.txt"), path(u"o1\\deep"), noMakePath), 0);
  EXPECT_EQ(tree(path(u"o1")), "deep\\ deep\\a.txt");
  EXPECT_EQ(zel_FilesCopy(path(u"src\\"), path(u"o2")), 0);
  EXPECT_EQ(tree(path(u"o2")), "src\\ src\\a.txt src\\b.log");
  put(u"o2\\src\\A.TXT", "old");
  EXPECT_EQ(zel_FilesCopy(path(u"src"), path(u"o2"), static_cast<ZEL_Utilities_CopyFlags>(5)), 0);
  EXPECT_EQ(tree(path(u"o2")), "src\\ src\\a.txt src\\b.log src\\Sub\\ src\\Sub\\c.txt");
  EXPECT_EQ(bytesIn(u"o2\\src\\a.txt"), "old") << "nothing is overwritten";
  EXPECT_EQ(zel_FilesCopy(path(u"src\\*"), path(u"o2\\src"), recurse), 0);
  EXPECT_EQ(bytesIn(u"o2\\src\\a.txt"), "new");
  EXPECT_EQ(zel_FilesCopy(path(u"src"), put(u"file")), ZEL_CopyErrors_SingleFileDestination);
  EXPECT_EQ(zel_FilesCopy(path(u"src"), path(u"file\\below")), ZEL_CopyErrors_NoPath);
  EXPECT_EQ(zel_FilesCopy(path(u"no\\*"), path(u"o3")), 0);
}

TEST_F(FileOperations, AFolderIsCopiedIntoItselfOnce) {
  putFolder(u"src");
  putFolder(u"src\\Sub");
  put(u"src\\a.txt");
  EXPECT_EQ(zel_FilesCopy(path(u"src"), path(u"src\\Sub"), recurse), 0);
  EXPECT_EQ(tree(path(u"src")), "a.txt Sub\\ Sub\\src\\ Sub\\src\\a.txt Sub\\src\\Sub\\");
  EXPECT_EQ(zel_FilesCopy(path(u"src\\*.txt"), path(u"src"), recurse), 0);
  EXPECT_EQ(bytesIn(u"src\\a.txt"), "x");
}

TEST_F(FileOperations, AFileThatCannotBeCopiedDoesNotKeepOthersFromIt) {
  putFolder(u"src");
  put(u"src\\a.txt");
  put(u"src\\b.txt");
  FailingFiles failing("copy", ErrorNumber::DiskFull, 1);
  {
    const Replaced<Files> replaced(failing);
    EXPECT_EQ(zel_FilesCopy(path(u"src"), path(u"out")), 0);
  }
  EXPECT_EQ(tree(path(u"out")), "src\\ src\\a.txt");
  FailingFiles unlisted("findAll", ErrorNumber::PathFileAccess);
  const Replaced<Files> replaced(unlisted);
  EXPECT_EQ(zel_FilesCopy(path(u"src"), path(u"out")), 0);
  EXPECT_THAT(logged, ElementsAre("zelFiles.zel_FilesCopy"));
}

TEST_F(FileOperations, DeletingTakesWhatTheNameFinds) {
  for (const StringView name : {u"a.log", u"b.log", u"c.txt"}) put(name);
  put(u"r.log", "x", readOnly);
  put(u"h.log", "x", FileAttribute::Hidden);
  putFolder(u"d.log");
  EXPECT_TRUE(zel_FileDelete(path(u"*.log")));
  EXPECT_EQ(tree(folder), "c.txt d.log\\ h.log");
  for (const String& none : {path(u"*.log"), path(u"h.log"), path(u"no\\a"), String()})
    EXPECT_FALSE(zel_FileDelete(none));
  put(u"d.log\\x.txt", "x", readOnly);
  putFolder(u"d.log\\empty");
  EXPECT_FALSE(zel_FileDelete(path(u"D.LOG\\"))) << "the required answer for a folder";
  EXPECT_EQ(tree(folder), "c.txt h.log");
  FailingFiles failing("remove", ErrorNumber::PermissionDenied);
  const Replaced<Files> replaced(failing);
  EXPECT_EQ(raisedError([&] { zel_FileDelete(path(u"c.txt")); }), "70|mFiles.FileDelete::|Permission denied");
  EXPECT_THAT(logged, IsEmpty());
}

TEST_F(FileOperations, RenamingReplacesAndMarks) {
  const String b = put(u"b.txt", "old", readOnly);
  EXPECT_TRUE(zel_FileRename(put(u"a.txt", "new", readOnly), b));
  EXPECT_EQ(bytesIn(u"b.txt"), "new");
  EXPECT_EQ(attributes(u"b.txt"), readOnly | FileAttribute::Archive);
  EXPECT_TRUE(zel_FileRename(b, path(u"B.TXT"))) << "the same file, which is not deleted";
  files().setAttributes(b, FileAttribute::Normal);
  EXPECT_TRUE(zel_FileRename(b, path(u"c.txt"), true));
  EXPECT_EQ(attributes(u"c.txt"), readOnly | FileAttribute::Archive);
  EXPECT_FALSE(zel_FileRename(path(u"no"), path(u"c.txt")));
  putFolder(u"d");
  put(u"d\\x");
  putFolder(u"e");
  EXPECT_TRUE(zel_FileRename(path(u"e"), path(u"d"))) << "a folder is replaced too";
  EXPECT_EQ(tree(folder), "c.txt d\\");
}

TEST_F(FileOperations, ARenameThatCannotBeDoneDestroysNothing) {
  const String a = put(u"a.txt", "x", readOnly);
  putFolder(u"d");
  put(u"d\\x");
  const auto error = [&](StringView from, StringView to) {
    return raisedError([&] { zel_FileRename(path(from), path(to)); });
  };
  EXPECT_EQ(error(u"a.txt", u"*"), "52|mFiles.FileRename::|Bad file name or number");
  EXPECT_EQ(error(u"d\\x", u"d"), "75|mFiles.FileRename::|Path/File access error");
  EXPECT_EQ(error(u"d", u"D\\x"), "75|mFiles.FileRename::|Path/File access error");
  EXPECT_EQ(error(u"a.txt", u"no\\b"), "76|mFiles.FileRename::|Path not found");
  put(u"h", "x", FileAttribute::Hidden);
  EXPECT_EQ(error(u"a.txt", u"h"), "58|mFiles.FileRename::|File already exists");
  EXPECT_EQ(tree(folder), "a.txt d\\ d\\x h");
  EXPECT_EQ(attributes(u"a.txt") & readOnly, readOnly);
  EXPECT_THAT(logged, IsEmpty());
}

TEST_F(FileOperations, AFullFolderIsMadeFromAnAbsolutePath) {
  EXPECT_TRUE(zel_MakeFullDir(path(u"a\\\\b\\")) && zel_MakeFullDir(path(u"a")));
  EXPECT_EQ(tree(folder), "a\\ a\\b\\");
  EXPECT_FALSE(zel_MakeFullDir(u""));
  EXPECT_EQ(boxes, "");
  EXPECT_FALSE(zel_MakeFullDir(u"data\\x"));
  EXPECT_EQ(boxes,
            "[48|Path Error|The requested path is not an absolute reference:     \r\nPath:\tdata\\x      ]");
  boxes.clear();
  FailingFiles failing("createFolder", ErrorNumber::DiskFull);
  const Replaced<Files> replaced(failing);
  EXPECT_FALSE(zel_MakeFullDir(path(u"c\\d")));
  EXPECT_EQ(boxes,
            "[48|Path Error|The requested path could not be created:  \r\nPath:\tc\\d      \r\n"
            "Error:\tDisk full    ]");
  EXPECT_THAT(logged, IsEmpty());
}

TEST_F(FileOperations, TemporaryNamesAreFreeOnes) {
  EXPECT_TRUE(zel_IsFolder(zel_GetTempDir()));
  const String name = zel_GetTempFile(u"zelora");
  EXPECT_TRUE(name.starts_with(zel_GetTempDir() + u"\\zel")) << toUtf8(name);
  EXPECT_FALSE(zel_IsFile(name));
  EXPECT_THAT(toUtf8(zel_GetFileName(zel_GetTempFileEx(u"z", u"dat"))), MatchesRegex("z\\w+\\.dat"));
  EXPECT_THAT(toUtf8(zel_GetFileName(zel_GetTempFileEx(u"z", u".dat"))), MatchesRegex("z\\w+\\.dat"));
  EXPECT_THAT(toUtf8(zel_GetFileName(zel_GetTempFileEx(u"zzz", u"tar.gz"))), MatchesRegex("zzz\\w+tar\\.gz"));
  EXPECT_EQ(raisedError([] { zel_GetTempFileEx(u"z", String(999, u'x') + u"."); }).substr(0, 2), "5|");
  EXPECT_EQ(zel_GetTempFile(u"..\\"), u"");
  FailingFiles failing("temporaryFolder", ErrorNumber::PathNotFound), full("createTemporary", 61);
  {
    const Replaced<Files> replaced(full);
    EXPECT_EQ(zel_GetTempFile(u"z") + zel_GetTempFileEx(u"z", u"dat"), u"");
  }
  const Replaced<Files> replaced(failing);
  EXPECT_EQ(raisedError([] { zel_GetTempFile(u"z"); }), "76||Path not found");
}

// Attributes that the system may add.
struct OddFiles : FailingFiles {
  OddFiles() : FailingFiles("", 0) {}
  std::uint32_t attributes(StringView) override { return 0xFFFFFFFF; }
  FileDetails details(StringView) override { return {std::uint64_t{1} << 31, {}, false}; }
};

TEST_F(FileOperations, AFileIsAskedForItsLengthDateAndAttributes) {
  const String file = put(u"a.txt", "12345");
  EXPECT_EQ(zel_GetFileLength(file), 5);
  EXPECT_EQ(zel_GetFileLength(path(u"no")) + zel_GetFileLength(folder), 0);
  EXPECT_THAT(toUtf8(zel_GetFileDate(file)), MatchesRegex(".*/.*/20.*:.*"));
  EXPECT_EQ(zel_GetFileDate(path(u"no")) + zel_GetFileDate(folder), u"");
  EXPECT_EQ(zel_GetFileAttr(file), 32);
  EXPECT_EQ(zel_GetFileAttr(folder), 16);
  EXPECT_EQ(raisedError([&] { zel_GetFileAttr(path(u"no")); }), "53|mFiles.GetFileAttr::|File not found");
  EXPECT_EQ(raisedError([] { zel_GetFileAttr(Variant::null()); }).substr(0, 23), "94|mFiles.GetFileAttr::");
  OddFiles odd;
  const Replaced<Files> replaced(odd);
  EXPECT_EQ(static_cast<std::uint32_t>(zel_GetFileAttr(file)), 0xFFFF807F);
  EXPECT_EQ(zel_GetFileLength(file), 0) << "a number that the result cannot hold";
}

}  // namespace
}  // namespace zelUtilities
