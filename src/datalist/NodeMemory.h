// NodeMemory: where the nodes of a larger list lie.
//
//   NodeMemory::Block block = memory.allocate(bytes);
//   memory.free(block, bytes);
//
// The first nodes of a list come from the heap, one by one. A list that has many takes them from chunks,
// which cost no bookkeeping a node. A freed block serves the next node of its size; a chunk is given back
// with the last of its blocks, so that a node which a client holds on to keeps no more than one chunk
// of an old list.
#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <vector>

namespace zelUtilities {

class NodeMemory {
 public:
  struct Block {
    void* place;
    std::uint32_t offset;  // from the start of its chunk; 0 on the heap
  };

  // Under a sanitizer that watches single blocks every node comes from the heap.
#if defined(__SANITIZE_ADDRESS__)
  static constexpr std::size_t nodesOnHeap = SIZE_MAX;
#else
  static constexpr std::size_t nodesOnHeap = 256;
#endif

  explicit NodeMemory(std::size_t blocksOnHeap = nodesOnHeap);
  ~NodeMemory();
  NodeMemory(const NodeMemory&) = delete;
  NodeMemory& operator=(const NodeMemory&) = delete;

  // At least so many bytes, aligned for 64-bit values. Raises std::bad_alloc.
  Block allocate(std::size_t bytes);
  void free(Block block, std::size_t bytes) noexcept;

  // What the chunks take; for tests.
  std::size_t chunkBytes() const { return chunkBytes_; }

 private:
  struct Chunk;
  // Lies in a block that waits for its next use.
  struct FreeBlock {
    FreeBlock* next;
    FreeBlock* previous;
    std::uint32_t steps;
    std::uint32_t offset;
  };
  static constexpr std::size_t step = 8;
  static constexpr std::size_t largestBlock = 1024;

  // The size of a block in steps; blocks of one number are alike.
  static std::uint32_t stepsOf(std::size_t bytes) {
    return static_cast<std::uint32_t>((bytes + step - 1) / step);
  }
  static Chunk& chunkOf(const void* place, std::uint32_t offset);
  Block allocatePooled(std::uint32_t steps);
  void addChunk();
  void unlink(const FreeBlock& block) noexcept;
  void empty(Chunk& chunk) noexcept;
  void drop(Chunk& chunk) noexcept;

  const std::size_t blocksOnHeap_;
  std::size_t blocks_ = 0;  // in use, wherever they lie
  std::size_t chunkBytes_ = 0;
  std::list<Chunk> chunks_;       // new blocks come from the last one
  std::vector<FreeBlock*> free_;  // by steps
};

}  // namespace zelUtilities
