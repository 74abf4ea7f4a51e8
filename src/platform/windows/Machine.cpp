#include "platform/Machine.h"

#include <windows.h>

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

  String computerName() override {
    wchar_t name[MAX_COMPUTERNAME_LENGTH + 1];
    DWORD size = MAX_COMPUTERNAME_LENGTH + 1;
    return GetComputerNameW(name, &size) ? fromWide(name, size) : String();
  }

  String userName() override {
    wchar_t name[257];
    DWORD size = 257;  // with the terminator, before and after
    return GetUserNameW(name, &size) ? fromWide(name, size - 1) : String();
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
