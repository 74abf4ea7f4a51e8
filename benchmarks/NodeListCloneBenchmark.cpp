// What does it cost to copy a whole tree with its cells and its index, per node?
#include "TreeBenchmark.h"

namespace {

using namespace zelBenchmarks;

struct Clone {
  static constexpr const char* name = "clone";
  static constexpr std::int64_t largestForArrays = 1'000'000;

  template <class Tree>
  static void run(benchmark::State& state, const Rows<typename Tree::Char>& rows) {
    auto tree = buildTree<Tree>(rows);
    const std::size_t last = rows.size() - 1;
    for (auto _ : state) {
      auto copy = tree->clone();
      untimed(state, [&] {
        require(copy->size() == rows.size(), "nodes copied");
        require(copy->dataLength(rows.key(last)) == rows.cell(last, 1).size(), "the last node's cell");
        copy.reset();
      });
    }
    countItems(state, state.range(0));
    tree.reset();
    malloc_trim(0);
  }
};

const bool registered = registerTrees<Clone>({fanOut10, flat});

}  // namespace
