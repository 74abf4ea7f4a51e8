// Files where the system has one tree of its own: drives, native names, links, rights, devices.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>

#include "automation/Error.h"
#include "platform/Files.h"
#include "platform/Machine.h"

namespace zelUtilities {
namespace {

namespace fs = std::filesystem;

template <class Action>
std::int32_t raised(Action action) {
  try {
    action();
  } catch (const Error& error) {
    return error.number();
  }
  return 0;
}

class FilesOnLinux : public testing::Test {
 protected:
  FilesOnLinux() : folder_(fs::absolute("files-linux")) {
    fs::remove_all(folder_);
    fs::create_directory(folder_);
  }
  ~FilesOnLinux() override { fs::remove_all(folder_); }

  String in(StringView name) const { return fromUtf8(folder_.native()) + u"/" + String(name); }
  fs::path home() const { return toUtf8(machine().homeFolder()); }
  std::size_t entries() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
  }

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

TEST_F(FilesOnLinux, TheThirdDriveIsAFolderOfTheUsers) {
  files().replaceWhole(u"C:\\drive-test.txt", "x");
  EXPECT_TRUE(fs::exists(home() / "drive_c/drive-test.txt"));
  EXPECT_EQ(files().readWhole(u"c:/DRIVE-TEST.txt"), "x");
  files().remove(u"C:drive-test.txt");
}

TEST_F(FilesOnLinux, ALinkNamedAfterALetterIsADrive) {
  EXPECT_EQ(raised([] { files().readWhole(u"T:\\a.txt"); }), ErrorNumber::PathNotFound);
  fs::create_directories(home() / "drives");
  fs::create_directory_symlink(folder_, home() / "drives/t");
  files().replaceWhole(u"T:\\a.txt", "x");
  EXPECT_EQ(files().readWhole(in(u"a.txt")), "x");
  EXPECT_TRUE(files().driveExists(u"t:"));
  EXPECT_EQ(files().findFirst(u"T:*.txt"), u"a.txt");
  EXPECT_EQ(raised([] { files().removeFolder(u"T:\\", true); }), ErrorNumber::PathFileAccess);
  EXPECT_TRUE(files().fileExists(in(u"a.txt")));
  fs::remove(home() / "drives/t");
}

TEST_F(FilesOnLinux, AnotherMachinesPathIsNotFound) {
  EXPECT_EQ(raised([] { files().readWhole(u"\\\\server\\share\\a.txt"); }), ErrorNumber::PathNotFound);
}

TEST_F(FilesOnLinux, TheExactSpellingWinsOverAnother) {
  files().replaceWhole(in(u"a.txt"), "small");
  std::ofstream(folder_ / "A.txt") << "capital";
  EXPECT_EQ(files().readWhole(in(u"A.txt")), "capital");
  EXPECT_EQ(files().readWhole(in(u"a.txt")), "small");
}

TEST_F(FilesOnLinux, RenamingChangesTheSpelling) {
  files().replaceWhole(in(u"a.txt"), "x");
  files().rename(in(u"A.txt"), in(u"A.TXT"));
  EXPECT_EQ(files().findFirst(in(u"*")), u"A.TXT");
  files().replaceWhole(in(u"b.txt"), "y");
  files().rename(in(u"b.txt"), in(u"a.txt"), true);
  EXPECT_EQ(files().findAll(in(u"*")), (std::vector<FileEntry>{{u"a.txt"}}));
  EXPECT_EQ(files().readWhole(in(u"a.txt")), "y");
}

TEST_F(FilesOnLinux, ANameThatIsNoUtf8IsFoundAsItIsListed) {
  std::ofstream(folder_ / "a\xFF.txt") << "x";
  const String listed = files().findFirst(in(u"*"));
  EXPECT_EQ(listed, u"a\xFFFD.txt");
  EXPECT_EQ(files().readWhole(in(listed)), "x");
}

TEST_F(FilesOnLinux, AttributesLieInTheExtendedAttributeThatOthersUse) {
  files().replaceWhole(in(u"a.txt"), "x");
  if (setxattr((folder_ / "a.txt").c_str(), "user.DOSATTRIB", "0x2", 3, 0) != 0)
    GTEST_SKIP() << "the file system keeps no extended attributes";
  EXPECT_EQ(files().attributes(in(u"a.txt")), FileAttribute::Hidden);
  EXPECT_EQ(files().findFirst(in(u"a.txt")), u"");
  files().setAttributes(in(u"a.txt"), FileAttribute::System | FileAttribute::Archive);
  char text[8] = {};
  getxattr((folder_ / "a.txt").c_str(), "user.DOSATTRIB", text, sizeof text);
  EXPECT_STREQ(text, "0x24");
}

TEST_F(FilesOnLinux, ALeadingDotDoesNotHideAFile) {
  files().replaceWhole(in(u".settings"), "x");
  EXPECT_EQ(files().findFirst(in(u".settings")), u".settings");
}

TEST_F(FilesOnLinux, AFileThatItsOwnerMayNotWriteIsReadOnlyForEverybody) {
  files().replaceWhole(in(u"a.txt"), "old");
  fs::permissions(folder_ / "a.txt", fs::perms(0466));
  EXPECT_EQ(files().attributes(in(u"a.txt")) & FileAttribute::ReadOnly, FileAttribute::ReadOnly);
  EXPECT_EQ(raised([&] { files().replaceWhole(in(u"a.txt"), "new"); }), ErrorNumber::PathFileAccess);
  EXPECT_EQ(files().readWhole(in(u"a.txt")), "old");
}

TEST_F(FilesOnLinux, ReplacingKeepsTheRightsAndWritesThroughALink) {
  files().replaceWhole(in(u"a.txt"), "old");
  fs::permissions(folder_ / "a.txt", fs::perms(0640));
  fs::create_symlink("a.txt", folder_ / "link.txt");
  files().replaceWhole(in(u"link.txt"), "new");
  EXPECT_TRUE(fs::is_symlink(folder_ / "link.txt"));
  EXPECT_EQ(files().readWhole(in(u"a.txt")), "new");
  EXPECT_EQ(fs::status(folder_ / "a.txt").permissions(), fs::perms(0640));
}

TEST_F(FilesOnLinux, RemovingAFolderDoesNotFollowLinks) {
  fs::create_directory(folder_ / "kept");
  files().replaceWhole(in(u"kept/a.txt"), "x");
  fs::create_directory(folder_ / "gone");
  fs::create_directory_symlink(folder_ / "kept", folder_ / "gone/link");
  files().removeFolder(in(u"gone"), true);
  EXPECT_TRUE(files().fileExists(in(u"kept/a.txt")));
}

TEST_F(FilesOnLinux, CopyingWritesThroughALinkAndRefusesWhatIsNoFile) {
  files().replaceWhole(in(u"a.txt"), "new");
  files().replaceWhole(in(u"b.txt"), "old");
  fs::permissions(folder_ / "a.txt", fs::perms(0640));
  fs::create_symlink("b.txt", folder_ / "link.txt");
  files().copy(in(u"a.txt"), in(u"link.txt"));
  EXPECT_TRUE(fs::is_symlink(folder_ / "link.txt"));
  EXPECT_EQ(files().readWhole(in(u"b.txt")), "new");
  EXPECT_EQ(fs::status(folder_ / "b.txt").permissions(), fs::perms(0640));
  for (const StringView device : {u"/dev/zero", u"/dev/null"}) {
    EXPECT_EQ(raised([&] { files().copy(device, in(u"c.txt")); }), ErrorNumber::PathFileAccess);
    EXPECT_EQ(raised([&] { files().copy(in(u"a.txt"), device); }), ErrorNumber::PathFileAccess);
  }
}

TEST_F(FilesOnLinux, AFileMovesToAnotherFileSystemAndAFolderDoesNot) {
  const std::string other = "/dev/shm/zel-" + std::to_string(getpid());
  struct stat here {
  }, there{};
  if (stat("/dev/shm", &there) != 0 || stat(folder_.c_str(), &here) != 0 || here.st_dev == there.st_dev)
    GTEST_SKIP() << "there is one file system only";
  files().replaceWhole(in(u"a.txt"), "x");
  EXPECT_EQ(raised([&] { files().rename(fromUtf8(folder_.native()), fromUtf8(other)); }),
            ErrorNumber::DifferentDrive);
  files().rename(in(u"a.txt"), fromUtf8(other));
  EXPECT_EQ(entries(), 0U);
  EXPECT_EQ(files().readWhole(fromUtf8(other)), "x");
  files().remove(fromUtf8(other));
}

TEST_F(FilesOnLinux, APipeIsNotWaitedFor) {
  ASSERT_EQ(mkfifo((folder_ / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(raised([&] { files().copy(in(u"pipe"), in(u"b")); }), ErrorNumber::PathFileAccess);
  EXPECT_EQ(raised([&] { files().readWhole(in(u"pipe")); }), ErrorNumber::PathFileAccess);
  EXPECT_NE(raised([&] { files().replaceWhole(in(u"pipe"), "x"); }), 0);
}

TEST_F(FilesOnLinux, AFullDiskIsReported) {
  EXPECT_EQ(raised([] { files().replaceWhole(u"/dev/full", "x"); }), ErrorNumber::DiskFull);
  EXPECT_EQ(raised([] { files().overwrite(u"/dev/full", "x"); }), ErrorNumber::DiskFull);
  EXPECT_EQ(raised([] { files().replaceWhole(u"/dev/null", "x"); }), 0);
}

TEST_F(FilesOnLinux, AFileLongerThanATextMayBeIsRefused) {
  std::ofstream(folder_ / "huge") << "x";
  fs::resize_file(folder_ / "huge", std::uintmax_t{1} << 31);
  EXPECT_EQ(raised([&] { files().readWhole(in(u"huge")); }), ErrorNumber::OutOfMemory);
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
  files().replaceWhole(in(u"a.txt"), "old");
  const std::string large(100000, 'n');
  EXPECT_EQ(inAProcessWithLimit(50000, [&] { files().replaceWhole(in(u"a.txt"), large); }),
            ErrorNumber::DiskFull);
  EXPECT_EQ(inAProcessWithLimit(50000, [&] { files().overwrite(in(u"a.txt"), large); }),
            ErrorNumber::DiskFull);
  EXPECT_EQ(inAProcessWithLimit(50000, [&] { files().append(in(u"a.txt"), large); }), ErrorNumber::DiskFull);
  std::ofstream(folder_ / "large") << large;
  EXPECT_EQ(inAProcessWithLimit(50000, [&] { files().copy(in(u"large"), in(u"a.txt")); }),
            ErrorNumber::DiskFull);
  fs::remove(folder_ / "large");
  EXPECT_EQ(files().readWhole(in(u"a.txt")), "old");
  EXPECT_EQ(entries(), 1U);
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
