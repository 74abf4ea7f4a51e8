// What does escaping cost per character, of texts with nothing, something and much to escape? Beside it the
// escaping of the same text in UTF-8 by libxml2 and GLib.
//
// Times are CPU time per character of the plain text, which is the size.
#include "Measure.h"
#include "text/zelXML.h"

#if HAVE_LIBXML2
#include <libxml/entities.h>
#include <libxml/xmlmemory.h>
#endif
#if HAVE_GLIB
#include <glib.h>
#endif

namespace {

using namespace zelUtilities;
using zelBenchmarks::countItems;
using zelBenchmarks::require;

// One unit in `every` is to be escaped, the four that everybody escapes in turn; 0 for none. Never numeric.
String plainText(std::int64_t units, std::int64_t every) {
  String text;
  for (std::int64_t i = 0; i < units; ++i)
    text += every != 0 && i % every == 0 ? u"<&>\""[i / every % 4] : static_cast<char16_t>(u'a' + i % 26);
  return text;
}

std::size_t escapedUnits(StringView text) {
  std::size_t units = text.size();
  for (const char16_t unit : text)
    units += unit == u'<' || unit == u'>' ? 3 : unit == u'&' ? 4 : unit == u'"' ? 5 : 0;
  return units;
}

void escape(benchmark::State& state, std::int64_t every) {
  const String text = plainText(state.range(0), every);
  const std::size_t units = escapedUnits(text);
  for (auto _ : state) require(zel_ToXML(text).size() == units, "length");
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

// How fast the memory is: the escaped text copied.
void copy(benchmark::State& state, std::int64_t every) {
  const String text = zel_ToXML(plainText(state.range(0), every));
  for (auto _ : state) {
    String copied(text);
    benchmark::DoNotOptimize(copied.data());
  }
  countItems(state, state.range(0));
}

#if HAVE_LIBXML2
void escapeByLibxml2(benchmark::State& state, std::int64_t every) {
  const String plain = plainText(state.range(0), every);
  const std::string text = toUtf8(plain);
  const std::size_t units = escapedUnits(plain);
  for (auto _ : state) {
    xmlChar* escaped = xmlEncodeSpecialChars(nullptr, reinterpret_cast<const xmlChar*>(text.c_str()));
    require(static_cast<std::size_t>(xmlStrlen(escaped)) == units, "length");
    xmlFree(escaped);
  }
  countItems(state, state.range(0));
}
#endif

#if HAVE_GLIB
void escapeByGlib(benchmark::State& state, std::int64_t every) {
  const std::string text = toUtf8(plainText(state.range(0), every));
  for (auto _ : state) {
    gchar* escaped = g_markup_escape_text(text.c_str(), static_cast<gssize>(text.size()));
    benchmark::DoNotOptimize(escaped);
    g_free(escaped);
  }
  countItems(state, state.range(0));
}
#endif

template <class Measured>
void registerEach(const std::string& question, const std::string& who, Measured measured) {
  for (const std::int64_t every : {0, 50, 10}) {
    const std::string shape = every == 0 ? "nothing" : "1 in " + std::to_string(every);
    benchmark::RegisterBenchmark((question + "/" + shape + "/" + who).c_str(), [measured, every](
                                                                                   benchmark::State& state) {
      measured(state, every);
    })->Arg(5'000'000);
  }
}

const bool registered = [] {
  registerEach("escape", "zel", escape);
  registerEach("escape", "copy", copy);
#if HAVE_LIBXML2
  registerEach("escape", "libxml2", escapeByLibxml2);
#endif
#if HAVE_GLIB
  registerEach("escape", "glib", escapeByGlib);
#endif
  registerEach("unescape", "zel", unescape);
  benchmark::RegisterBenchmark("escape/all by code/zel", escapeByCode)->Arg(5'000'000);
  return true;
}();

}  // namespace
