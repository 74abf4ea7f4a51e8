// While it lives, operator new grants so many more allocations and then throws std::bad_alloc.
#pragma once

namespace zelUtilities {

struct FailingMemory {
  explicit FailingMemory(long allocations) { granted = allocations; }
  ~FailingMemory() { granted = -1; }
  FailingMemory(const FailingMemory&) = delete;
  FailingMemory& operator=(const FailingMemory&) = delete;

  static inline long granted = -1;  // negative: without limit
};

}  // namespace zelUtilities
