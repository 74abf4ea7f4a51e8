// LiftedReadOnly: a file or folder made writable for the time of an operation. Unless it succeeds, the file
// is read-only again afterwards, if it was before.
#pragma once

#include "automation/Error.h"
#include "platform/Files.h"

namespace zelUtilities {

class LiftedReadOnly {
 public:
  explicit LiftedReadOnly(StringView path) : path_(path), attributes_(files().attributes(path)) {
    lifted_ = (attributes_ & FileAttribute::ReadOnly) != 0;
    if (lifted_) files().setAttributes(path_, attributes_ & ~FileAttribute::ReadOnly);
  }
  ~LiftedReadOnly() {
    if (!lifted_) return;
    try {
      files().setAttributes(path_, attributes_);
    } catch (const Error&) {
      // It is gone, or nobody's to change any more.
    }
  }
  LiftedReadOnly(const LiftedReadOnly&) = delete;
  LiftedReadOnly& operator=(const LiftedReadOnly&) = delete;

  // The operation has succeeded.
  void keep() { lifted_ = false; }

 private:
  String path_;
  std::uint32_t attributes_;
  bool lifted_ = false;
};

}  // namespace zelUtilities
