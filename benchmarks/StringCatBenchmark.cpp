// What does appending cost, per piece and per character, and does it stay so as the text grows? Beside it the
// standard string and QString, which do the same without a stated capacity. And what do replacing and finding
// cost per match and per character?
//
// Times are CPU time per item. Each case runs once beforehand, since the first program to touch a machine's
// memory pays more for it than all later ones.
#include "Measure.h"
#include "text/zelStringCat.h"

#if HAVE_QT5
#include <QString>
#endif

namespace {

using namespace zelUtilities;
using zelBenchmarks::countItems;
using zelBenchmarks::require;

constexpr StringView alphabet = u"abcdefghijklmnopqrstuvwxyz012345abcdefghijklmnopqrstuvwxyz012345";

struct Builder {
  zelStringCat text;
  void append(StringView piece) { text.ConcatenatePart(piece); }
  std::size_t size() const { return text.text().size(); }
  char16_t at(std::size_t position) const { return text.text()[position]; }
};
struct Standard {
  std::u16string text;
  void append(StringView piece) { text.append(piece); }
  std::size_t size() const { return text.size(); }
  char16_t at(std::size_t position) const { return text[position]; }
};
#if HAVE_QT5
struct Qt {
  QString text;
  void append(StringView piece) {
    text.append(reinterpret_cast<const QChar*>(piece.data()), static_cast<int>(piece.size()));
  }
  std::size_t size() const { return static_cast<std::size_t>(text.size()); }
  char16_t at(std::size_t position) const { return text.at(static_cast<int>(position)).unicode(); }
};
#endif

template <class Text>
void build(std::int64_t pieces, std::size_t units) {
  Text text;
  for (std::int64_t i = 0; i < pieces; ++i) text.append(alphabet.substr(i & 15, units));
  require(text.size() == units * static_cast<std::size_t>(pieces), "length");
  require(text.at(units) == alphabet[1] && text.at(units * 2 - 1) == alphabet[units], "second piece");
  require(text.at(text.size() - 1) == alphabet[static_cast<std::size_t>((pieces - 1) & 15) + units - 1],
          "end");
}

// Sizes are pieces; an item is a piece.
template <class Text>
void appendPieces(benchmark::State& state, std::size_t units) {
  build<Text>(state.range(0), units);
  for (auto _ : state) build<Text>(state.range(0), units);
  countItems(state, state.range(0));
}

// Sizes are characters; an item is a character, appended in pieces of 8.
template <class Text>
void appendCharacters(benchmark::State& state) {
  build<Text>(state.range(0) / 8, 8);
  for (auto _ : state) build<Text>(state.range(0) / 8, 8);
  countItems(state, state.range(0));
}

// Sizes are matches, one in ten characters; an item is a match, replaced by a longer text.
void replace(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    zelStringCat text;
    for (std::int64_t i = 0; i < state.range(0); ++i) text.ConcatenatePart(u"0123456<&>");
    state.ResumeTiming();
    text.Replace(u"<&", u"[[&]]");
    require(text.length() == state.range(0) * 13, "length");
  }
  countItems(state, state.range(0));
}

// Sizes are characters searched through; an item is a character.
void find(benchmark::State& state, StringView sought, std::int32_t compareMethod) {
  zelStringCat text;
  while (text.length() < state.range(0)) text.ConcatenatePart(alphabet);
  text.ConcatenatePart(u"a-b");
  for (auto _ : state) require(text.Find(sought, 1, compareMethod) == text.length() - 2, "position");
  countItems(state, state.range(0));
}

template <class Text>
void registerAppending(const std::string& who) {
  using benchmark::RegisterBenchmark;
  for (const std::size_t units : {8U, 32U}) {
    const std::string name = "append pieces/of " + std::to_string(units) + "/" + who;
    RegisterBenchmark(name.c_str(), [units](benchmark::State& state) { appendPieces<Text>(state, units); })
        ->Arg(10'000'000)
        ->Unit(benchmark::kMillisecond);
  }
  RegisterBenchmark(("append characters/in pieces of 8/" + who).c_str(), appendCharacters<Text>)
      ->RangeMultiplier(10)
      ->Range(1'000'000, 100'000'000)
      ->Arg(200'000'000)
      ->Unit(benchmark::kMillisecond);
}

const bool registered = [] {
  registerAppending<Builder>("zel");
  registerAppending<Standard>("std");
#if HAVE_QT5
  registerAppending<Qt>("qt");
#endif
  benchmark::RegisterBenchmark("replace/1 in 10/zel", replace)->RangeMultiplier(10)->Range(1'000, 1'000'000);
  benchmark::RegisterBenchmark("find/as written/zel", [](benchmark::State& state) {
    find(state, u"a-b", zelStringCat::binaryCompare);
  })->Arg(1'000'000);
  benchmark::RegisterBenchmark("find/any case/zel", [](benchmark::State& state) {
    find(state, u"A-B", zelStringCat::textCompare);
  })->Arg(1'000'000);
  return true;
}();

}  // namespace
