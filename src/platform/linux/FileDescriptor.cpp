#include "platform/linux/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/linux/FileErrors.h"

namespace zelUtilities {

namespace {

// Runs a call of the system again for as long as a signal interrupts it.
template <class Call>
auto uninterrupted(Call call) {
  auto result = call();
  while (result == -1 && errno == EINTR) result = call();
  return result;
}

}  // namespace

FileDescriptor::FileDescriptor(const std::string& path, int flags, unsigned mode)
    : number_(uninterrupted([&] { return open(path.c_str(), flags | O_CLOEXEC, mode); })) {
  // Where a file is to be created, it is its folder that is missing.
  if (number_ < 0) raiseFileError(errno == ENOENT && (flags & O_CREAT) != 0 ? ENOTDIR : errno);
}

FileDescriptor::~FileDescriptor() {
  if (number_ >= 0) ::close(number_);
}

std::uint64_t FileDescriptor::length() const {
  struct stat status {};
  if (fstat(number_, &status) != 0) raiseFileError(errno);
  return static_cast<std::uint64_t>(status.st_size);
}

void FileDescriptor::write(std::string_view contents) const {
  while (!contents.empty()) {
    const ssize_t written = uninterrupted([&] { return ::write(number_, contents.data(), contents.size()); });
    if (written < 0) raiseFileError(errno);
    contents.remove_prefix(static_cast<std::size_t>(written));
  }
}

std::size_t FileDescriptor::read(std::span<char> buffer) const {
  std::size_t at = 0;
  while (at < buffer.size()) {
    const ssize_t count = uninterrupted([&] { return ::read(number_, &buffer[at], buffer.size() - at); });
    if (count < 0) raiseFileError(errno);
    if (count == 0) break;
    at += static_cast<std::size_t>(count);
  }
  return at;
}

std::string FileDescriptor::read(std::size_t length) const {
  std::string contents(length, '\0');
  contents.resize(read(std::span(contents)));
  return contents;
}

void FileDescriptor::toDisk() const {
  // Some file systems have nothing to do here and say so.
  if (fsync(number_) != 0 && errno != EINVAL && errno != ENOTSUP) raiseFileError(errno);
}

void FileDescriptor::close() {
  if (::close(std::exchange(number_, -1)) != 0 && errno != EINTR) raiseFileError(errno);
}

}  // namespace zelUtilities
