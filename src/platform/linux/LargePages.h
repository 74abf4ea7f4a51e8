// LargePages: address space that begins at a large page, so that the system may back it with such ones.
#pragma once

#include <cstddef>

namespace zelUtilities::LargePages {

constexpr std::size_t size = std::size_t{2} << 20;

// So many bytes, a multiple of the size above, readable and writable; munmap gives them back. Nothing where
// the system refuses.
void* map(std::size_t bytes) noexcept;

}  // namespace zelUtilities::LargePages
