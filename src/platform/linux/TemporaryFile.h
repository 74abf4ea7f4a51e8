// TemporaryFile: a new file beside another one, whose place it takes, or is gone.
#pragma once

#include <string>

#include "platform/linux/FileDescriptor.h"

namespace zelUtilities {

class TemporaryFile {
 public:
  TemporaryFile(const std::string& target, unsigned mode);
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  FileDescriptor& file() { return file_; }

  // Raises 58 for a name that is taken, unless replacing.
  void moveTo(const std::string& target, bool replacing);

 private:
  std::string path_;
  FileDescriptor file_;
  bool done_ = false;
};

// Gives an entry another name on the same file system; 0, or the system's code of the failure. Where it must
// not replace anything, a name that is taken fails with EEXIST.
int renameEntry(const std::string& from, const std::string& to, bool replacing);

}  // namespace zelUtilities
