#include "platform/linux/LargePages.h"

#include <sys/mman.h>

#include <cstdint>

namespace zelUtilities::LargePages {

void* map(std::size_t bytes) noexcept {
  void* place = mmap(nullptr, bytes + size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (place == MAP_FAILED) return nullptr;
  auto* const begin = static_cast<std::byte*>(place);
  const std::size_t skipped = -reinterpret_cast<std::uintptr_t>(begin) % size;
  if (skipped > 0) munmap(begin, skipped);
  munmap(begin + skipped + bytes, size - skipped);
  return begin + skipped;
}

}  // namespace zelUtilities::LargePages
