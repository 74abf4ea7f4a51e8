// Machine: who runs the library, and where it keeps what is its own.
#pragma once

#include <cstdint>

#include "automation/String.h"
#include "platform/Service.h"

namespace zelUtilities {

struct Machine {
  virtual ~Machine() = default;

  virtual std::uint32_t processId() = 0;
  // "" where the system does not say.
  virtual String computerName() = 0;
  virtual String userName() = 0;

  // The folder of the library's own files (the log, the registry's store, the drive table), without a
  // separator at the end: what the environment variable ZELORA_HOME names, else a folder "zelora" among the
  // user's application data. It is created where it is missing; raises a file error when that fails.
  virtual String homeFolder() = 0;

  static Machine& system();
};

inline Machine& machine() { return Service<Machine>::inForce(); }

}  // namespace zelUtilities
