#include "platform/Machine.h"

#include <pwd.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/linux/FileErrors.h"

namespace zelUtilities {

namespace {

struct User {
  std::string name;
  std::string home;
};

User currentUser() {
  std::vector<char> buffer(16384);
  passwd entry{};
  passwd* found = nullptr;
  if (getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || !found) return {};
  return {entry.pw_name, entry.pw_dir};
}

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

std::filesystem::path homePath() {
  if (const std::string home = environment("ZELORA_HOME"); !home.empty()) return home;
  // Relative paths there are to be ignored, by the convention for these folders.
  if (const std::string data = environment("XDG_DATA_HOME"); data.starts_with('/'))
    return std::filesystem::path(data) / "zelora";
  std::string user = environment("HOME");
  if (user.empty()) user = currentUser().home;
  return std::filesystem::path(user.empty() ? "/" : user) / ".local/share/zelora";
}

class LinuxMachine : public Machine {
 public:
  std::uint32_t processId() override { return static_cast<std::uint32_t>(getpid()); }

  String computerName() override {
    char name[HOST_NAME_MAX + 1] = {};
    gethostname(name, sizeof name - 1);
    return fromUtf8(name);
  }

  String userName() override {
    const User user = currentUser();
    return fromUtf8(user.name.empty() ? environment("USER") : user.name);
  }

  String homeFolder() override {
    std::error_code failure;
    std::filesystem::path home = std::filesystem::absolute(homePath(), failure);
    if (!home.has_filename()) home = home.parent_path();
    if (!failure) std::filesystem::create_directories(home, failure);
    if (failure) raiseFileError(failure.value());
    return fromUtf8(home.native());
  }
};

}  // namespace

Machine& Machine::system() {
  static auto& service = *new LinuxMachine;
  return service;
}

}  // namespace zelUtilities
