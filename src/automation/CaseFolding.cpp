#include "automation/CaseFolding.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "automation/CaseFoldingTable.h"

namespace zelUtilities {

namespace {

// Units of one page of 256 share an entry; pages without letter case share page 0.
constexpr std::size_t pageUnits = 256;

constexpr std::size_t countPages() {
  std::array<bool, 256> used{};
  for (const CaseFoldingRun& run : caseFoldingRuns)
    for (std::uint32_t unit = run.first; unit <= run.last; unit += run.step) used[unit / pageUnits] = true;
  return 1 + static_cast<std::size_t>(std::count(used.begin(), used.end(), true));
}

struct FoldingPages {
  std::array<std::uint8_t, 256> pageOf{};
  std::array<std::uint16_t, countPages() * pageUnits> delta{};  // modulo 2^16
};

constexpr FoldingPages makePages() {
  FoldingPages pages;
  std::uint8_t last = 0;
  for (const CaseFoldingRun& run : caseFoldingRuns) {
    for (std::uint32_t unit = run.first; unit <= run.last; unit += run.step) {
      std::uint8_t& page = pages.pageOf[unit / pageUnits];
      if (page == 0) page = ++last;
      pages.delta[page * pageUnits + unit % pageUnits] = static_cast<std::uint16_t>(run.delta);
    }
  }
  return pages;
}

constexpr FoldingPages foldingPages = makePages();

// Four units are folded at once while all of them are ASCII.
constexpr std::uint64_t lanes = 0x0001000100010001ULL;
constexpr std::uint64_t beyondAscii = lanes * 0xFF80;

std::uint64_t foldAscii(std::uint64_t four) {
  const std::uint64_t atLeastA = four + lanes * (0x80 - 'A');
  const std::uint64_t beyondZ = four + lanes * (0x7F - 'Z');
  return four | (((atLeastA ^ beyondZ) & (lanes * 0x80)) >> 2);
}

[[gnu::noinline]] std::uint64_t foldOneByOne(std::uint64_t four) {
  char16_t units[4];
  std::memcpy(units, &four, sizeof four);
  for (char16_t& unit : units) unit = foldCase(unit);
  return fourUnits(units);
}

inline std::uint64_t foldFour(std::uint64_t four) {
  return (four & beyondAscii) == 0 ? foldAscii(four) : foldOneByOne(four);
}

// A hash of the words that fold(four units) makes.
template <class Fold>
inline std::uint32_t hashOf(StringView text, const Fold& fold) {
  constexpr std::uint64_t multiplier = 0x9E3779B97F4A7C15ULL;
  std::uint64_t hash = text.size() * multiplier;
  const auto mix = [&](std::uint64_t four) {
    hash = (hash ^ fold(four)) * multiplier;
    hash ^= hash >> 29;
  };
  const char16_t* units = text.data();
  std::size_t rest = text.size();
  for (; rest >= 4; rest -= 4, units += 4) mix(fourUnits(units));
  if (rest > 0) mix(lastUnits(units, rest));
  hash *= 0xBF58476D1CE4E5B9ULL;
  return static_cast<std::uint32_t>(hash >> 32);
}

[[gnu::noinline]] std::uint32_t hashAnyUnits(StringView text) { return hashOf(text, foldFour); }

}  // namespace

char16_t foldCase(char16_t unit) {
  const std::size_t page = foldingPages.pageOf[unit / pageUnits];
  return static_cast<char16_t>(unit + foldingPages.delta[page * pageUnits + unit % pageUnits]);
}

String foldCase(StringView text) {
  String folded(text);
  for (char16_t& unit : folded) unit = foldCase(unit);
  return folded;
}

bool foldAlike(StringView left, StringView right) {
  const char16_t* a = left.data();
  const char16_t* b = right.data();
  std::size_t rest = left.size();
  for (; rest >= 4; rest -= 4, a += 4, b += 4)
    if (foldFour(fourUnits(a)) != foldFour(fourUnits(b))) return false;
  return foldFour(lastUnits(a, rest)) == foldFour(lastUnits(b, rest));
}

int compareFolded(StringView left, StringView right) {
  const std::size_t common = std::min(left.size(), right.size());
  for (std::size_t at = 0; at < common; ++at) {
    if (left[at] == right[at]) continue;
    const int difference = foldCase(left[at]) - foldCase(right[at]);
    if (difference != 0) return difference;
  }
  return static_cast<int>(left.size() > right.size()) - static_cast<int>(left.size() < right.size());
}

std::uint32_t foldedHash(StringView text) {
  std::uint64_t seen = 0;
  const std::uint32_t hash = hashOf(text, [&seen](std::uint64_t four) {
    seen |= four;
    return foldAscii(four);
  });
  return (seen & beyondAscii) == 0 ? hash : hashAnyUnits(text);
}

}  // namespace zelUtilities
