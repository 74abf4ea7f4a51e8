// Does any operation of the node list grow faster than its nodes when the tree is a chain, each node
// the child of the one before, or when there are a thousand columns? Per level, and per cell.
#include "Measure.h"
#include "Rows.h"
#include "datalist/zelNodeList.h"

namespace {

using namespace zelBenchmarks;
using namespace zelUtilities;

Ref<zelNodeList> chainOf(const Rows<char16_t>& rows) {
  auto list = make<zelNodeList>();
  for (std::size_t i = 0; i < rows.size(); ++i)
    list->Create(i == 0 ? StringView() : rows.key(i - 1), rows.key(i), rows.cell(i, 0));
  return list;
}

const Rows<char16_t>& rowsFor(const benchmark::State& state) {
  return rowsOf<char16_t>(static_cast<std::size_t>(state.range(0)), 10);
}

void requireSize(const Ref<zelNodeList>& list, std::int64_t size) {
  require(list->Count() == size, "levels of the chain");
}

void createChain(benchmark::State& state) {
  const Rows<char16_t>& rows = rowsFor(state);
  for (auto _ : state) {
    Ref<zelNodeList> list = chainOf(rows);
    untimed(state, [&] {
      requireSize(list, state.range(0));
      list = nullptr;
    });
  }
  countItems(state, state.range(0));
}

void cloneChain(benchmark::State& state) {
  const Ref<zelNodeList> list = chainOf(rowsFor(state));
  for (auto _ : state) {
    Ref<zelNodeList> copy = list->Clone();
    untimed(state, [&] {
      requireSize(copy, state.range(0));
      copy = nullptr;
    });
  }
  countItems(state, state.range(0));
}

// End takes the list, which nobody else holds.
template <class End>
void endChain(benchmark::State& state, const End& end) {
  const Rows<char16_t>& rows = rowsFor(state);
  for (auto _ : state) {
    state.PauseTiming();
    Ref<zelNodeList> list = chainOf(rows);
    state.ResumeTiming();
    end(list);
    untimed(state, [&] {
      if (list) requireSize(list, 0);
      list = nullptr;
    });
  }
  countItems(state, state.range(0));
}

void removeChain(benchmark::State& state) {
  endChain(state, [](Ref<zelNodeList>& list) { list->Remove(u"n0"); });
}

void clearChain(benchmark::State& state) {
  endChain(state, [](Ref<zelNodeList>& list) { list->Clear(); });
}

void destroyChain(benchmark::State& state) {
  endChain(state, [](Ref<zelNodeList>& list) { list = nullptr; });
}

// The chain is held by its first node alone, after it has left the list.
void releaseHeldChain(benchmark::State& state) {
  const Rows<char16_t>& rows = rowsFor(state);
  for (auto _ : state) {
    state.PauseTiming();
    Ref<zelNodeList> list = chainOf(rows);
    Ref<zelNode> held = list->Item(u"n0");
    list = nullptr;
    state.ResumeTiming();
    held = nullptr;
    untimed(state, [&] {});
  }
  countItems(state, state.range(0));
}

constexpr std::int64_t columns = 1000;

Ref<zelNodeList> wideList() {
  auto list = make<zelNodeList>();
  for (std::int64_t i = 0; i < columns; ++i) {
    zelNodeListColumns::Definition column;
    column.sKey = u"c" + decimalText(i);
    column.eCellType = ZEL_CellType_String;
    list->CreateColumn(column);
  }
  require(list->Columns()->Count() == columns, "columns");
  return list;
}

void fillWide(zelNodeList& list, std::int64_t nodes) {
  std::vector<Variant> keys;
  for (std::int64_t i = 0; i < columns; ++i) keys.emplace_back(u"c" + decimalText(i));
  for (std::int64_t i = 0; i < nodes; ++i) {
    const Ref<zelNode> node = list.Create(u"", decimalText(i), u"text");
    const Ref<zelCells> cells = node->Cells();
    for (const Variant& key : keys) cells->Item(key)->setValue(std::int32_t{7});
  }
}

void fillManyColumns(benchmark::State& state) {
  for (auto _ : state) {
    Ref<zelNodeList> list = wideList();
    fillWide(*list, state.range(0));
    untimed(state, [&] {
      require(list->Item(u"0")->Cells()->LastItem()->Value().longInteger() == 7, "the last cell");
      list = nullptr;
    });
  }
  countItems(state, state.range(0) * columns);
}

void cloneManyColumns(benchmark::State& state) {
  const Ref<zelNodeList> list = wideList();
  fillWide(*list, state.range(0));
  for (auto _ : state) {
    Ref<zelNodeList> copy = list->Clone();
    untimed(state, [&] {
      require(copy->Item(u"0")->Cells()->LastItem()->Value().longInteger() == 7, "the last cell");
      copy = nullptr;
    });
  }
  countItems(state, state.range(0) * columns);
}

void registerSizes(const char* name, void (*run)(benchmark::State&), std::int64_t largest) {
  auto* registered = benchmark::RegisterBenchmark(name, run);
  for (std::int64_t size = largest / 100; size <= largest; size *= 10) registered->Arg(size);
  registered->Unit(benchmark::kMillisecond);
}

bool registerAll() {
  constexpr std::int64_t levels = 1'000'000;
  registerSizes("create/chain/zel", createChain, levels);
  registerSizes("clone/chain/zel", cloneChain, levels);
  registerSizes("remove/chain/zel", removeChain, levels);
  registerSizes("clear/chain/zel", clearChain, levels);
  registerSizes("destroy/chain/zel", destroyChain, levels);
  registerSizes("release held/chain/zel", releaseHeldChain, levels);
  registerSizes("fill/1000 columns/zel", fillManyColumns, 1000);
  registerSizes("clone/1000 columns/zel", cloneManyColumns, 1000);
  return true;
}

const bool registered = registerAll();

}  // namespace
