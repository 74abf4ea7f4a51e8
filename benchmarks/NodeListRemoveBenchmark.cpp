// What does it cost to remove nodes, per node that leaves: the first child of a parent that has all
// the others, again and again; and nodes of a tree in random order, each with all below it?
//
// Trees that keep children in arrays are asked about the first question at small sizes only: they take
// time in proportion to the square of the number of children.
#include "TreeBenchmark.h"

namespace {

using namespace zelBenchmarks;

template <class Tree, class RemoveAll>
void removeAll(benchmark::State& state, const Rows<typename Tree::Char>& rows,
               const RemoveAll& removeAllFrom) {
  for (auto _ : state) {
    state.PauseTiming();
    auto tree = buildTree<Tree>(rows);
    state.ResumeTiming();
    removeAllFrom(*tree);
    untimed(state, [&] {
      require(tree->size() == 1 && tree->removed() == rows.size() - 1, "all but the root removed");
      tree.reset();
    });
  }
  countItems(state, state.range(0) - 1);
}

struct RemoveFirst {
  static constexpr const char* name = "remove first";
  static constexpr std::int64_t largestForArrays = 100'000;

  template <class Tree>
  static void run(benchmark::State& state, const Rows<typename Tree::Char>& rows) {
    removeAll<Tree>(state, rows, [&](Tree& tree) {
      while (tree.removeFirstChild(rows.key(0))) continue;
    });
  }
};

struct RemoveRandom {
  static constexpr const char* name = "remove random";
  static constexpr std::int64_t largestForArrays = 1'000'000;

  template <class Tree>
  static void run(benchmark::State& state, const Rows<typename Tree::Char>& rows) {
    removeAll<Tree>(state, rows, [&](Tree& tree) {
      for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows.shuffledKey(i) != rows.key(0)) tree.remove(rows.shuffledKey(i));
      }
    });
  }
};

const bool registered = registerTrees<RemoveFirst>({flat}) && registerTrees<RemoveRandom>({fanOut10});

}  // namespace
