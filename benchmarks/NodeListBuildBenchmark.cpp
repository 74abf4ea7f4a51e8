// What does it cost to build a tree node by node, in time and in memory, and does it stay so per node
// as the tree grows? Each node has a key, looked up without regard to letter case, three texts of 8 to
// 11 characters, and one listener counts them.
//
// Every iteration starts with memory that the process has given back.
#include "TreeBenchmark.h"

namespace {

using namespace zelBenchmarks;

struct Build {
  static constexpr const char* name = "build";
  static constexpr std::int64_t largestForArrays = 1'000'000;

  template <class Tree>
  static void run(benchmark::State& state, const Rows<typename Tree::Char>& rows) {
    countBytes(
        state,
        std::string(Tree::name) + "/" + std::to_string(rows.fanOut()) + "/" + std::to_string(rows.size()),
        static_cast<double>(rows.size()), [&] { return buildTree<Tree>(rows); });
    for (auto _ : state) {
      auto tree = buildTree<Tree>(rows);
      untimed(state, [&] {
        require(tree->size() == rows.size() && tree->added() == rows.size(), "nodes built");
        const std::size_t last = rows.size() - 1;
        require(tree->dataLength(rows.key(last)) == rows.cell(last, 1).size(), "the last node's cell");
        tree.reset();
      });
    }
    countItems(state, state.range(0));
  }
};

const bool registered = registerTrees<Build>({fanOut10, flat});

}  // namespace
