// SingleByteCodePage: conversion to and from a code page of 256 characters, by two tables.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "automation/String.h"

namespace zelUtilities {

class SingleByteCodePage {
 public:
  using Characters = std::array<char16_t, 256>;

  // Every character of the table comes back as its byte, every other unit as "?" until told otherwise.
  explicit SingleByteCodePage(const Characters& characters)
      : characters_(characters), bytes_(65536, static_cast<std::uint8_t>('?')) {
    for (std::size_t byte = characters.size(); byte-- > 0;)
      bytes_[characters[byte]] = static_cast<std::uint8_t>(byte);
    for (char16_t unit = 0; unit < 0x80; ++unit) hasAscii_ &= characters[unit] == unit;
  }

  // What a unit that the code page does not have becomes instead of "?".
  void setNearest(char16_t unit, std::uint8_t byte) { bytes_[unit] = byte; }

  std::uint8_t narrow(char16_t unit) const { return bytes_[unit]; }

  std::string narrow(StringView text) const {
    std::string bytes(text.size(), '\0');
    convert(text, bytes.data(), bytes_.data());
    return bytes;
  }

  String widen(std::string_view bytes) const {
    String text(bytes.size(), u'\0');
    convert(bytes, text.data(), characters_.data());
    return text;
  }

 private:
  template <class Unit>
  using Sixteen [[gnu::vector_size(16 * sizeof(Unit))]] = Unit;

  // Takes sixteen ASCII characters over at once, which are most of what there is, and looks the others up.
  template <class From, class To,
            class Unit = std::conditional_t<sizeof(From) == 1, std::uint8_t, std::uint16_t>>
  void convert(std::basic_string_view<From> from, To* out, const auto* table) const {
    std::size_t at = 0;
    const auto lookUp = [&](std::size_t end) {
      for (; at < end; ++at) out[at] = static_cast<To>(table[static_cast<Unit>(from[at])]);
    };
    while (hasAscii_ && at + 16 <= from.size()) {
      Sixteen<Unit> units;
      std::memcpy(&units, from.data() + at, sizeof units);
      if (isAscii(units)) {
        const auto converted = __builtin_convertvector(units, Sixteen<std::make_unsigned_t<To>>);
        std::memcpy(out + at, &converted, sizeof converted);
        at += 16;
      } else {
        lookUp(at + 16);
      }
    }
    lookUp(from.size());
  }
  template <class Units>
  static bool isAscii(const Units& units) {
    using Parts = std::array<std::uint64_t, sizeof units / sizeof(std::uint64_t)>;
    const auto beyond = std::bit_cast<Parts>(units & ~0x7F);
    std::uint64_t any = 0;
    for (const std::uint64_t part : beyond) any |= part;
    return any == 0;
  }

  bool hasAscii_ = true;  // in its place
  Characters characters_;
  std::vector<std::uint8_t> bytes_;  // by unit
};

}  // namespace zelUtilities
