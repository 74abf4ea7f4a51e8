// Operations on trees with symbolic links in them.
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "files/FilesFixture.h"
#include "files/zelFiles.h"

namespace zelUtilities {
namespace {

namespace fs = std::filesystem;

class FileLinks : public FilesFixture {
 protected:
  FileLinks() { given("kept\\ kept\\c out\\ src\\ src\\a src\\sub\\ src\\sub\\b"); }

  void link(const char* target, const char* name) const { fs::create_symlink(target, native / name); }

  const fs::path native = toUtf8(files().fullPath(folder));
};

TEST_F(FileLinks, ALoopOfLinksIsCopiedOnce) {
  link("..", "src/sub/up");
  link("../../kept", "src/sub/kept");
  link("self", "src/self");
  EXPECT_EQ(zel_FilesCopy(path(u"src"), path(u"out"), ZEL_CopyFlags_Recurse), 0);
  EXPECT_EQ(treeIn(path(u"out")), "src\\ src\\a src\\sub\\ src\\sub\\b src\\sub\\kept\\ src\\sub\\kept\\c");
}

TEST_F(FileLinks, DeletingStaysInsideTheTree) {
  link("../../kept", "src/sub/link");
  link("../kept/c", "src/c");
  link("kept", "direct");
  fs::permissions(native / "kept/c", fs::perms(0444));
  EXPECT_TRUE(zel_FileDelete(path(u"src\\c*")));
  EXPECT_FALSE(zel_FileDelete(path(u"src")) || zel_FileDelete(path(u"direct")));
  EXPECT_EQ(treeIn(folder), "kept\\ kept\\c:r out\\") << "untouched";
}

TEST_F(FileLinks, WhatCannotBeReplacedStays) {
  const fs::path other = "/dev/shm/zel-" + std::to_string(getpid());
  fs::create_directories(other / "kept");
  std::ofstream(other / "file") << "x";
  const String far = fromUtf8(other.native());
  std::string raised;
  for (const String& name : {far, far + u"/file"})
    raised += raisedError([&] { zel_FileRename(path(u"src"), name); }).substr(0, 2);
  const std::string stayed = treeIn(far);
  fs::remove_all(other);
  if (raised.starts_with("no")) GTEST_SKIP() << "there is one file system only";
  EXPECT_EQ(raised + " " + stayed, "7474 file kept\\");
  EXPECT_TRUE(zel_IsFolder(path(u"src")));
}

TEST_F(FileLinks, NamesThatDifferInLetterCaseAreBothCopied) {
  std::ofstream(native / "src/A") << "capital";
  EXPECT_EQ(zel_FilesCopy(path(u"src\\*"), path(u"out")), 0);
  EXPECT_THAT(treeIn(path(u"out")), testing::AnyOf("a A=capital", "A=capital a"));
}

}  // namespace
}  // namespace zelUtilities
