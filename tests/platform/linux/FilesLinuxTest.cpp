// Files where the system has one tree of its own: drives, native names, links, rights, devices.
#include <gmock/gmock.h>
#include <sys/fsuid.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>

#include "automation/Raised.h"
#include "platform/Files.h"
#include "platform/Machine.h"
#include "support/FileTree.h"

namespace zelUtilities {
namespace {

namespace fs = std::filesystem;

class FilesOnLinux : public testing::Test {
 protected:
  FilesOnLinux() : folder_(fs::absolute("files-linux")) {
    fs::remove_all(folder_);
    fs::create_directory(folder_);
  }
  ~FilesOnLinux() override { fs::remove_all(folder_); }

  String in(StringView name) const { return fromUtf8(folder_.native()) + u"/" + String(name); }
  fs::path home() const { return toUtf8(machine().homeFolder()); }
  void given(const std::string& tree) { makeTree(fromUtf8(folder_.native()), tree); }
  std::string tree() const { return treeIn(fromUtf8(folder_.native())); }

  const fs::path folder_;
};

TEST_F(FilesOnLinux, TheLastDriveIsTheWholeTree) {
  files().replaceWhole(in(u"a.txt"), "x");
  String windows = u"z:" + in(u"A.TXT");
  for (char16_t& unit : windows)
    if (unit == u'/') unit = u'\\';
  EXPECT_EQ(files().readWhole(windows), "x");
  EXPECT_EQ(files().fullPath(windows), in(u"a.txt"));
}

TEST_F(FilesOnLinux, ALinkNamedAfterALetterIsADrive) {
  for (const StringView none : {u"T:\\a.txt", u"\\\\server\\share\\a.txt"})
    EXPECT_EQ(raised([&] { files().readWhole(none); }), ErrorNumber::PathNotFound);
  fs::create_directories(home() / "drives");
  fs::create_directory_symlink(folder_, home() / "drives/t");
  files().replaceWhole(u"T:\\a.txt", "x");
  EXPECT_TRUE(files().driveExists(u"t:"));
  EXPECT_EQ(files().findFirst(u"T:*.txt"), u"a.txt");
  EXPECT_EQ(raised([] { files().removeFolder(u"T:\\", true); }), ErrorNumber::PathFileAccess);
  EXPECT_EQ(tree(), "a.txt");
  fs::remove(home() / "drives/t");
}

TEST_F(FilesOnLinux, TheExactSpellingWinsAndRenamingChangesIt) {
  given("a.txt=small");
  std::ofstream(folder_ / "A.txt") << "capital";
  EXPECT_EQ(files().readWhole(in(u"A.txt")) + files().readWhole(in(u"a.txt")), "capitalsmall");
  given("b c=new");
  files().rename(in(u"b"), in(u"B"));
  files().rename(in(u"c"), in(u"b"), true);
  EXPECT_EQ(files().findAll(in(u"b")), (std::vector<FileEntry>{{u"b"}}));
  EXPECT_EQ(files().readWhole(in(u"b")), "new");
}

TEST_F(FilesOnLinux, NamesThatAreNoUtf8AreFoundAsListedAndADotHidesNothing) {
  given(".settings");
  std::ofstream(folder_ / "a\xFF.txt") << "x";
  EXPECT_EQ(tree(), ".settings a\xEF\xBF\xBD.txt");
}

TEST_F(FilesOnLinux, AttributesLieInTheExtendedAttributeThatOthersUse) {
  given("a.txt");
  if (setxattr((folder_ / "a.txt").c_str(), "user.DOSATTRIB", "0x2", 3, 0) != 0)
    GTEST_SKIP() << "the file system keeps no extended attributes";
  EXPECT_EQ(tree(), "a.txt:h");
  files().setAttributes(in(u"a.txt"), FileAttribute::System | FileAttribute::Archive);
  char text[8] = {};
  getxattr((folder_ / "a.txt").c_str(), "user.DOSATTRIB", text, sizeof text);
  EXPECT_STREQ(text, "0x24");
}

TEST_F(FilesOnLinux, AFileThatItsOwnerMayNotWriteIsReadOnlyForEverybody) {
  given("a.txt=old");
  fs::permissions(folder_ / "a.txt", fs::perms(0466));
  EXPECT_EQ(raised([&] { files().replaceWhole(in(u"a.txt"), "new"); }), ErrorNumber::PathFileAccess);
  EXPECT_EQ(tree(), "a.txt=old:r");
}

TEST_F(FilesOnLinux, ReplacingAndCopyingKeepTheRightsAndWriteThroughALink) {
  for (const bool copying : {false, true}) {
    given("a=old b=new");
    fs::permissions(folder_ / "a", fs::perms(0640));
    fs::permissions(folder_ / "b", fs::perms(0640));
    if (!copying) fs::create_symlink("a", folder_ / "link");
    copying ? files().copy(in(u"b"), in(u"link")) : files().replaceWhole(in(u"link"), "new");
    EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
    EXPECT_EQ(tree(), "a=new b=new link=new");
    EXPECT_EQ(fs::status(folder_ / "a").permissions(), fs::perms(0640));
  }
}

TEST_F(FilesOnLinux, RemovingAFolderDoesNotFollowLinks) {
  given("gone\\ kept\\ kept\\a");
  fs::create_directory_symlink(folder_ / "kept", folder_ / "gone/link");
  files().removeFolder(in(u"gone"), true);
  EXPECT_EQ(tree(), "kept\\ kept\\a");
}

TEST_F(FilesOnLinux, AFileMovesToAnotherFileSystemAndAFolderDoesNot) {
  const std::string other = "/dev/shm/zel-" + std::to_string(getpid());
  struct stat here {
  }, there{};
  if (stat("/dev/shm", &there) != 0 || stat(folder_.c_str(), &here) != 0 || here.st_dev == there.st_dev)
    GTEST_SKIP() << "there is one file system only";
  given("a.txt");
  EXPECT_EQ(raised([&] { files().rename(fromUtf8(folder_.native()), fromUtf8(other)); }),
            ErrorNumber::DifferentDrive);
  files().rename(in(u"a.txt"), fromUtf8(other));
  EXPECT_EQ(tree(), "");
  EXPECT_EQ(files().readWhole(fromUtf8(other)), "x");
  files().remove(fromUtf8(other));
}

TEST_F(FilesOnLinux, DevicesPipesAndFilesTooLargeForATextAreRefused) {
  given("a");
  ASSERT_EQ(mkfifo((folder_ / "pipe").c_str(), 0600), 0);
  for (const String& device : {String(u"/dev/zero"), String(u"/dev/null"), in(u"pipe")})
    EXPECT_EQ(raised([&] { files().copy(device, in(u"c")); }), ErrorNumber::PathFileAccess);
  for (const StringView device : {u"/dev/zero", u"/dev/null"})
    EXPECT_EQ(raised([&] { files().copy(in(u"a"), device); }), ErrorNumber::PathFileAccess);
  EXPECT_EQ(raised([&] { files().readWhole(in(u"pipe")); }), ErrorNumber::PathFileAccess);
  EXPECT_NE(raised([&] { files().replaceWhole(in(u"pipe"), "x"); }), 0);
  EXPECT_EQ(raised([] { files().replaceWhole(u"/dev/null", "x"); }), 0);
  fs::resize_file(folder_ / "a", std::uintmax_t{1} << 31);
  EXPECT_EQ(raised([&] { files().readWhole(in(u"a")); }), ErrorNumber::OutOfMemory);
}

TEST_F(FilesOnLinux, ADeviceStaysUnderItsName) {
  given("a");
  if (mknod((folder_ / "device").c_str(), S_IFCHR | 0600, makedev(1, 3)) != 0)
    GTEST_SKIP() << "no device can be made";
  fs::create_symlink("device", folder_ / "link");
  for (const std::function<void()>& taking : std::vector<std::function<void()>>{
           [&] { files().remove(in(u"device"), true); }, [&] { files().rename(in(u"device"), in(u"b")); },
           [&] { files().rename(in(u"a"), in(u"device"), true); }})
    EXPECT_EQ(raised(taking), ErrorNumber::PathFileAccess);
  files().remove(in(u"link"));
  EXPECT_TRUE(fs::is_character_file(folder_ / "device") && fs::exists(folder_ / "a"));
}

TEST_F(FilesOnLinux, WithoutRightsAttributesMayStayAsTheyAreAndAFolderIsNotListed) {
  given("a Sub\\");
  fs::permissions(folder_ / "Sub", fs::perms(0333));
  setfsuid(65534);
  const bool isOther = files().fileExists(in(u"a")) && raised([&] { files().append(in(u"a"), "x"); }) != 0;
  const auto mark = [&](StringView name, std::uint32_t bits) {
    return raised([&] { files().setAttributes(in(name), bits); });
  };
  const std::int32_t results[] = {mark(u"a", FileAttribute::Archive), mark(u"Sub", FileAttribute::Archive),
                                  raised([&] { files().findAll(in(u"Sub\\*")); }), mark(u"a", 2)};
  setfsuid(geteuid());
  if (!isOther) GTEST_SKIP() << "the test cannot do without its rights";
  EXPECT_THAT(results, testing::ElementsAre(0, 0, 75, 75));
}

// Runs the action in a process of its own that may write no file longer than this.
template <class Action>
int inAProcessWithLimit(rlim_t bytes, Action action) {
  const pid_t child = fork();
  if (child == 0) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{bytes, bytes};
    setrlimit(RLIMIT_FSIZE, &limit);
    _exit(raised(action));
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(FilesOnLinux, ADiskThatFillsUpWhileWritingLeavesTheOldContents) {
  const std::string large(100000, 'n');
  given("a=old large=" + large);
  const std::string before = tree();
  for (const std::function<void()>& writing : std::vector<std::function<void()>>{
           [&] { files().replaceWhole(in(u"a"), large); }, [&] { files().overwrite(in(u"a"), large); },
           [&] { files().append(in(u"a"), large); }, [&] { files().copy(in(u"large"), in(u"a")); }})
    EXPECT_EQ(inAProcessWithLimit(50000, writing), ErrorNumber::DiskFull);
  EXPECT_TRUE(tree() == before);
  EXPECT_EQ(raised([] { files().replaceWhole(u"/dev/full", "x"); }), ErrorNumber::DiskFull);
  EXPECT_EQ(raised([] { files().overwrite(u"/dev/full", "x"); }), ErrorNumber::DiskFull);
}

TEST_F(FilesOnLinux, AProcessKilledWhileReplacingLeavesOneOfTheContentsWhole) {
  const std::string contents[] = {std::string(300000, 'a'), std::string(200000, 'b')};
  files().replaceWhole(in(u"a.txt"), contents[0]);
  for (int round = 0; round < 20; ++round) {
    const pid_t child = fork();
    if (child == 0)
      for (int i = 0;; ++i) files().replaceWhole(in(u"a.txt"), contents[i % 2]);
    usleep(static_cast<useconds_t>(1000 + round * 700));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    const std::string found = files().readWhole(in(u"a.txt"));
    ASSERT_TRUE(found == contents[0] || found == contents[1]);
  }
}

}  // namespace
}  // namespace zelUtilities
