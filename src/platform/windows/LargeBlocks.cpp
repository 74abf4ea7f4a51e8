#include "platform/LargeBlocks.h"

#include <cstdlib>

namespace zelUtilities::LargeBlocks {

void* take() noexcept { return std::malloc(bytes); }
void give(void* block) noexcept { std::free(block); }
std::size_t spareBytes() noexcept { return 0; }

}  // namespace zelUtilities::LargeBlocks
