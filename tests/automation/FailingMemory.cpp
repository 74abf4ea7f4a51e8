#include <cstdlib>
#include <new>

#include "automation/FailingMemory.h"

void* operator new(std::size_t size) {
  if (zelUtilities::FailingMemory::granted == 0) throw std::bad_alloc();
  if (zelUtilities::FailingMemory::granted > 0) --zelUtilities::FailingMemory::granted;
  if (void* memory = std::malloc(size != 0 ? size : 1)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
