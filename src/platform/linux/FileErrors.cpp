#include "platform/linux/FileErrors.h"

#include <cerrno>
#include <cstdint>

#include "automation/Error.h"

namespace zelUtilities {

namespace {

std::int32_t numberOf(int code) {
  switch (code) {
    case ENOENT:
      return ErrorNumber::FileNotFound;
    case ENOTDIR:
    case ELOOP:
    case ENXIO:
    case ENODEV:
      return ErrorNumber::PathNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
    case ENOTEMPTY:
      return ErrorNumber::PathFileAccess;
    case EBUSY:
    case ETXTBSY:
    case EAGAIN:
    case ENOTSUP:
      return ErrorNumber::PermissionDenied;
    case EEXIST:
      return ErrorNumber::FileAlreadyExists;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return ErrorNumber::DiskFull;
    case ENAMETOOLONG:
    case EINVAL:
    case EILSEQ:
      return ErrorNumber::BadFileName;
    case ENOMEM:
      return ErrorNumber::OutOfMemory;
    default:
      return ErrorNumber::DeviceIO;
  }
}

}  // namespace

void raiseFileError(int code) {
  if (code == EMFILE || code == ENFILE) throw Error(67, {}, u"Too many files");
  throw Error(numberOf(code));
}

}  // namespace zelUtilities
