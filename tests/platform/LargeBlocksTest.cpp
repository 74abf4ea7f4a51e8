#include "platform/LargeBlocks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>
#include <vector>

namespace zelUtilities {
namespace {

// Fills blocks with a number of its own and finds it there again; several threads share what is kept.
bool blocksStayOnesOwn(char number) {
  bool isOwn = true;
  for (int round = 0; round < 20; ++round) {
    std::vector<char*> blocks(4);
    for (char*& block : blocks) {
      block = static_cast<char*>(LargeBlocks::take());
      std::fill_n(block, LargeBlocks::bytes, number);
    }
    for (char* block : blocks) {
      isOwn = isOwn && std::count(block, block + LargeBlocks::bytes, number) == LargeBlocks::bytes;
      LargeBlocks::give(block);
    }
  }
  return isOwn;
}

TEST(LargeBlocksTest, ABlockBelongsToOneAtATimeAndWhatIsKeptIsBounded) {
  bool other = false;
  std::thread thread([&] { other = blocksStayOnesOwn('a'); });
  EXPECT_TRUE(blocksStayOnesOwn('b'));
  thread.join();
  EXPECT_TRUE(other);

  std::vector<void*> many(300);
  for (void*& block : many) ASSERT_NE(block = LargeBlocks::take(), nullptr);
  for (void* block : many) LargeBlocks::give(block);
  EXPECT_LE(LargeBlocks::spareBytes(), 256 * LargeBlocks::bytes);
}

}  // namespace
}  // namespace zelUtilities
