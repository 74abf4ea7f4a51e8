#include "platform/GrowingMemory.h"

#include <sys/mman.h>

#include <cstdlib>
#include <cstring>
#include <limits>

#include "platform/linux/LargePages.h"

namespace zelUtilities {

namespace {

constexpr std::size_t mappedFrom = LargePages::size;  // smaller buffers come from the heap

bool isMapped(std::size_t bytes) { return bytes >= mappedFrom; }

std::size_t wholePages(std::size_t bytes) {
  return (bytes + LargePages::size - 1) / LargePages::size * LargePages::size;
}

// Between two places at large pages, moving hands over whole tables of pages.
void* growMapped(void* data, std::size_t size, std::size_t bytes) {
  if (mremap(data, size, bytes, 0) != MAP_FAILED) return data;
  void* place = LargePages::map(bytes);
  if (!place) return nullptr;
  if (mremap(data, size, size, MREMAP_MAYMOVE | MREMAP_FIXED, place) != MAP_FAILED) return place;
  munmap(place, bytes);
  return nullptr;
}

void* moveFromHeap(void* data, std::size_t size, std::size_t bytes) {
  void* place = LargePages::map(bytes);
  if (!place) return nullptr;
  if (size > 0) std::memcpy(place, data, size);
  std::free(data);
  return place;
}

}  // namespace

bool GrowingMemory::grow(std::size_t bytes) noexcept {
  if (bytes <= size_) return true;
  if (bytes > std::numeric_limits<std::size_t>::max() / 4) return false;
  if (isMapped(bytes)) bytes = wholePages(bytes);
  void* grown = isMapped(size_)   ? growMapped(data_, size_, bytes)
                : isMapped(bytes) ? moveFromHeap(data_, size_, bytes)
                                  : std::realloc(data_, bytes);
  if (!grown) return false;
  data_ = grown;
  size_ = bytes;
  return true;
}

void GrowingMemory::clear() noexcept {
  if (isMapped(size_)) {
    munmap(data_, size_);
  } else {
    std::free(data_);
  }
  data_ = nullptr;
  size_ = 0;
}

}  // namespace zelUtilities
