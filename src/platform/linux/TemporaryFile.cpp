#include "platform/linux/TemporaryFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <random>

#include "platform/linux/FileErrors.h"
#include "platform/linux/FilePaths.h"

namespace zelUtilities {

namespace {

std::string pathBeside(const std::string& target) {
  static std::atomic<unsigned> count = std::random_device()();
  return folderOf(target) + "/.zel-" + std::to_string(getpid()) + "-" + std::to_string(++count) + ".tmp";
}

}  // namespace

TemporaryFile::TemporaryFile(const std::string& target, unsigned mode)
    : path_(pathBeside(target)), file_(path_, O_CREAT | O_EXCL | O_WRONLY, mode) {}

TemporaryFile::~TemporaryFile() {
  if (!done_) unlink(path_.c_str());
}

void TemporaryFile::moveTo(const std::string& target, bool replacing) {
  file_.close();
  if (const int code = renameEntry(path_, target, replacing); code != 0) raiseFileError(code);
  done_ = true;
}

int renameEntry(const std::string& from, const std::string& to, bool replacing) {
  if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), replacing ? 0 : RENAME_NOREPLACE) == 0)
    return 0;
  if (replacing || errno != EINVAL) return errno;
  // This file system cannot do both in one step.
  struct stat status {};
  if (lstat(to.c_str(), &status) == 0) return EEXIST;
  return rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

}  // namespace zelUtilities
