// Rows: the input of the tree benchmarks: a key, a parent and three short texts for each node, in
// slots of one block each, so that handing them over costs no allocation and misses no cache.
//
//   Rows<char16_t> rows(1'000'000, 10);   // fan-out 10; 0 puts every node under the first one
//   rows.key(7); rows.parent(7); rows.cell(7, 2);
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zelBenchmarks {

// Short texts, each with a NUL behind it.
template <class Char>
class ShortTexts {
 public:
  using View = std::basic_string_view<Char>;
  static constexpr std::size_t longest = 11;  // characters

  explicit ShortTexts(std::size_t count) : slots_(count) {}
  void set(std::size_t at, std::string_view text) {
    Slot& slot = slots_[at];
    slot = {};
    for (std::size_t i = 0; i < text.size(); ++i) slot.units[i] = static_cast<Char>(text[i]);
    slot.length = static_cast<std::uint8_t>(text.size());
  }
  void set(std::size_t at, const ShortTexts& other, std::size_t from) { slots_[at] = other.slots_[from]; }
  View operator[](std::size_t at) const {
    const Slot& slot = slots_[at];
    return {slot.units.data(), slot.length};
  }
  std::size_t size() const { return slots_.size(); }

 private:
  struct Slot {
    std::array<Char, longest + 1> units;
    std::uint8_t length;
  };
  std::vector<Slot> slots_;
};

inline std::vector<std::uint32_t> shuffledNumbers(std::size_t count) {
  std::vector<std::uint32_t> numbers(count);
  std::iota(numbers.begin(), numbers.end(), 0U);
  std::shuffle(numbers.begin(), numbers.end(), std::mt19937(20));
  return numbers;
}

template <class Char>
class Rows {
 public:
  using View = std::basic_string_view<Char>;
  static constexpr std::size_t cells = 3;

  Rows(std::size_t count, std::size_t fanOut)
      : fanOut_(fanOut), keys_(count), shuffled_(count), cells_(count * cells) {
    for (std::size_t i = 0; i < count; ++i) {
      keys_.set(i, "n" + std::to_string(i));
      for (std::size_t column = 0; column < cells; ++column) cells_.set(i * cells + column, text(i, column));
    }
    const std::vector<std::uint32_t> order = shuffledNumbers(count);
    for (std::size_t i = 0; i < count; ++i) shuffled_.set(i, keys_, order[i]);
  }

  std::size_t size() const { return keys_.size(); }
  std::size_t fanOut() const { return fanOut_; }
  View key(std::size_t row) const { return keys_[row]; }
  // "" for the first node, which is the root.
  View parent(std::size_t row) const {
    if (row == 0) return {};
    return keys_[fanOut_ == 0 ? 0 : (row - 1) / fanOut_];
  }
  View cell(std::size_t row, std::size_t column) const { return cells_[row * cells + column]; }
  // All keys, each once, in random order.
  View shuffledKey(std::size_t at) const { return shuffled_[at]; }

 private:
  // 8 to 11 characters.
  static std::string text(std::size_t row, std::size_t column) {
    static constexpr std::array<std::string_view, cells> words = {"valuevalues", "datadatadat",
                                                                  "unitunitsof"};
    std::string text = std::to_string(row % 10'000'000);
    text.insert(0, words[column].substr(0, 8 + (row + column) % 4 - text.size()));
    return text;
  }

  std::size_t fanOut_;
  ShortTexts<Char> keys_;
  ShortTexts<Char> shuffled_;
  ShortTexts<Char> cells_;
};

// The rows of that size and shape, made once.
template <class Char>
const Rows<Char>& rowsOf(std::size_t count, std::size_t fanOut) {
  static std::map<std::pair<std::size_t, std::size_t>, std::unique_ptr<Rows<Char>>> made;
  std::unique_ptr<Rows<Char>>& rows = made[{count, fanOut}];
  if (!rows) rows = std::make_unique<Rows<Char>>(count, fanOut);
  return *rows;
}

}  // namespace zelBenchmarks
