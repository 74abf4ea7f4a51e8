// What does escaping cost per character, of texts with nothing, something and much to escape? Beside it
// libxml2's escaping of the same text in UTF-8.
//
// Times are CPU time per character of the source; the results' lengths are checked.
#include <benchmark/benchmark.h>

#include <stdexcept>

#include "text/zelXML.h"

#if HAVE_LIBXML2
#include <libxml/entities.h>
#include <libxml/xmlmemory.h>
#endif

namespace {

using namespace zelUtilities;

constexpr std::size_t sourceUnits = 1'000'000;

void require(bool right) {
  if (!right) throw std::logic_error("wrong result");
}

// One unit in `every` is to be escaped; 0 for none. Never numeric.
String source(std::int64_t every) {
  String text;
  for (std::size_t i = 0; i < sourceUnits; ++i)
    text +=
        every != 0 && i % static_cast<std::size_t>(every) == 0 ? u'<' : static_cast<char16_t>(u'a' + i % 26);
  return text;
}

std::size_t escapedUnits(std::int64_t every) {
  return sourceUnits + (every == 0 ? 0 : 3 * ((sourceUnits - 1) / static_cast<std::size_t>(every) + 1));
}

void ToXML(benchmark::State& state) {
  const String text = source(state.range(0));
  for (auto _ : state) require(zel_ToXML(text).size() == escapedUnits(state.range(0)));
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(sourceUnits));
}

void FromXML(benchmark::State& state) {
  const String text = zel_ToXML(source(state.range(0)));
  for (auto _ : state) require(zel_FromXML(text).size() == sourceUnits);
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(sourceUnits));
}

// Characters beyond ASCII become numeric references.
void ToXMLNumericReferences(benchmark::State& state) {
  const String text(sourceUnits, u'\u00E9');
  for (auto _ : state) require(zel_ToXML(text).size() == 6 * sourceUnits);
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(sourceUnits));
}

BENCHMARK(ToXML)->Arg(0)->Arg(100)->Arg(10)->MinWarmUpTime(0.5);
BENCHMARK(FromXML)->Arg(0)->Arg(100)->Arg(10)->MinWarmUpTime(0.5);
BENCHMARK(ToXMLNumericReferences)->MinWarmUpTime(0.5);

#if HAVE_LIBXML2
void Libxml2(benchmark::State& state) {
  const std::string text = toUtf8(source(state.range(0)));
  for (auto _ : state) {
    xmlChar* escaped = xmlEncodeSpecialChars(nullptr, reinterpret_cast<const xmlChar*>(text.c_str()));
    require(static_cast<std::size_t>(xmlStrlen(escaped)) == escapedUnits(state.range(0)));
    xmlFree(escaped);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(sourceUnits));
}
BENCHMARK(Libxml2)->Arg(0)->Arg(100)->Arg(10)->MinWarmUpTime(0.5);
#endif

}  // namespace
