#include "platform/GrowingMemory.h"

#include <cstdlib>

namespace zelUtilities {

bool GrowingMemory::grow(std::size_t bytes) noexcept {
  if (bytes <= size_) return true;
  void* grown = std::realloc(data_, bytes);
  if (!grown) return false;
  data_ = grown;
  size_ = bytes;
  return true;
}

void GrowingMemory::clear() noexcept {
  std::free(data_);
  data_ = nullptr;
  size_ = 0;
}

}  // namespace zelUtilities
