#include "platform/LargeBlocks.h"

#include <sys/mman.h>

#include <cstdint>
#include <mutex>
#include <new>
#include <utility>

#include "platform/linux/LargePages.h"

namespace zelUtilities::LargeBlocks {

namespace {

static_assert(bytes % LargePages::size == 0);

constexpr std::size_t mostSpare = sizeof(void*) < 8 ? 16 : 256;  // blocks

struct Spare {
  Spare* next;
};

// Never ended: lists may outlive everything that is ended at exit.
constinit std::mutex access;
constinit Spare* spares = nullptr;
constinit std::size_t spareCount = 0;

}  // namespace

void* take() noexcept {
  {
    const std::lock_guard lock(access);
    if (spares) {
      --spareCount;
      return std::exchange(spares, spares->next);
    }
  }
  void* const block = LargePages::map(bytes);
  // A wish: a block is soon full and then read all over, which one large page serves faster than small ones.
  if (block) madvise(block, bytes, MADV_HUGEPAGE);
  return block;
}

void give(void* block) noexcept {
  const bool isLent = madvise(block, bytes, MADV_FREE) == 0;
  {
    const std::lock_guard lock(access);
    if (isLent && spareCount < mostSpare) {
      spares = ::new (block) Spare{spares};
      ++spareCount;
      return;
    }
  }
  munmap(block, bytes);
}

std::size_t spareBytes() noexcept {
  const std::lock_guard lock(access);
  return spareCount * bytes;
}

}  // namespace zelUtilities::LargeBlocks
