#include "files/FilesFixture.h"
#include "files/zelFiles.h"

namespace zelUtilities {
namespace {

using testing::MatchesRegex;

constexpr int noOverwrite = ZEL_CopyFlags_NoOverwrite, noMakePath = ZEL_CopyFlags_NoMakePath,
              recurse = ZEL_CopyFlags_Recurse, markReadOnly = 1;

Variant copy(const String& from, const String& to, int flags) {
  return std::int32_t{zel_FileCopy(from, to, static_cast<ZEL_Utilities_CopyFlags>(flags))};
}
Variant copyAll(const String& from, const String& to, int flags) {
  return std::int32_t{zel_FilesCopy(from, to, static_cast<ZEL_Utilities_CopyFlags>(flags))};
}
Variant rename(const String& from, const String& to, int flags) {
  return zel_FileRename(from, to, flags == markReadOnly);
}
Variant remove(const String& name, const String&, int) { return zel_FileDelete(name); }
Variant makePath(const String& name, const String&, int) { return zel_MakeFullDir(name); }

struct Row {
  std::string before;  // the files, as FileTree.h writes them
  Variant (*operation)(const String&, const String&, int);
  std::string from, to;  // "@" stands for the folder's path
  int flags;
  std::string result;
  // The call of the file system that fails, its error, and how many calls are let through.
  std::string call = {};
  std::int32_t number = 0;
  int letThrough = 0;
};

class FileOperations : public FilesFixture {
 protected:
  String at(const std::string& name) const {
    return name.starts_with('@') ? path(fromUtf8(name.substr(1))) : fromUtf8(name);
  }
  void expectRows(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
      SCOPED_TRACE(row.before + ": " + row.from + " to " + row.to);
      const auto operation = [&] { return row.operation(at(row.from), at(row.to), row.flags); };
      EXPECT_EQ(resultOver(row.before, operation, row.call, row.number, row.letThrough), row.result);
    }
  }
};

TEST_F(FileOperations, ACopyGoesWhereItsDestinationSays) {
  expectRows({{"a=n", copy, "@a", "b", 0, "0 -> a=n b=n"},  // a bare name lies beside the source
              {"a=n Sub\\", copy, "@a", "@SUB", 0, "0 -> a=n Sub\\ Sub\\a=n"},
              {"a=n Sub\\", copy, "@a", "@Sub\\c", noMakePath, "0 -> a=n Sub\\ Sub\\c=n"},
              {"a=n b=o:r", copy, "@a", "@b", 0, "0 -> a=n b=n"},
              {"a=n:r", copy, "@a", "@b", 0, "0 -> a=n:r b=n:r"},
              {"a=n b=o:r", copy, "@a", "@b", 0, "61", "copy", ErrorNumber::DiskFull},
              {"", copy, "@no", "", 0, "1"},
              {"d\\", copy, "@d", "@e", 0, "1"},
              {"a", copy, "@a", "@no\\a", noMakePath, "2"},
              {"a", copy, "@a", "@no\\a", 0, "76"},
              {"a=n b=o", copy, "@a", "@b", noOverwrite, "3"},
              {"a", copy, "@a", "@*", 0, "52"},
              {"a", copy, "@a", "@a", 0, "70"}});
  EXPECT_NE(zel_FileCopy(put(u"a"), path(String(300, u'n'))), 0);
  EXPECT_NE(zel_FileCopy(path(u"a"), path(String(40000, u'n') + u"\\b")), 0);
  EXPECT_EQ(reports.taken(), "mFiles.GetFolderName|6 ");
}

TEST_F(FileOperations, FilesAreCopiedByPatternAndFoldersWithAllBelow) {
  const std::string src = "src\\ src\\a.t=n src\\b.l src\\h.t:h src\\Sub\\ src\\Sub\\c.t";
  const std::string old = "o\\ o\\src\\ o\\src\\A.T=old ", below = " o\\src\\Sub\\ o\\src\\Sub\\c.t ";
  expectRows(
      {{src, copyAll, "@src\\*.t", "@o\\deep", noMakePath, "0 -> o\\ o\\deep\\ o\\deep\\a.t=n " + src},
       {src, copyAll, "@src\\", "@o", 0, "0 -> o\\ o\\src\\ o\\src\\a.t=n o\\src\\b.l " + src},
       {old + src, copyAll, "@src", "@o", noOverwrite | recurse, "0 -> " + old + "o\\src\\b.l" + below + src},
       {old + src, copyAll, "@src\\*", "@o\\src", recurse,
        "0 -> o\\ o\\src\\ o\\src\\A.T=n o\\src\\b.l" + below + src},
       {src + " z", copyAll, "@src", "@z", 0, "4"},
       {"", copyAll, "@no\\*", "@o", 0, "0 -> o\\"},
       {"s\\ s\\a s\\Sub\\", copyAll, "@s", "@s\\Sub", recurse,
        "0 -> s\\ s\\a s\\Sub\\ s\\Sub\\s\\ s\\Sub\\s\\a s\\Sub\\s\\Sub\\"},  // into itself once
       {"s\\ s\\a.t", copyAll, "@s\\*.t", "@s", recurse, "0"},
       {"s\\ s\\a s\\b", copyAll, "@s", "@z", 0, "0 -> s\\ s\\a s\\b z\\ z\\s\\ z\\s\\a", "copy",
        ErrorNumber::DiskFull, 1}});
  files().replaceWhole(u"C:\\zel.root", "x");
  EXPECT_EQ(zel_FilesCopy(u"C:\\", path(u"o")), 0);
  files().remove(u"C:\\zel.root");
  EXPECT_EQ(bytesIn(u"o\\zel.root"), "x") << "a drive has no name to make a folder of";
  EXPECT_EQ(zel_FilesCopy(path(u"s"), put(u"file") + u"\\below"), ZEL_CopyErrors_NoPath);
  FailingFiles unlisted("findAll", ErrorNumber::PathFileAccess);
  const Replaced<Files> replaced(unlisted);
  EXPECT_EQ(zel_FilesCopy(path(u"s"), path(u"out")), 0);
  EXPECT_EQ(reports.taken(), "zelFiles.zel_FilesCopy|75 ");
}

TEST_F(FileOperations, DeletingTakesWhatTheNameFinds) {
  expectRows({{"a.l b.l c d.l\\ h.l:h r.l:r", remove, "@*.l", "", 0, "True -> c d.l\\ h.l:h"},
              {"c d.l\\ h.l:h", remove, "@*.l", "", 0, "False"},
              {"h:h", remove, "@h", "", 0, "False"},
              {"", remove, "@no\\a", "", 0, "False"},
              {"", remove, "", "", 0, "False"},
              // The required answer for a folder, which is gone.
              {"c d\\ d\\empty\\ d\\x:r", remove, "@D\\", "", 0, "False -> c"},
              {"c", remove, "@c", "", 0, "70|mFiles.FileDelete::|Permission denied", "remove",
               ErrorNumber::PermissionDenied}});
}

TEST_F(FileOperations, RenamingReplacesAndMarksOrDestroysNothing) {
  const std::string denied = "75|mFiles.FileRename::|Path/File access error";
  expectRows({{"a=n:r b=o:r", rename, "@a", "@b", 0, "True -> b=n:r"},
              {"b", rename, "@b", "@c", markReadOnly, "True -> c:r"},
              {"", rename, "@no", "@c", 0, "False"},
              {"d\\ d\\x e\\", rename, "@e", "@d", 0, "True -> d\\"},
              {"a d\\ d\\x", rename, "@a", "@d", 0, "True -> d"},
              {"a d\\ d\\x", rename, "@a", "@d\\", 0, "76|mFiles.FileRename::|Path not found"},
              {"a:r", rename, "@a", "@*", 0, "52|mFiles.FileRename::|Bad file name or number"},
              {"d\\ d\\x", rename, "@d\\x", "@d", 0, denied},
              {"d\\ d\\x", rename, "@d", "@D\\x", 0, denied},
              {"a:r", rename, "@a", "@no\\b", 0, "76|mFiles.FileRename::|Path not found"},
              {"a:r h:h", rename, "@a", "@h", 0, "58|mFiles.FileRename::|File already exists"}});
  for (const char* file : {"a", "a:r"}) {
    given(file);
    zel_FileRename(path(u"a"), path(u"b"), file[1] == 0);
    EXPECT_TRUE(zel_FileRename(path(u"b"), path(u"B"))) << "the same file, which is not deleted";
    EXPECT_EQ(zel_GetFileAttr(path(u"b")), 1 + 32) << "read-only, and to be archived";
  }
}

TEST_F(FileOperations, AFullFolderIsMadeFromAnAbsolutePath) {
  expectRows({{"", makePath, "@a\\\\b\\", "", 0, "True -> a\\ a\\b\\"},
              {"a\\", makePath, "@a", "", 0, "True"},
              {"", makePath, "", "", 0, "False"},
              {"", makePath, "data\\x", "", 0,
               "False[48|Path Error|The requested path is not an absolute reference:     \r\n"
               "Path:\tdata\\x      ]"},
              {"", makePath, "@c\\d", "", 0,
               "False[48|Path Error|The requested path could not be created:  \r\nPath:\tc\\d      \r\n"
               "Error:\tDisk full    ]",
               "createFolder", ErrorNumber::DiskFull}});
}

TEST_F(FileOperations, TemporaryNamesAreFreeOnes) {
  const String name = zel_GetTempFile(u"zelora");
  EXPECT_TRUE(name.starts_with(zel_GetTempDir() + u"\\zel") && !zel_IsFile(name)) << toUtf8(name);
  for (const auto& [extension, end] : {std::pair(u"dat", "\\.dat"), {u".dat", "\\.dat"}, {u"a.gz", "a\\.gz"}})
    EXPECT_THAT(toUtf8(zel_GetFileName(zel_GetTempFileEx(u"zz", extension))),
                MatchesRegex("zz\\w+" + std::string(end)));
  EXPECT_EQ(raisedError([] { zel_GetTempFileEx(u"z", String(999, u'x') + u"."); }).substr(0, 2), "5|");
  EXPECT_TRUE(zel_GetTempFile(u"..\\").empty() && !zel_GetTempFile(u"abc\\").empty());
  for (const auto& [call, result] :
       {std::pair("createTemporary", ""), {"temporaryFolder", "76||Path not found"}}) {
    FailingFiles failing(call, ErrorNumber::PathNotFound);
    const Replaced<Files> replaced(failing);
    EXPECT_EQ(outcome([] { return zel_GetTempFile(u"z"); }), result);
    EXPECT_EQ(outcome([] { return zel_GetTempFileEx(u"z", u"dat"); }), result);
  }
}

// Attributes that the system may add.
struct OddFiles : FailingFiles {
  OddFiles() : FailingFiles("", 0) {}
  std::uint32_t attributes(StringView) override { return 0xFFFFFFFF; }
  FileDetails details(StringView) override { return {std::uint64_t{1} << 31, {}, false}; }
};

TEST_F(FileOperations, AFileIsAskedForItsLengthDateAndAttributes) {
  const String file = put(u"a.txt", "12345");
  EXPECT_EQ(spelled({zel_GetFileLength(file), zel_GetFileLength(path(u"no")), zel_GetFileLength(folder),
                     zel_GetFileAttr(file), zel_GetFileAttr(folder)}),
            "5|0|0|32|16");
  EXPECT_THAT(toUtf8(zel_GetFileDate(file)), MatchesRegex(".*/.*/20.*:.*"));
  EXPECT_EQ(zel_GetFileDate(path(u"no")) + zel_GetFileDate(folder), u"");
  EXPECT_EQ(raisedError([&] { zel_GetFileAttr(path(u"no")); }), "53|mFiles.GetFileAttr::|File not found");
  EXPECT_EQ(raisedError([] { zel_GetFileAttr(Variant::null()); }).substr(0, 23), "94|mFiles.GetFileAttr::");
  OddFiles odd;
  const Replaced<Files> replaced(odd);
  EXPECT_EQ(static_cast<std::uint32_t>(zel_GetFileAttr(file)), 0xFFFF807F);
  EXPECT_EQ(zel_GetFileLength(file), 0) << "a number that the result cannot hold";
}

}  // namespace
}  // namespace zelUtilities
