// What does appending cost, per piece and per character, and does it stay so as the text grows? Beside it the
// standard string and QString, which do the same without a stated capacity.
//
// Times are CPU time per piece, the result's length and a few characters are checked.
#include <benchmark/benchmark.h>

#include <stdexcept>

#include "text/zelStringCat.h"

#if HAVE_QT5
#include <QString>
#endif

namespace {

using namespace zelUtilities;

constexpr std::int64_t pieces = 10'000'000;
constexpr StringView alphabet = u"abcdefghijklmnopqrstuvwxyz012345abcdefghijklmnopqrstuvwxyz012345";

void require(bool right) {
  if (!right) throw std::logic_error("wrong result");
}

struct Builder {
  zelStringCat text;
  void append(StringView piece) { text.ConcatenatePart(piece); }
  std::size_t size() const { return text.text().size(); }
  char16_t at(std::size_t position) const { return text.text()[position]; }
};
struct Joiner : Builder {
  void append(StringView piece) { text.Concatenate(piece); }
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

// Argument: characters of a piece.
template <class Text>
void AppendPieces(benchmark::State& state) {
  const auto units = static_cast<std::size_t>(state.range(0));
  for (auto _ : state) {
    Text text;
    for (std::int64_t i = 0; i < pieces; ++i) text.append(alphabet.substr(i & 15, units));
    require(text.size() == units * pieces);
    require(text.at(units * 17) == alphabet[1] &&
            text.at(text.size() - 1) == alphabet[((pieces - 1) & 15) + units - 1]);
  }
  state.SetItemsProcessed(state.iterations() * pieces);
}

// Argument: characters of the whole text, in pieces of 8.
template <class Text>
void AppendUpTo(benchmark::State& state) {
  const std::int64_t count = state.range(0) / 8;
  for (auto _ : state) {
    Text text;
    for (std::int64_t i = 0; i < count; ++i) text.append(alphabet.substr(i & 15, 8));
    require(text.size() == static_cast<std::size_t>(count) * 8);
  }
  state.SetItemsProcessed(state.iterations() * count * 8);
}

// Argument: matches, one in ten characters, each replaced by a longer text.
void ReplaceMany(benchmark::State& state) {
  const auto matches = static_cast<std::size_t>(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    zelStringCat text;
    for (std::size_t i = 0; i < matches; ++i) text.ConcatenatePart(u"0123456<&>");
    state.ResumeTiming();
    text.Replace(u"<&", u"[[&]]");
    require(text.length() == static_cast<std::int32_t>(matches * 13));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

// Argument: characters searched through before the match.
void FindBinary(benchmark::State& state) {
  zelStringCat text;
  while (text.length() < state.range(0)) text.ConcatenatePart(alphabet);
  text.ConcatenatePart(u"a-b");
  for (auto _ : state) require(text.Find(u"a-b") == text.length() - 2);
  state.SetItemsProcessed(state.iterations() * text.length());
}
void FindIgnoringCase(benchmark::State& state) {
  zelStringCat text;
  while (text.length() < state.range(0)) text.ConcatenatePart(alphabet);
  text.ConcatenatePart(u"a-b");
  for (auto _ : state) require(text.Find(u"A-B", 1, zelStringCat::textCompare) == text.length() - 2);
  state.SetItemsProcessed(state.iterations() * text.length());
}

// Warmed up, since the first program to touch a machine's memory pays more for it than all later ones.
#define PIECES(Text)                     \
  BENCHMARK_TEMPLATE(AppendPieces, Text) \
      ->Arg(8)                           \
      ->Arg(32)                          \
      ->MinWarmUpTime(2)                 \
      ->MinTime(2)                       \
      ->Unit(benchmark::kMillisecond)
#define UP_TO(Text)                    \
  BENCHMARK_TEMPLATE(AppendUpTo, Text) \
      ->RangeMultiplier(10)            \
      ->Range(10'000, 100'000'000)     \
      ->Arg(200'000'000)               \
      ->MinWarmUpTime(1)               \
      ->Unit(benchmark::kMillisecond)

PIECES(Builder);
PIECES(Joiner);
PIECES(Standard);
#if HAVE_QT5
PIECES(Qt);
#endif
UP_TO(Builder);
UP_TO(Standard);
#if HAVE_QT5
UP_TO(Qt);
#endif
BENCHMARK(ReplaceMany)->RangeMultiplier(10)->Range(1'000, 1'000'000);
BENCHMARK(FindBinary)->Arg(1'000'000);
BENCHMARK(FindIgnoringCase)->Arg(1'000'000);

}  // namespace
