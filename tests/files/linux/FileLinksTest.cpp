// Operations on trees with symbolic links in them.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "files/zelFiles.h"

namespace zelUtilities {
namespace {

namespace fs = std::filesystem;

class FileLinks : public testing::Test {
 protected:
  FileLinks() {
    fs::remove_all(folder_);
    for (const char* name : {"src/sub", "kept", "out"}) fs::create_directories(folder_ / name);
    for (const char* name : {"src/a.txt", "src/sub/b.txt", "kept/c.txt"})
      std::ofstream(folder_ / name) << "x";
  }
  ~FileLinks() override { fs::remove_all(folder_); }

  String in(StringView name) const {
    String path = u"Z:" + fromUtf8(folder_.native()) + u"\\" + String(name);
    for (char16_t& unit : path)
      if (unit == u'/') unit = u'\\';
    return path;
  }
  bool has(const char* name) const { return fs::exists(fs::symlink_status(folder_ / name)); }

  const fs::path folder_ = fs::absolute("file-links");
};

TEST_F(FileLinks, ALoopOfLinksIsCopiedOnce) {
  fs::create_directory_symlink("..", folder_ / "src/sub/up");
  fs::create_directory_symlink("../../kept", folder_ / "src/sub/kept");
  fs::create_directory_symlink("self", folder_ / "src/self");
  EXPECT_EQ(zel_FilesCopy(in(u"src"), in(u"out"), ZEL_CopyFlags_Recurse), 0);
  EXPECT_TRUE(has("out/src/sub/b.txt") && has("out/src/sub/kept/c.txt"));
  EXPECT_FALSE(has("out/src/sub/up") || has("out/src/self"));
}

TEST_F(FileLinks, DeletingStaysInsideTheTree) {
  fs::create_directory_symlink("../../kept", folder_ / "src/sub/link");
  fs::create_symlink("../kept/c.txt", folder_ / "src/c.txt");
  fs::create_directory_symlink("kept", folder_ / "direct");
  fs::permissions(folder_ / "kept/c.txt", fs::perms(0444));
  EXPECT_TRUE(zel_FileDelete(in(u"src\\c.*")));
  EXPECT_FALSE(zel_FileDelete(in(u"src")) || zel_FileDelete(in(u"direct")));
  EXPECT_FALSE(has("src") || has("direct"));
  EXPECT_EQ(fs::status(folder_ / "kept/c.txt").permissions(), fs::perms(0444)) << "untouched";
}

TEST_F(FileLinks, NamesThatDifferInLetterCaseAreBothCopied) {
  std::ofstream(folder_ / "src/A.TXT") << "capital";
  EXPECT_EQ(zel_FilesCopy(in(u"src\\*.txt"), in(u"out")), 0);
  EXPECT_TRUE(has("out/a.txt") && has("out/A.TXT"));
}

}  // namespace
}  // namespace zelUtilities
