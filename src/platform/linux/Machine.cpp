#include "platform/Machine.h"

#include <pwd.h>
#include <sys/random.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "automation/Error.h"
#include "automation/LetterCase.h"
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

std::string hostName() {
  char name[HOST_NAME_MAX + 1] = {};
  gethostname(name, sizeof name - 1);
  return name;
}

// The host with its domain as the table of hosts has it, if it has. A name server is not asked: that may take
// half a minute where there is none.
std::string fullName() {
  std::string host = hostName();
  if (host.find('.') != std::string::npos) return host;
  std::ifstream hosts("/etc/hosts");
  for (std::string line; std::getline(hosts, line);) {
    std::istringstream words(line.substr(0, line.find('#')));
    for (std::string word; words >> word;)
      if (word.starts_with(host + ".")) return word;
  }
  return host;
}

String netBiosName(StringView host) {
  String name(host.substr(0, 15));
  std::transform(name.begin(), name.end(), name.begin(), upperCase);
  return name;
}

class LinuxMachine : public Machine {
 public:
  std::uint32_t processId() override { return static_cast<std::uint32_t>(getpid()); }

  String computerName(std::int32_t kind) override {
    String full = fromUtf8(fullName());
    const std::size_t dot = full.find(u'.');
    if (kind < 0 || kind > 7) return {};
    switch (kind % 4) {
      case ComputerNameKind::NetBios:
        return netBiosName(full.substr(0, dot));
      case ComputerNameKind::Host:
        return full.substr(0, dot);
      case ComputerNameKind::Domain:
        return dot == String::npos ? String() : full.substr(dot + 1);
      default:
        return full;
    }
  }

  String userName() override {
    const User user = currentUser();
    return fromUtf8(user.name.empty() ? environment("USER") : user.name);
  }

  // The system's own numbers, of no platform that the library was made for.
  std::optional<SystemVersion> systemVersion() override {
    utsname system{};
    if (uname(&system) != 0) return {};
    SystemVersion version;
    version.servicePack = String(1, u'\0');
    std::istringstream release(system.release);
    char dot = 0;
    release >> version.major >> dot >> version.minor >> dot >> version.build;
    return version;
  }

  Guid newGuid() override {
    std::array<std::uint8_t, 16> bytes{};
    if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
      throw Error(ErrorNumber::InternalError);
    Guid guid;
    std::memcpy(&guid.data1, bytes.data(), 4);
    std::memcpy(&guid.data2, bytes.data() + 4, 2);
    std::memcpy(&guid.data3, bytes.data() + 6, 2);
    std::copy(bytes.begin() + 8, bytes.end(), guid.data4.begin());
    guid.data3 = static_cast<std::uint16_t>((guid.data3 & 0x0FFF) | 0x4000);  // the marks of a random one
    guid.data4[0] = static_cast<std::uint8_t>((guid.data4[0] & 0x3F) | 0x80);
    return guid;
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
