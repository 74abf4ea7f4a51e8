#include "datalist/NodeMemory.h"

#include <gtest/gtest.h>

#include <cstring>
#include <span>

namespace zelUtilities {
namespace {

// Blocks of a memory, each filled with bytes of its own, which must still be there when it is freed.
class NodeMemoryTest : public testing::Test {
 protected:
  void take(std::size_t count, std::size_t bytes) {
    for (; count > 0; --count) {
      taken.emplace_back(memory.allocate(bytes), std::string(bytes, static_cast<char>(taken.size())));
      std::memcpy(taken.back().first.place, taken.back().second.data(), bytes);
    }
  }
  void free(std::ptrdiff_t at, std::ptrdiff_t count = 1) {
    const auto first = taken.begin() + at;
    for (const auto& [block, filling] : std::span(first, first + count)) {
      ASSERT_EQ(std::memcmp(block.place, filling.data(), filling.size()), 0);
      memory.free(block, filling.size());
    }
    taken.erase(first, first + count);
  }

  NodeMemory memory{10};
  std::vector<std::pair<NodeMemory::Block, std::string>> taken;
};

TEST_F(NodeMemoryTest, FirstAndLargeBlocksComeFromTheHeapAndFreedOnesServeAgain) {
  take(10, 200);
  take(10, 5000);
  EXPECT_EQ(memory.chunkBytes(), 0U);
  for (const std::size_t bytes : {201U, 96U, 208U, 1024U}) take(1000, bytes);
  const std::size_t before = memory.chunkBytes();
  EXPECT_GT(before, 0U);
  for (int i = 0; i < 1800; ++i) {
    free(100);
    take(1, i < 900 ? 201 : 96);
  }
  EXPECT_EQ(memory.chunkBytes(), before);
  free(0, std::ssize(taken));
}

TEST_F(NodeMemoryTest, AHeldBlockKeepsNoOtherChunk) {
  take(40'000, 200);
  EXPECT_GT(memory.chunkBytes(), 8'000'000U);
  free(20'001, 19'999);
  free(0, 20'000);
  EXPECT_LT(memory.chunkBytes(), 5'000'000U);  // its own chunk, and the one for the next nodes
  free(0);
  EXPECT_EQ(memory.chunkBytes(), 0U);
}

}  // namespace
}  // namespace zelUtilities
