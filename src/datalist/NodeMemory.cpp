#include "datalist/NodeMemory.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <new>

#include "platform/LargeBlocks.h"

namespace zelUtilities {

namespace {

constexpr std::size_t smallestChunk = std::size_t{64} << 10;
constexpr std::size_t largestChunk = LargeBlocks::bytes;

}  // namespace

// Its first step holds its own address, by which a block finds it.
struct NodeMemory::Chunk {
  explicit Chunk(std::size_t size) : bytes(size), first(isLarge() ? LargeBlocks::take() : std::malloc(size)) {
    if (!first) throw std::bad_alloc();
    ::new (first) Chunk*(this);
  }
  ~Chunk() { isLarge() ? LargeBlocks::give(first) : std::free(first); }
  Chunk(const Chunk&) = delete;
  Chunk& operator=(const Chunk&) = delete;

  bool isLarge() const { return bytes == LargeBlocks::bytes; }
  std::byte* place(std::uint32_t offset) const { return static_cast<std::byte*>(first) + offset; }

  const std::size_t bytes;
  void* const first;
  std::size_t blocks = 0;     // in use
  std::uint32_t used = step;  // bytes; the rest has never been a block
  std::list<Chunk>::iterator self;
};

NodeMemory::NodeMemory(std::size_t blocksOnHeap) : blocksOnHeap_(blocksOnHeap) {}

NodeMemory::~NodeMemory() = default;

NodeMemory::Block NodeMemory::allocate(std::size_t bytes) {
  const bool isPooled = blocks_ >= blocksOnHeap_ && bytes <= largestBlock;
  const Block block = isPooled ? allocatePooled(stepsOf(bytes)) : Block{::operator new(bytes), 0};
  ++blocks_;
  return block;
}

NodeMemory::Block NodeMemory::allocatePooled(std::uint32_t steps) {
  if (steps >= free_.size()) free_.resize(steps + 1);
  if (FreeBlock* const found = free_[steps]) {
    unlink(*found);
    ++chunkOf(found, found->offset).blocks;
    return {found, found->offset};
  }
  const std::uint32_t bytes = steps * step;
  if (chunks_.empty() || chunks_.back().bytes - chunks_.back().used < bytes) addChunk();
  Chunk& chunk = chunks_.back();
  const std::uint32_t offset = chunk.used;
  chunk.used += bytes;
  ++chunk.blocks;
  return {chunk.place(offset), offset};
}

// As large as all chunks before it together: no more than half of the memory waits for its use.
void NodeMemory::addChunk() {
  chunks_.emplace_back(std::clamp(chunkBytes_, smallestChunk, largestChunk));
  chunks_.back().self = std::prev(chunks_.end());
  chunkBytes_ += chunks_.back().bytes;
}

NodeMemory::Chunk& NodeMemory::chunkOf(const void* place, std::uint32_t offset) {
  Chunk* chunk;
  std::memcpy(&chunk, static_cast<const std::byte*>(place) - offset, sizeof chunk);
  return *chunk;
}

void NodeMemory::free(Block block, std::size_t bytes) noexcept {
  --blocks_;
  if (block.offset == 0) {
    ::operator delete(block.place);
    return;
  }
  const std::uint32_t steps = stepsOf(bytes);
  FreeBlock*& first = free_[steps];
  auto* const freed = ::new (block.place) FreeBlock{first, nullptr, steps, block.offset};
  if (first) first->previous = freed;
  first = freed;
  Chunk& chunk = chunkOf(block.place, block.offset);
  if (--chunk.blocks == 0) empty(chunk);
}

void NodeMemory::unlink(const FreeBlock& block) noexcept {
  (block.previous ? block.previous->next : free_[block.steps]) = block.next;
  if (block.next) block.next->previous = block.previous;
}

// The last chunk stays for the next nodes while there are others.
void NodeMemory::empty(Chunk& chunk) noexcept {
  for (std::uint32_t at = step; at < chunk.used;) {
    const auto& block = *std::launder(reinterpret_cast<FreeBlock*>(chunk.place(at)));
    unlink(block);
    at += block.steps * step;
  }
  chunk.used = step;
  if (&chunk != &chunks_.back()) drop(chunk);
  if (chunks_.size() == 1 && chunks_.back().blocks == 0) drop(chunks_.back());
}

void NodeMemory::drop(Chunk& chunk) noexcept {
  chunkBytes_ -= chunk.bytes;
  chunks_.erase(chunk.self);
}

}  // namespace zelUtilities
