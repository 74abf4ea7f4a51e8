#include "platform/linux/FileAttributes.h"

#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "platform/Files.h"
#include "platform/linux/FileErrors.h"

namespace zelUtilities {

namespace {

constexpr const char* dosAttributes = "user.DOSATTRIB";
constexpr std::uint32_t storedBits = FileAttribute::Hidden | FileAttribute::System | FileAttribute::Archive;

struct stat statusOf(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) raiseFileError(errno);
  return status;
}

// The text "0x22", at the start of what may be longer. Files without it are to be archived.
std::uint32_t storedAttributes(const std::string& path, std::uint32_t otherwise) {
  char text[256] = {};
  const ssize_t size = getxattr(path.c_str(), dosAttributes, text, sizeof text - 1);
  if (size < 2 || text[0] != '0' || text[1] != 'x') return otherwise;
  return static_cast<std::uint32_t>(std::strtoul(text, nullptr, 16)) & (storedBits | FileAttribute::ReadOnly);
}

// The names of an entry's extended attributes; a failure where there are too many for the room. By the open
// folder the path need not be walked again, which Linux can since 6.13 and the C library cannot yet.
ssize_t listAttributes(const std::string& path, int folder, const char* name, char* names, std::size_t room) {
  constexpr long listxattrat = 465;
  static std::atomic<bool> isKnown = true;
  if (isKnown) {
    const long size = syscall(listxattrat, folder, name, 0, names, room);
    if (size >= 0 || (errno != ENOSYS && errno != EPERM)) return size;
    isKnown = false;
  }
  return listxattr(path.c_str(), names, room);
}

void storeAttributes(const std::string& path, std::uint32_t bits, std::uint32_t usual) {
  if (storedAttributes(path, usual) == bits) return;  // which needs no right to change them
  if (bits == usual) {
    if (removexattr(path.c_str(), dosAttributes) != 0) raiseFileError(errno);
    return;
  }
  char text[16] = {};
  const int size = std::snprintf(text, sizeof text, "0x%x", bits);
  if (setxattr(path.c_str(), dosAttributes, text, static_cast<std::size_t>(size), 0) == 0) return;
  // Whether something is to be archived is not worth a failure where nothing can be kept, or not by this
  // user.
  const bool isRefused = errno == ENOTSUP || errno == EACCES || errno == EPERM;
  if (!isRefused || (bits ^ usual) != FileAttribute::Archive) raiseFileError(errno);
}

std::uint32_t usualBits(const struct stat& status) {
  return S_ISDIR(status.st_mode) ? FileAttribute::Normal : FileAttribute::Archive;
}

std::uint32_t attributesFrom(const std::string& path, const struct stat& status) {
  std::uint32_t attributes = storedAttributes(path, usualBits(status));
  if (S_ISDIR(status.st_mode)) return attributes | FileAttribute::Folder;
  if ((status.st_mode & S_IWUSR) == 0) attributes |= FileAttribute::ReadOnly;
  return attributes;
}

}  // namespace

std::uint32_t fileAttributes(const std::string& path) { return attributesFrom(path, statusOf(path)); }

std::uint32_t keptAttributes(const std::string& path) { return storedAttributes(path, 0) & storedBits; }

std::uint32_t keptAttributes(const std::string& path, int folder, const char* name) {
  // To list the names costs less than to ask for one of them.
  char names[256];
  const ssize_t size = listAttributes(path, folder, name, names, sizeof names);
  if (size >= 0 &&
      std::string_view(names, static_cast<std::size_t>(size)).find(dosAttributes) == std::string_view::npos)
    return 0;
  return keptAttributes(path);
}

void setFileAttributes(const std::string& path, std::uint32_t attributes) {
  const struct stat status = statusOf(path);
  // A folder's mode stays as it is: read-only does not keep anybody from writing in it.
  const bool folder = S_ISDIR(status.st_mode);
  storeAttributes(path, attributes & (folder ? storedBits | FileAttribute::ReadOnly : storedBits),
                  usualBits(status));
  if (folder) return;
  const mode_t mode = status.st_mode & 07777;
  const mode_t wanted = attributes & FileAttribute::ReadOnly ? mode & ~0222U : mode | S_IWUSR;
  if (wanted != mode && chmod(path.c_str(), wanted) != 0) raiseFileError(errno);
}

bool isReadOnly(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && !S_ISDIR(status.st_mode) &&
         (attributesFrom(path, status) & FileAttribute::ReadOnly) != 0;
}

void copyAttributes(const std::string& from, int toFile) {
  const struct stat status = statusOf(from);
  // In this order: a change of the owner takes rights away.
  if (fchown(toFile, status.st_uid, status.st_gid) != 0) errno = 0;
  if (fchmod(toFile, status.st_mode & 07777) != 0) raiseFileError(errno);

  const ssize_t size = listxattr(from.c_str(), nullptr, 0);
  if (size <= 0) return;
  std::vector<char> names(static_cast<std::size_t>(size) + 1);
  const ssize_t listed = listxattr(from.c_str(), names.data(), names.size() - 1);
  for (const char* name = names.data(); name < names.data() + listed;
       name += std::char_traits<char>::length(name) + 1) {
    std::vector<char> value(65536);
    const ssize_t length = getxattr(from.c_str(), name, value.data(), value.size());
    if (length >= 0) fsetxattr(toFile, name, value.data(), static_cast<std::size_t>(length), 0);
  }
}

void copyKeptAttributes(int from, int to) {
  char text[256];
  const ssize_t size = fgetxattr(from, dosAttributes, text, sizeof text);
  if (size > 0) fsetxattr(to, dosAttributes, text, static_cast<std::size_t>(size), 0);
}

}  // namespace zelUtilities
