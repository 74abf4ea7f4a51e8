// SingleByteCodePage: conversion to and from a code page of 256 characters, by two tables.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
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
  }

  // What a unit that the code page does not have becomes instead of "?".
  void setNearest(char16_t unit, std::uint8_t byte) { bytes_[unit] = byte; }

  std::uint8_t narrow(char16_t unit) const { return bytes_[unit]; }

  std::string narrow(StringView text) const {
    std::string bytes(text.size(), '\0');
    // Through plain pointers: a char may alias anything, the table's address too.
    const std::uint8_t* const table = bytes_.data();
    char* out = bytes.data();
    for (const char16_t unit : text) *out++ = static_cast<char>(table[unit]);
    return bytes;
  }

  String widen(std::string_view bytes) const {
    String text(bytes.size(), u'\0');
    for (std::size_t i = 0; i < bytes.size(); ++i) text[i] = characters_[static_cast<std::uint8_t>(bytes[i])];
    return text;
  }

 private:
  Characters characters_;
  std::vector<std::uint8_t> bytes_;  // by unit
};

}  // namespace zelUtilities
