// What does escaping cost per character, of texts with nothing, something and much to escape? Beside it
// libxml2's escaping of the same text in UTF-8.
//
// Times are CPU time per character of the plain text, which is the size.
#include "Measure.h"
#include "text/zelXML.h"

#if HAVE_LIBXML2
#include <libxml/entities.h>
#include <libxml/xmlmemory.h>
#endif

namespace {

using namespace zelUtilities;
using zelBenchmarks::countItems;
using zelBenchmarks::require;

// One unit in `every` is to be escaped; 0 for none. Never numeric.
String plainText(std::int64_t units, std::int64_t every) {
  String text;
  for (std::int64_t i = 0; i < units; ++i)
    text += every != 0 && i % every == 0 ? u'<' : static_cast<char16_t>(u'a' + i % 26);
  return text;
}

std::size_t escapedUnits(std::int64_t units, std::int64_t every) {
  return static_cast<std::size_t>(units + (every == 0 ? 0 : 3 * ((units - 1) / every + 1)));
}

void escape(benchmark::State& state, std::int64_t every) {
  const String text = plainText(state.range(0), every);
  for (auto _ : state) require(zel_ToXML(text).size() == escapedUnits(state.range(0), every), "length");
  countItems(state, state.range(0));
}

void unescape(benchmark::State& state, std::int64_t every) {
  const String text = zel_ToXML(plainText(state.range(0), every));
  for (auto _ : state)
    require(zel_FromXML(text).size() == static_cast<std::size_t>(state.range(0)), "length");
  countItems(state, state.range(0));
}

void escapeByCode(benchmark::State& state) {
  const String text(static_cast<std::size_t>(state.range(0)), u'\u00E9');
  for (auto _ : state) require(zel_ToXML(text).size() == 6 * text.size(), "length");
  countItems(state, state.range(0));
}

#if HAVE_LIBXML2
void escapeByLibxml2(benchmark::State& state, std::int64_t every) {
  const std::string text = toUtf8(plainText(state.range(0), every));
  for (auto _ : state) {
    xmlChar* escaped = xmlEncodeSpecialChars(nullptr, reinterpret_cast<const xmlChar*>(text.c_str()));
    require(static_cast<std::size_t>(xmlStrlen(escaped)) == escapedUnits(state.range(0), every), "length");
    xmlFree(escaped);
  }
  countItems(state, state.range(0));
}
#endif

template <class Measured>
void registerEach(const std::string& question, const std::string& who, Measured measured) {
  for (const std::int64_t every : {0, 100, 10}) {
    const std::string shape = every == 0 ? "nothing" : "1 in " + std::to_string(every);
    benchmark::RegisterBenchmark((question + "/" + shape + "/" + who).c_str(), [measured, every](
                                                                                   benchmark::State& state) {
      measured(state, every);
    })->Arg(1'000'000);
  }
}

const bool registered = [] {
  registerEach("escape", "zel", escape);
#if HAVE_LIBXML2
  registerEach("escape", "libxml2", escapeByLibxml2);
#endif
  registerEach("unescape", "zel", unescape);
  benchmark::RegisterBenchmark("escape/all by code/zel", escapeByCode)->Arg(1'000'000);
  return true;
}();

}  // namespace
