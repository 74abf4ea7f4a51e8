// Process: other programs, started as a command line names them.
//
//   runToEnd(u"\"C:\\Program Files\\Acme\\convert.exe\" /quiet \"a b.txt\"");
//
// The program's name may stand in quotation marks. Where it does not, the name ends at the first blank that
// leaves a program; one without a folder is searched for. Arguments are divided by blanks; quotation marks
// keep blanks, and a backslash before one lets it stand for itself.
#pragma once

#include "automation/String.h"
#include "platform/Service.h"

namespace zelUtilities {

struct Process {
  virtual ~Process() = default;

  // Starts the program in a normal window and returns when it has ended, however it did. Until then the
  // messages of the calling thread's windows are handled. Raises a file error where it does not start: 53
  // where there is no such program. The line is not blank and has no NUL.
  virtual void runToEnd(StringView commandLine) = 0;

  static Process& system();
};

inline void runToEnd(StringView commandLine) { Service<Process>::inForce().runToEnd(commandLine); }

}  // namespace zelUtilities
