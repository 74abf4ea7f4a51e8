#include "platform/Machine.h"

#include <objbase.h>
#include <windows.h>
#include <winnetwk.h>

#include <iterator>

#include "automation/Error.h"
#include "platform/windows/FileErrors.h"
#include "platform/windows/FullPath.h"
#include "platform/windows/WideText.h"

namespace zelUtilities {

namespace {

String environment(const char16_t* name) {
  const DWORD room = GetEnvironmentVariableW(wide(name), nullptr, 0);  // with the terminator
  if (room == 0) return {};
  String value(room, u'\0');
  value.resize(GetEnvironmentVariableW(wide(name), wideBuffer(value), room));
  return value;
}

String homePath() {
  if (const String home = environment(u"ZELORA_HOME"); !home.empty()) return home;
  const String data = environment(u"APPDATA");
  if (data.empty()) throw Error(ErrorNumber::PathNotFound);
  return data + u"\\zelora";
}

bool isFolder(const String& path) {
  const DWORD attributes = GetFileAttributesW(wide(path));
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// With all folders above it.
void createFolders(const String& path) {
  for (std::size_t end = 3; end != String::npos && end < path.size();) {  // behind the drive
    end = path.find(u'\\', end);
    CreateDirectoryW(wide(path.substr(0, end)), nullptr);
    if (end != String::npos) ++end;
  }
  if (!isFolder(path)) raiseFileError(ERROR_PATH_NOT_FOUND);
}

class WindowsMachine : public Machine {
 public:
  std::uint32_t processId() override { return GetCurrentProcessId(); }

  String computerName(std::int32_t kind) override {
    const auto format = static_cast<COMPUTER_NAME_FORMAT>(kind);
    String name(256, u'\0');
    auto size = static_cast<DWORD>(name.size());
    if (!GetComputerNameExW(format, wideBuffer(name), &size)) {
      name.resize(size);
      if (!GetComputerNameExW(format, wideBuffer(name), &size)) return {};
    }
    name.resize(size);
    return name;
  }

  String userName() override {
    String name(256, u'\0');
    DWORD size = 255;
    if (WNetGetUserW(nullptr, wideBuffer(name), &size) != NO_ERROR) return {};
    return name.substr(0, name.find(u'\0'));
  }

  std::optional<SystemVersion> systemVersion() override {
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    if (!GetVersionExW(&version)) return {};
    return SystemVersion{version.dwPlatformId, version.dwMajorVersion, version.dwMinorVersion,
                         version.dwBuildNumber,
                         fromWide(version.szCSDVersion, std::size(version.szCSDVersion))};
  }

  Guid newGuid() override {
    GUID guid{};
    if (FAILED(CoCreateGuid(&guid))) throw Error(ErrorNumber::InternalError);
    return {static_cast<std::uint32_t>(guid.Data1), guid.Data2, guid.Data3, std::to_array(guid.Data4)};
  }

  String homeFolder() override {
    const String home = fullPathOf(homePath());
    if (!isFolder(home)) createFolders(home);
    return home;
  }
};

}  // namespace

Machine& Machine::system() {
  static auto& service = *new WindowsMachine;
  return service;
}

}  // namespace zelUtilities
