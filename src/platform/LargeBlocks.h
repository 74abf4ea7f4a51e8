// LargeBlocks: memory in blocks of two megabytes, for many small things of one owner.
//
//   void* block = LargeBlocks::take();
//   LargeBlocks::give(block);
//
// The first touch of a page costs more than what is mostly done with it then, so blocks given back are kept
// for whoever takes the next ones, up to half a gigabyte where addresses have 64 bits. Their pages stay the
// system's: it takes them whenever it runs short of memory. A system that cannot do so gets blocks back at
// once. Every thread may take and give.
#pragma once

#include <cstddef>

namespace zelUtilities::LargeBlocks {

constexpr std::size_t bytes = std::size_t{2} << 20;

// Begins at a multiple of 16; holds anything. Nothing where the system has no more memory.
void* take() noexcept;
void give(void* block) noexcept;
// What is kept.
std::size_t spareBytes() noexcept;

}  // namespace zelUtilities::LargeBlocks
