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

std::uint64_t loadFour(const char16_t* units) {
  std::uint64_t four;
  std::memcpy(&four, units, sizeof four);
  return four;
}

[[gnu::noinline]] std::uint64_t foldOneByOne(std::uint64_t four) {
  char16_t units[4];
  std::memcpy(units, &four, sizeof four);
  for (char16_t& unit : units) unit = foldCase(unit);
  return loadFour(units);
}

inline std::uint64_t foldFour(std::uint64_t four) {
  return (four & beyondAscii) == 0 ? foldAscii(four) : foldOneByOne(four);
}

std::uint64_t loadTail(const char16_t* units, std::size_t count) {
  std::uint64_t four = 0;
  std::memcpy(&four, units, count * sizeof(char16_t));
  return four;
}

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

bool equalFolded(StringView left, StringView right) {
  if (left.size() != right.size()) return false;
  std::size_t at = 0;
  for (; at + 4 <= left.size(); at += 4) {
    const std::uint64_t a = loadFour(left.data() + at);
    const std::uint64_t b = loadFour(right.data() + at);
    if (a != b && foldFour(a) != foldFour(b)) return false;
  }
  for (; at < left.size(); ++at)
    if (foldCase(left[at]) != foldCase(right[at])) return false;
  return true;
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
  constexpr std::uint64_t multiplier = 0x9E3779B97F4A7C15ULL;
  std::uint64_t hash = text.size() * multiplier;
  const auto mix = [&hash](std::uint64_t four) {
    hash = (hash ^ four) * multiplier;
    hash ^= hash >> 29;
  };
  std::size_t at = 0;
  for (; at + 4 <= text.size(); at += 4) mix(foldFour(loadFour(text.data() + at)));
  if (at < text.size()) mix(foldFour(loadTail(text.data() + at, text.size() - at)));
  hash *= 0xBF58476D1CE4E5B9ULL;
  return static_cast<std::uint32_t>(hash >> 32);
}

}  // namespace zelUtilities
