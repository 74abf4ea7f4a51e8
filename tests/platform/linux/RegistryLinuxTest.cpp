// The registry's files: several processes, killed ones, and files that cannot be used.
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

#include "platform/Machine.h"
#include "platform/Registry.h"

namespace zelUtilities {
namespace {

namespace fs = std::filesystem;

constexpr RegistryHandle root = RegistryRoot::CurrentUser;
constexpr StringView top = u"Software\\Linux";

// Each test has a home, and so a registry, of its own.
class RegistryOnLinux : public testing::Test {
 protected:
  RegistryOnLinux() : home_(fs::absolute("registry-home")), before_(std::getenv("ZELORA_HOME")) {
    clear();
    setenv("ZELORA_HOME", home_.c_str(), 1);
  }
  ~RegistryOnLinux() override {
    clear();
    setenv("ZELORA_HOME", before_.c_str(), 1);
  }

  void clear() {
    std::error_code ignored;
    fs::permissions(home_, fs::perms::owner_all, ignored);
    fs::remove_all(home_);
  }
  fs::path userFile() const { return home_ / "registry-user.db"; }

  static RegistryCode create(StringView path = top, RegistryHandle from = root) {
    RegistryKey key;
    bool existed = false;
    return key.create(from, path, existed);
  }
  static RegistryCode set(StringView name, std::string_view data) {
    RegistryKey key;
    const RegistryCode code = key.open(root, top, RegistryAccess::Write);
    return code == 0 ? registry().setValue(key.handle(), name, RegistryType::Text, data) : code;
  }
  static RegistryCode get(StringView name, std::string& data) {
    RegistryKey key;
    RegistryValue value;
    RegistryCode code = key.open(root, top, RegistryAccess::Read);
    if (code == 0) code = registry().queryValue(key.handle(), name, value);
    data = value.text();
    return code;
  }
  static std::string get(StringView name) {
    std::string data;
    EXPECT_EQ(get(name, data), 0);
    return data;
  }
  static std::size_t countValues() {
    RegistryKey key;
    RegistryValue value;
    std::set<String> names;
    EXPECT_EQ(key.open(root, top, RegistryAccess::Read), 0);
    for (std::uint32_t i = 0; registry().enumValue(key.handle(), i, value) == 0; ++i)
      names.insert(value.name);
    return names.size();
  }

  static std::string contentsOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

  // Runs the action in a process of its own; true when it answers true there.
  template <class Action>
  static pid_t start(Action action) {
    const pid_t child = fork();
    if (child == 0) _exit(action() ? 0 : 1);
    return child;
  }
  static bool succeeded(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
  }

  const fs::path home_;
  const std::string before_;
};

TEST_F(RegistryOnLinux, UserAndMachineHaveAFileEach) {
  create(u"Software\\OfUser", RegistryRoot::CurrentUser);
  create(u"Software\\OfMachine", RegistryRoot::LocalMachine);
  RegistryKey key;
  EXPECT_EQ(key.open(RegistryRoot::LocalMachine, u"Software\\OfUser", RegistryAccess::Read),
            RegistryResult::FileNotFound);
  fs::remove(userFile());
  EXPECT_EQ(key.open(RegistryRoot::CurrentUser, u"Software\\OfUser", RegistryAccess::Read),
            RegistryResult::FileNotFound);
  EXPECT_EQ(key.open(RegistryRoot::LocalMachine, u"Software\\OfMachine", RegistryAccess::Read), 0);
}

TEST_F(RegistryOnLinux, TheClassesAreABranchOfTheMachines) {
  create(u".txt", RegistryRoot::ClassesRoot);
  RegistryKey key;
  EXPECT_EQ(key.open(RegistryRoot::LocalMachine, u"Software\\Classes\\.TXT", RegistryAccess::Read), 0);
  key.close();
  EXPECT_EQ(registry().deleteKey(RegistryRoot::ClassesRoot, u".txt"), 0);
  EXPECT_EQ(registry().deleteKey(RegistryRoot::LocalMachine, u"Software\\Classes"),
            RegistryResult::AccessDenied);
}

TEST_F(RegistryOnLinux, TwoProcessesThatWriteAThousandValuesEachLoseNone) {
  create();
  const auto writeAll = [](const String& prefix) {
    for (int i = 0; i < 1000; ++i)
      if (set(prefix + decimalText(i), "x") != 0) return false;
    return true;
  };
  const pid_t first = start([&] { return writeAll(u"first"); });
  const pid_t second = start([&] { return writeAll(u"second"); });
  EXPECT_TRUE(succeeded(first));
  EXPECT_TRUE(succeeded(second));
  EXPECT_EQ(countValues(), 2000U);
}

TEST_F(RegistryOnLinux, ProcessesThatCreateTheFilesAtTheSameTimeAgree) {
  for (int round = 0; round < 5; ++round) {
    fs::remove_all(home_);
    std::vector<pid_t> children;
    for (int i = 0; i < 6; ++i)
      children.push_back(start([&] { return create() == 0 && set(u"v" + decimalText(i), "x") == 0; }));
    for (const pid_t child : children) EXPECT_TRUE(succeeded(child));
    EXPECT_EQ(countValues(), 6U);
  }
}

TEST_F(RegistryOnLinux, AProcessKilledWhileWritingLosesNothingThatItHadWritten) {
  create();
  for (int round = 0; round < 10; ++round) {
    int told[2];
    ASSERT_EQ(pipe(told), 0);
    const pid_t child = start([&] {
      for (int i = 0;; ++i)
        if (set(u"v" + decimalText(i), std::string(2000, 'x')) != 0 ||
            write(told[1], &i, sizeof i) != sizeof i)
          return false;
    });
    close(told[1]);
    usleep(static_cast<useconds_t>(2000 + round * 1500));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    int last = -1;
    for (int i = 0; read(told[0], &i, sizeof i) == sizeof i;) last = i;
    close(told[0]);
    for (int i = 0; i <= last; ++i) ASSERT_EQ(get(u"v" + decimalText(i)).size(), 2000U);
    ASSERT_EQ(set(u"after", "x"), 0);
  }
}

TEST_F(RegistryOnLinux, AKeyStaysOpenInAProcessMadeFromThisOne) {
  create();
  set(u"v", "abc");
  RegistryKey key;
  ASSERT_EQ(key.open(root, top, RegistryAccess::Read), 0);
  EXPECT_TRUE(succeeded(start([&] {
    RegistryValue value;
    return registry().queryValue(key.handle(), u"v", value) == 0 && set(u"child", "x") == 0;
  })));
  EXPECT_EQ(get(u"child"), "x");
}

TEST_F(RegistryOnLinux, AStoreThatMayNotBeWrittenIsStillRead) {
  create();
  set(u"v", "abc");
  fs::permissions(userFile(), fs::perms::owner_read);
  RegistryKey key;
  EXPECT_TRUE(succeeded(start([] {  // where nothing was open before
    std::string data;
    bool existed = false;
    RegistryKey made;
    return get(u"v", data) == 0 && data == "abc" && set(u"v", "x") == RegistryResult::AccessDenied &&
           registry().deleteKey(root, top) != 0 && made.create(root, top, existed) == 0 && existed &&
           made.create(root, u"Software\\New", existed) != 0;
  })));
  fs::permissions(userFile(), fs::perms::owner_all);
}

TEST_F(RegistryOnLinux, ADamagedFileIsReportedAndLeftAlone) {
  fs::create_directory(home_);
  std::ofstream(userFile(), std::ios::binary) << std::string(8192, 'd');
  std::string data;
  EXPECT_EQ(get(u"v", data), RegistryResult::Corrupt);
  EXPECT_EQ(set(u"v", "x"), RegistryResult::Corrupt);
  EXPECT_EQ(create(), RegistryResult::Corrupt);
  EXPECT_EQ(registry().deleteKey(root, top), RegistryResult::Corrupt);
  EXPECT_EQ(contentsOf(userFile()), std::string(8192, 'd'));
  EXPECT_EQ(create(top, RegistryRoot::LocalMachine), 0);
}

TEST_F(RegistryOnLinux, AFileDamagedInTheMiddleNeverCrashes) {
  create();
  for (int i = 0; i < 200; ++i) set(u"v" + decimalText(i), std::string(300, 'x'));
  EXPECT_TRUE(succeeded(start([] { return set(u"last", "x") == 0; })));  // its end leaves one file
  setenv("ZELORA_HOME", (home_ / "elsewhere").c_str(), 1);
  create();  // lets go of the file
  setenv("ZELORA_HOME", home_.c_str(), 1);
  const std::string whole = contentsOf(userFile());
  ASSERT_GT(whole.size(), 40000U);
  for (std::size_t at = 100; at < whole.size(); at += 1777) {
    std::string damaged = whole;
    for (std::size_t i = at; i < std::min(at + 600, damaged.size()); ++i)
      damaged[i] = static_cast<char>(i * 31);
    std::ofstream(userFile(), std::ios::binary) << damaged;
    EXPECT_TRUE(succeeded(start([] {
      std::string data;
      for (int i = 0; i < 200; ++i) get(u"v" + decimalText(i), data);
      set(u"new", "x");
      return true;
    })));
    fs::remove(userFile());
    fs::remove(userFile().native() + "-wal");
    fs::remove(userFile().native() + "-shm");
  }
}

TEST_F(RegistryOnLinux, SomebodyElsesDatabaseIsLeftAlone) {
  fs::create_directory(home_);
  sqlite3* database = nullptr;
  ASSERT_EQ(sqlite3_open(userFile().c_str(), &database), SQLITE_OK);
  sqlite3_exec(database, "CREATE TABLE recipes (name TEXT)", nullptr, nullptr, nullptr);
  sqlite3_close(database);
  const std::string before = contentsOf(userFile());
  EXPECT_EQ(create(), RegistryResult::Corrupt);
  EXPECT_EQ(contentsOf(userFile()), before);
}

TEST_F(RegistryOnLinux, AFileThatAnotherProcessKeepsToItselfIsBusyInTheEnd) {
  create();
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(userFile().c_str(), &other), SQLITE_OK);
  sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
  EXPECT_EQ(set(u"v", "x"), RegistryResult::Busy);
  std::string data;
  EXPECT_EQ(get(u"v", data), RegistryResult::FileNotFound);  // reading goes on
  sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
  sqlite3_close(other);
  EXPECT_EQ(set(u"v", "x"), 0);
}

TEST_F(RegistryOnLinux, AHomeThatCannotBeMadeIsDenied) {
  std::ofstream(home_.native()) << "a file where the folder should be";
  std::string data;
  EXPECT_EQ(get(u"v", data), RegistryResult::AccessDenied);
  EXPECT_EQ(create(), RegistryResult::AccessDenied);
}

TEST_F(RegistryOnLinux, AFileThatIsTakenAwayIsMadeAgain) {
  create();
  fs::remove_all(home_);
  EXPECT_EQ(create(), 0);
  EXPECT_EQ(set(u"v", "x"), 0);
  EXPECT_TRUE(fs::exists(userFile()));
}

}  // namespace
}  // namespace zelUtilities
