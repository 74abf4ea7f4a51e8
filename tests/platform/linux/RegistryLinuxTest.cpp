// The registry's files: several processes, killed ones, and files that cannot be used.
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>

#include "platform/Files.h"
#include "platform/Registry.h"
#include "platform/linux/Environment.h"

namespace zelUtilities {
namespace {

namespace fs = std::filesystem;
using namespace RegistryResult;

constexpr RegistryHandle root = RegistryRoot::CurrentUser;
constexpr RegistryHandle machine = RegistryRoot::LocalMachine;
constexpr StringView top = u"Software\\Linux";

// Each test has a home, and so a registry, of its own.
class RegistryOnLinux : public testing::Test {
 protected:
  RegistryOnLinux() { fs::remove_all(home); }
  ~RegistryOnLinux() override { fs::remove_all(home); }

  static RegistryCode create(StringView path = top, RegistryHandle from = root) {
    RegistryKey key;
    bool existed = false;
    return key.create(from, path, existed);
  }
  static RegistryCode open(RegistryHandle from, StringView path) {
    return RegistryKey().open(from, path, RegistryAccess::Read);
  }
  static RegistryCode set(StringView name, std::string_view data = "x") {
    RegistryKey key;
    const RegistryCode code = key.open(root, top, RegistryAccess::Write);
    return code == 0 ? registry().setValue(key.handle(), name, RegistryType::Text, data) : code;
  }
  // The code of a failure in place of the data.
  static std::string get(StringView name) {
    RegistryKey key;
    RegistryValue value;
    RegistryCode code = key.open(root, top, RegistryAccess::Read);
    if (code == 0) code = registry().queryValue(key.handle(), name, value);
    return code == 0 ? std::string(value.text()) : std::to_string(code);
  }
  // Runs the action in a process of its own, which succeeds when it answers true there.
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
  // A connection of somebody else's to the user's file.
  void withDatabase(
      const char* statement, const std::function<void()>& meanwhile = [] {}) const {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &database), SQLITE_OK);
    sqlite3_exec(database, statement, nullptr, nullptr, nullptr);
    meanwhile();
    sqlite3_close(database);
  }

  const fs::path home = fs::absolute("registry-home");
  const fs::path file = home / "registry-user.db";
  Environment homeInForce{"ZELORA_HOME", home.c_str()};
};

TEST_F(RegistryOnLinux, UserAndMachineHaveAFileEachAndTheClassesAreABranchOfTheMachines) {
  create(u"Software\\OfUser", root);
  create(u".txt", RegistryRoot::ClassesRoot);
  EXPECT_EQ(open(machine, u"Software\\OfUser"), FileNotFound);
  fs::remove(file);
  EXPECT_EQ(open(root, u"Software\\OfUser"), FileNotFound);
  EXPECT_EQ(open(machine, u"Software\\Classes\\.TXT"), 0);
  EXPECT_EQ(registry().deleteKey(RegistryRoot::ClassesRoot, u".txt"), 0);
  EXPECT_EQ(registry().deleteKey(machine, u"Software\\Classes"), AccessDenied);
}

TEST_F(RegistryOnLinux, ProcessesThatCreateTheFilesAndWriteAtTheSameTimeLoseNothing) {
  for (int round = 0; round < 5; ++round) {
    fs::remove_all(home);
    std::vector<pid_t> children;
    for (int i = 0; i < 6; ++i)
      children.push_back(start([&] {
        bool done = create() == 0;
        for (int k = 0; k < 100; ++k) done = done && set(decimalText(100 * i + k)) == 0;
        return done;
      }));
    for (const pid_t child : children) EXPECT_TRUE(succeeded(child));
    for (int k = 0; k < 600; ++k) EXPECT_EQ(get(decimalText(k)), "x");
  }
}

TEST_F(RegistryOnLinux, AStoreThatMayNotBeWrittenIsStillRead) {
  create();
  set(u"v", "abc");
  fs::permissions(file, fs::perms::owner_read);
  EXPECT_TRUE(succeeded(start([] {  // where nothing was open before
    return get(u"v") == "abc" && set(u"v") == AccessDenied && registry().deleteKey(root, top) != 0 &&
           create() == 0 && create(u"Software\\New") != 0;
  })));
}

TEST_F(RegistryOnLinux, AFileThatIsNoRegistryIsReportedAndLeftAlone) {
  fs::create_directory(home);
  const auto refused = [&] {
    const std::string before = files().readWhole(fromUtf8(file.native()));
    EXPECT_EQ(get(u"v"), std::to_string(Corrupt));
    EXPECT_EQ(set(u"v"), Corrupt);
    EXPECT_EQ(create(), Corrupt);
    EXPECT_EQ(registry().deleteKey(root, top), Corrupt);
    EXPECT_EQ(files().readWhole(fromUtf8(file.native())), before);
  };
  withDatabase("CREATE TABLE recipes (name TEXT)");
  refused();
  std::ofstream(file, std::ios::binary) << std::string(8192, 'd');
  refused();
  EXPECT_EQ(create(top, machine), 0);
}

TEST_F(RegistryOnLinux, AFileThatAnotherProcessKeepsToItselfIsBusyInTheEnd) {
  create();
  withDatabase("BEGIN IMMEDIATE", [] {
    EXPECT_EQ(set(u"v"), Busy);
    EXPECT_EQ(get(u"v"), std::to_string(FileNotFound));  // reading goes on
  });
  EXPECT_EQ(set(u"v"), 0);
}

TEST_F(RegistryOnLinux, AHomeThatCannotBeMadeIsDeniedAndOneTakenAwayIsMadeAgain) {
  std::ofstream(home.native()) << "a file where the folder should be";
  EXPECT_EQ(get(u"v"), std::to_string(AccessDenied));
  EXPECT_EQ(create(), AccessDenied);
  fs::remove(home);
  create();
  fs::remove_all(home);
  EXPECT_EQ(create(), 0);
  EXPECT_EQ(set(u"v"), 0);
  EXPECT_TRUE(fs::exists(file));
}

}  // namespace
}  // namespace zelUtilities
