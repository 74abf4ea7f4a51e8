#include "datalist/NodeMemory.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "datalist/zelNodeList.h"

namespace zelUtilities {
namespace {

// Blocks of a memory without any on the heap, each filled with a byte of its own.
class Blocks {
 public:
  explicit Blocks(NodeMemory& memory) : memory_(memory) {}
  ~Blocks() {
    while (!taken_.empty()) freeOne(taken_.size() - 1);
  }
  void take(std::size_t count, std::size_t bytes) {
    for (std::size_t i = 0; i < count; ++i) {
      taken_.push_back({memory_.allocate(bytes), bytes, static_cast<unsigned char>(taken_.size())});
      std::memset(taken_.back().block.place, taken_.back().filling, bytes);
    }
  }
  void freeOne(std::size_t at) {
    const Taken freed = taken_[at];
    taken_.erase(taken_.begin() + static_cast<std::ptrdiff_t>(at));
    for (std::size_t i = 0; i < freed.bytes; ++i)
      ASSERT_EQ(static_cast<unsigned char*>(freed.block.place)[i], freed.filling);
    memory_.free(freed.block, freed.bytes);
  }

 private:
  struct Taken {
    NodeMemory::Block block;
    std::size_t bytes;
    unsigned char filling;
  };
  NodeMemory& memory_;
  std::vector<Taken> taken_;
};

TEST(NodeMemory, TakesTheFirstBlocksAndLargeOnesFromTheHeap) {
  NodeMemory memory(10);
  Blocks blocks(memory);
  blocks.take(10, 200);
  blocks.take(10, 5000);
  EXPECT_EQ(memory.chunkBytes(), 0U);
  blocks.take(1, 200);
  EXPECT_GT(memory.chunkBytes(), 0U);
}

TEST(NodeMemory, GivesEachBlockBytesOfItsOwnAndFreedOnesAgain) {
  NodeMemory memory(0);
  Blocks blocks(memory);
  for (const std::size_t bytes : {201U, 96U, 208U, 1024U}) blocks.take(1000, bytes);
  const std::size_t before = memory.chunkBytes();
  for (int i = 0; i < 1800; ++i) {
    blocks.freeOne(100);
    blocks.take(1, i < 900 ? 201 : 96);
  }
  EXPECT_EQ(memory.chunkBytes(), before);
}

TEST(NodeMemory, AHeldBlockKeepsNoOtherChunk) {
  NodeMemory memory(0);
  Blocks held(memory);
  {
    Blocks blocks(memory);
    blocks.take(20'000, 200);
    held.take(1, 200);
    blocks.take(20'000, 200);
    EXPECT_GT(memory.chunkBytes(), 8'000'000U);
  }
  EXPECT_LT(memory.chunkBytes(), 5'000'000U);  // its own chunk, and the one for the next nodes
  held.freeOne(0);
  EXPECT_EQ(memory.chunkBytes(), 0U);
}

TEST(NodeMemory, OutlivesItsListWhileANodeIsHeld) {
  auto list = make<zelNodeList>();
  for (int i = 0; i < 1000; ++i) list->Create(u"", decimalText(i), u"text");
  const Ref<zelNode> held = list->Item(u"999");
  list = nullptr;
  EXPECT_EQ(held->Key(), u"999");
  EXPECT_EQ(held->Text(), u"text");
}

}  // namespace
}  // namespace zelUtilities
