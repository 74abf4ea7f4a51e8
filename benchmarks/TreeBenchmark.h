// TreeBenchmark: the same question put to the node list and to every peer that is installed, at 10^4,
// 10^5 and 10^6 nodes, as a tree of fan-out 10 and as one parent with all others below it.
//
//   struct Lookup {
//     static constexpr const char* name = "lookup";
//     template <class Tree> static void run(benchmark::State&, const Rows<typename Tree::Char>&);
//   };
//   const bool registered = registerTrees<Lookup>({bothShapes});
//
// A benchmark is named question/shape/tree/nodes, which the comparison takes apart.
#pragma once

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "Measure.h"
#include "Rows.h"
#include "trees/Libxml2Tree.h"
#include "trees/PtreeTree.h"
#include "trees/PugixmlTree.h"
#include "trees/QtTree.h"
#include "trees/StructTree.h"
#include "trees/ZelTree.h"

namespace zelBenchmarks {

struct Shape {
  const char* name;
  std::size_t fanOut;  // 0: all below the first node
};
inline constexpr Shape fanOut10{"fan-out 10", 10};
inline constexpr Shape flat{"flat", 0};

template <class Tree>
std::unique_ptr<Tree> buildTree(const Rows<typename Tree::Char>& rows) {
  auto tree = std::make_unique<Tree>();
  for (std::size_t i = 0; i < rows.size(); ++i)
    tree->add(rows.parent(i), rows.key(i), rows.cell(i, 0), rows.cell(i, 1), rows.cell(i, 2));
  return tree;
}

// Largest: the most nodes that are asked of the tree.
template <class Question, class Tree>
void registerTree(const Shape& shape, std::int64_t largest = 1'000'000) {
  const std::string name = std::string(Question::name) + "/" + shape.name + "/" + Tree::name;
  auto* registered = benchmark::RegisterBenchmark(name.c_str(), [shape](benchmark::State& state) {
    Question::template run<Tree>(
        state, rowsOf<typename Tree::Char>(static_cast<std::size_t>(state.range(0)), shape.fanOut));
  });
  for (std::int64_t nodes = 10'000; nodes <= largest; nodes *= 10) registered->Arg(nodes);
  registered->Unit(benchmark::kMillisecond);
}

template <class Question>
bool registerTrees(const std::vector<Shape>& shapes) {
  for (const Shape& shape : shapes) {
    registerTree<Question, ZelTree>(shape);
    registerTree<Question, StructTree>(shape, Question::largestForArrays);
#if HAVE_PUGIXML
    registerTree<Question, PugixmlTree>(shape);
#endif
#if HAVE_BOOST
    registerTree<Question, PtreeTree>(shape);
#endif
#if HAVE_LIBXML2
    registerTree<Question, Libxml2Tree>(shape);
#endif
#if HAVE_QT5GUI
    registerTree<Question, QtTree>(shape, Question::largestForArrays);
#endif
  }
  return true;
}

}  // namespace zelBenchmarks
