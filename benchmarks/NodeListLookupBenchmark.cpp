// What does it cost to find a node by its key, in random order, and to read one of its cells?
#include "TreeBenchmark.h"

namespace {

using namespace zelBenchmarks;

struct Lookup {
  static constexpr const char* name = "look up";
  static constexpr std::int64_t largestForArrays = 1'000'000;

  template <class Tree>
  static void run(benchmark::State& state, const Rows<typename Tree::Char>& rows) {
    auto tree = buildTree<Tree>(rows);
    std::size_t expected = 0;
    for (std::size_t i = 0; i < rows.size(); ++i) expected += rows.cell(i, 1).size();
    for (auto _ : state) {
      std::size_t units = 0;
      for (std::size_t i = 0; i < rows.size(); ++i) units += tree->dataLength(rows.shuffledKey(i));
      require(units == expected, "characters of all cells");
    }
    countItems(state, state.range(0));
    tree.reset();
    malloc_trim(0);
  }
};

const bool registered = registerTrees<Lookup>({fanOut10});

}  // namespace
