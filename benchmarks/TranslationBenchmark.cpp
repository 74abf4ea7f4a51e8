// What does a translation table cost, per use, with five languages: to load it from a file, to translate a
// random use, and to export it? Translating stands beside what it consists of: two look-ups by key in a node
// list with the same nodes, and the reading of one cell.
//
// A section has 50 controls, a control two parts, a part one use. The file is written to the current folder
// and removed again.
#include <cstdio>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "Measure.h"
#include "Rows.h"
#include "automation/Conversions.h"
#include "globalization/zelGlobalization.h"

namespace {

using namespace zelBenchmarks;
using zelUtilities::make;
using zelUtilities::Ref;
using zelUtilities::String;
using zelUtilities::zelGlobalization;
using zelUtilities::zelNodeList;

constexpr std::size_t usesOfAControl = 2;
constexpr std::size_t usesOfASection = 50 * usesOfAControl;
constexpr const char16_t* languages[] = {u"en", u"de", u"fr", u"it", u"es"};

String numbered(const char16_t* name, std::size_t number) {
  String text = name;
  for (const char digit : std::to_string(number)) text += static_cast<char16_t>(digit);
  return text;
}

struct Use {
  String section;
  String control;
  String part;
  String key() const { return section + u"|" + control + u"|" + part + u"|Caption"; }
};

std::vector<Use> usesInRandomOrder(std::size_t count) {
  std::vector<Use> uses;
  for (const std::uint32_t i : shuffledNumbers(count))
    uses.push_back({numbered(u"frmSection", i / usesOfASection), numbered(u"cmdControl", i / usesOfAControl),
                    numbered(u"part", i % usesOfAControl)});
  return uses;
}

Ref<zelGlobalization> newTable(std::size_t count) {
  auto table = make<zelGlobalization>();
  for (const char16_t* language : languages) table->AddLanguage(language, language);
  table->setCreateIfMissing(true);
  for (std::size_t i = 0; i < count; ++i)
    table->Translate(numbered(u"frmSection", i / usesOfASection), numbered(u"cmdControl", i / usesOfAControl),
                     numbered(u"part", i % usesOfAControl), u"Caption", u"A caption of some length");
  table->setCreateIfMissing(false);
  table->SelectLanguage(u"it");
  return table;
}

void load(benchmark::State& state) {
  const auto count = static_cast<std::size_t>(state.range(0));
  const String file = u"bench-texts.xml";
  require(newTable(count)->Save(file), "saved");
  for (auto _ : state) {
    auto table = make<zelGlobalization>();
    require(table->Load(file), "loaded");
    untimed(state, [&] {
      require(table->Languages()->Count() == 5, "languages");
      table = {};
    });
  }
  std::remove("bench-texts.xml");
  countItems(state, state.range(0));
}

void translate(benchmark::State& state) {
  const auto count = static_cast<std::size_t>(state.range(0));
  const auto table = newTable(count);
  const std::vector<Use> uses = usesInRandomOrder(count);
  for (auto _ : state) {
    std::size_t units = 0;
    for (const Use& use : uses) units += table->Translate(use.section, use.control, use.part).size();
    require(units == 7 * count, "characters of \"Missing\"");
  }
  countItems(state, state.range(0));
}

void twoLookups(benchmark::State& state) {
  const auto count = static_cast<std::size_t>(state.range(0));
  const auto list = make<zelNodeList>();
  zelUtilities::zelNodeListColumns::Definition column;
  for (const char16_t* language : languages) {
    column.sKey = language;
    list->CreateColumn(column);
  }
  const std::vector<Use> uses = usesInRandomOrder(count);
  for (const Use& use : uses) {
    list->Create(u"", use.section, u"");
    list->Create(u"", use.section + u"|" + use.control, u"");
    list->Create(u"", use.key(), u"")->Cells()->Item(u"it")->setValue(u"Missing");
  }
  for (auto _ : state) {
    std::size_t units = 0;
    for (const Use& use : uses) {
      const auto control = list->Item(use.section + u"|" + use.control);
      const auto node = list->Item(use.key());
      units += zelUtilities::toText(node->Cells()->Item(u"it")->Value()).size();
      benchmark::DoNotOptimize(control.get());
    }
    require(units == 7 * count, "characters of all cells");
  }
  countItems(state, state.range(0));
}

void exportXml(benchmark::State& state) {
  const auto table = newTable(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state)
    require(table->ExportXML().size() > 100 * static_cast<std::size_t>(state.range(0)), "text");
  countItems(state, state.range(0));
}

BENCHMARK(load)->RangeMultiplier(10)->Range(1'000, 100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(translate)->RangeMultiplier(10)->Range(1'000, 100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(twoLookups)->RangeMultiplier(10)->Range(1'000, 100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(exportXml)->RangeMultiplier(10)->Range(1'000, 100'000)->Unit(benchmark::kMillisecond);

}  // namespace
