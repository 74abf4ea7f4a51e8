// Clock: what time it is.
#pragma once

#include "automation/Date.h"
#include "platform/Service.h"

namespace zelUtilities {

struct Clock {
  virtual ~Clock() = default;

  // Local and universal time, to the millisecond.
  virtual Date now() = 0;
  virtual Date universalNow() = 0;

  static Clock& system();
};

inline Date now() { return Service<Clock>::inForce().now(); }
inline Date universalNow() { return Service<Clock>::inForce().universalNow(); }

}  // namespace zelUtilities
