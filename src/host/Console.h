// Console: what the program prints, as UTF-8 lines; complaints go to standard error.
#pragma once

#include <ostream>

#include "automation/String.h"

namespace zelUtilities::host {

class Console {
 public:
  Console(std::ostream& out, std::ostream& err) : out_(out), err_(err) {}

  void print(StringView line) { out_ << toUtf8(line) << '\n'; }
  // Prints "zel: <what>"; from then on the program's exit code is not 0.
  void complain(StringView what) {
    err_ << "zel: " << toUtf8(what) << '\n';
    hasComplained_ = true;
  }
  bool hasComplained() const { return hasComplained_; }
  // False when something printed did not arrive (a full disk).
  bool finish() {
    out_.flush();
    err_.flush();
    return out_.good();
  }

 private:
  std::ostream& out_;
  std::ostream& err_;
  bool hasComplained_ = false;
};

}  // namespace zelUtilities::host
