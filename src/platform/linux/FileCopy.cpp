#include "platform/linux/FileCopy.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

#include "automation/Error.h"
#include "platform/linux/FileAttributes.h"
#include "platform/linux/FileErrors.h"
#include "platform/linux/TemporaryFile.h"

namespace zelUtilities {

namespace {

constexpr std::size_t bufferSize = 65536;

// What is in the page cache anyway goes through a buffer in fewer calls than the system's own copy.
void copyThroughBuffer(const FileDescriptor& from, const FileDescriptor& to, std::uint64_t expected) {
  std::array<char, bufferSize> buffer;
  for (std::uint64_t copied = 0;;) {
    const ssize_t count = read(from.number(), buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) raiseFileError(errno);
    if (count == 0) return;
    to.write({buffer.data(), static_cast<std::size_t>(count)});
    copied += static_cast<std::uint64_t>(count);
    if (copied == expected) return;  // what is added meanwhile does not belong to this copy
  }
}

// The system's own copy, which can share the blocks; how much of the file it has done.
std::uint64_t copyInSystem(const FileDescriptor& from, const FileDescriptor& to, std::uint64_t length) {
  std::uint64_t copied = 0;
  while (copied < length) {
    const std::size_t piece = static_cast<std::size_t>(std::min<std::uint64_t>(length - copied, 1U << 30));
    const ssize_t count = copy_file_range(from.number(), nullptr, to.number(), nullptr, piece, 0);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 && (errno == ENOSPC || errno == EDQUOT || errno == EFBIG)) raiseFileError(errno);
    if (count <= 0) break;  // not between these two; the buffer goes on from here
    copied += static_cast<std::uint64_t>(count);
  }
  return copied;
}

void copyContents(const FileDescriptor& from, const FileDescriptor& to, std::uint64_t length) {
  const std::uint64_t copied = length > bufferSize ? copyInSystem(from, to, length) : 0;
  if (copied < length || length == 0) copyThroughBuffer(from, to, length - copied);
}

}  // namespace

void copyFile(const std::string& from, const std::string& to, bool replacing) {
  const FileDescriptor source(from, O_RDONLY | O_NONBLOCK);
  struct stat status {};
  if (fstat(source.number(), &status) != 0) raiseFileError(errno);
  if (!S_ISREG(status.st_mode)) throw Error(ErrorNumber::PathFileAccess);
  struct stat there {};
  if (replacing && stat(to.c_str(), &there) == 0 && there.st_dev == status.st_dev &&
      there.st_ino == status.st_ino)
    throw Error(ErrorNumber::PermissionDenied);

  TemporaryFile temporary(to, 0600);
  copyContents(source, temporary.file(), static_cast<std::uint64_t>(status.st_size));
  const int copy = temporary.file().number();
  copyKeptAttributes(source.number(), copy);
  if (fchmod(copy, status.st_mode & 0777) != 0) raiseFileError(errno);
  const std::array<timespec, 2> times{status.st_atim, status.st_mtim};
  if (futimens(copy, times.data()) != 0) raiseFileError(errno);
  temporary.moveTo(to, replacing);
}

}  // namespace zelUtilities
