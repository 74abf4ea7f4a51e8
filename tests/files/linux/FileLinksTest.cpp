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

TEST_F(FileLinks, AFolderThatCannotBeReplacedStays) {
  const fs::path other = "/dev/shm/zel-" + std::to_string(getpid());
  fs::create_directories(other / "kept");
  const bool isFar =
      raisedError([&] { zel_FileRename(path(u"src"), fromUtf8(other.native())); }).starts_with("74|");
  EXPECT_TRUE(!isFar || fs::is_directory(other / "kept"));
  fs::remove_all(other);
  if (!isFar) GTEST_SKIP() << "there is one file system only";
  EXPECT_TRUE(zel_IsFolder(path(u"src")));
}

TEST_F(FileLinks, NamesThatDifferInLetterCaseAreBothCopied) {
  std::ofstream(native / "src/A") << "capital";
  EXPECT_EQ(zel_FilesCopy(path(u"src\\*"), path(u"out")), 0);
  EXPECT_THAT(treeIn(path(u"out")), testing::AnyOf("a A=capital", "A=capital a"));
}

}  // namespace
}  // namespace zelUtilities
