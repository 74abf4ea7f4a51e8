#include "platform/windows/FileErrors.h"

#include <windows.h>

#include "automation/Error.h"

namespace zelUtilities {

std::int32_t fileErrorNumber(unsigned long code) {
  switch (code) {
    case ERROR_FILE_NOT_FOUND:
      return ErrorNumber::FileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_DIRECTORY:
      return ErrorNumber::PathNotFound;
    case ERROR_ACCESS_DENIED:
    case ERROR_DIR_NOT_EMPTY:
    case ERROR_PRIVILEGE_NOT_HELD:
      return ErrorNumber::PathFileAccess;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_WRITE_PROTECT:
    case ERROR_USER_MAPPED_FILE:
    case ERROR_CURRENT_DIRECTORY:
      return ErrorNumber::PermissionDenied;
    case ERROR_NOT_SAME_DEVICE:
      return ErrorNumber::DifferentDrive;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
      return ErrorNumber::FileAlreadyExists;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      return ErrorNumber::DiskFull;
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_FILENAME_EXCED_RANGE:
      return ErrorNumber::BadFileName;
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY:
      return ErrorNumber::OutOfMemory;
    default:
      return 0;
  }
}

void raiseFileError(unsigned long code) {
  if (code == ERROR_TOO_MANY_OPEN_FILES) throw Error(67, {}, u"Too many files");
  if (code == ERROR_NOT_READY) throw Error(71, {}, u"Disk not ready");
  const std::int32_t number = fileErrorNumber(code);
  throw Error(number != 0 ? number : ErrorNumber::DeviceIO);
}

void raiseLastFileError() { raiseFileError(GetLastError()); }

}  // namespace zelUtilities
