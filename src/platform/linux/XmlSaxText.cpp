#include "platform/linux/XmlSaxText.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace zelUtilities {

namespace {

constexpr char refusedCharacter = '\1';

// Vectors of the compiler's: most of a document is ASCII, and converting it must cost next to nothing beside
// parsing.
constexpr std::size_t lanes = 16;
using Units = std::uint16_t __attribute__((vector_size(lanes * 2)));
using Bytes = std::uint8_t __attribute__((vector_size(lanes)));

// What comes out comes in short texts.
constexpr std::size_t fewLanes = 8;
struct Few {
  using Word = std::uint64_t;
  using Units = std::uint16_t __attribute__((vector_size(fewLanes * 2)));
  using Bytes = std::uint8_t __attribute__((vector_size(fewLanes)));
};
struct Fewer {
  using Word = std::uint32_t;
  using Units = std::uint16_t __attribute__((vector_size(fewLanes)));
  using Bytes = std::uint8_t __attribute__((vector_size(fewLanes / 2)));
};

// Narrows ASCII units up to the first block that holds anything else; gives how many.
std::size_t narrowAscii(const char16_t* from, std::size_t count, char* to) {
  std::size_t at = 0;
  for (; at + lanes <= count; at += lanes) {
    std::uint64_t words[lanes / 4];
    std::memcpy(words, from + at, sizeof words);
    constexpr std::uint64_t special = 0xFF80FF80FF80FF80;
    if (((words[0] | words[1] | words[2] | words[3]) & special) != 0) break;
    Units units;
    std::memcpy(&units, from + at, sizeof units);
    const Bytes bytes = __builtin_convertvector(units, Bytes);
    std::memcpy(to + at, &bytes, sizeof bytes);
  }
  return at;
}

// Widens a block; false, and nothing is written, unless it is ASCII.
template <class Lanes>
bool widenBlock(const char* from, char16_t* to) {
  typename Lanes::Word word;
  std::memcpy(&word, from, sizeof word);
  if ((word & static_cast<typename Lanes::Word>(0x8080808080808080)) != 0) return false;
  typename Lanes::Bytes bytes;
  std::memcpy(&bytes, &word, sizeof bytes);
  const auto units = __builtin_convertvector(bytes, typename Lanes::Units);
  std::memcpy(to, &units, sizeof units);
  return true;
}

// Widens ASCII up to the first block that holds anything else; gives how many. What is less than a block at
// the end is done with a block that overlaps the one before.
std::size_t widenAscii(const char* from, std::size_t count, char16_t* to) {
  constexpr std::size_t half = fewLanes / 2;
  if (count < half) return 0;
  if (count < fewLanes) {
    const bool isAscii =
        widenBlock<Fewer>(from, to) && widenBlock<Fewer>(from + count - half, to + count - half);
    return isAscii ? count : 0;
  }
  std::size_t at = 0;
  for (; at + fewLanes <= count; at += fewLanes)
    if (!widenBlock<Few>(from + at, to + at)) return at;
  return widenBlock<Few>(from + count - fewLanes, to + count - fewLanes) ? count : at;
}

bool isHigh(char16_t unit) { return (unit & 0xFC00) == 0xD800; }
bool isLow(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }

char* encodePair(char16_t high, char16_t low, char* out) {
  const std::uint32_t code = 0x10000U + ((high & 0x3FFU) << 10) + (low & 0x3FFU);
  *out++ = static_cast<char>(0xF0 | code >> 18);
  *out++ = static_cast<char>(0x80 | (code >> 12 & 0x3F));
  *out++ = static_cast<char>(0x80 | (code >> 6 & 0x3F));
  *out++ = static_cast<char>(0x80 | (code & 0x3F));
  return out;
}

// The length of a sequence by its first byte.
std::size_t sequenceLength(unsigned char first) { return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4; }

// The code of a whole sequence. What comes from the parser is well-formed.
std::uint32_t codeOf(const unsigned char* bytes, std::size_t length) {
  std::uint32_t code = bytes[0] & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) code = code << 6 | (bytes[i] & 0x3FU);
  return code;
}

}  // namespace

std::string_view XmlSaxEncoder::encode(StringView piece) {
  constexpr std::size_t longest = 3;  // bytes of a unit; a pair has four
  const std::size_t needed = (piece.size() + 1) * longest;
  if (buffer_.size() < needed) buffer_.resize(needed);
  char* out = buffer_.data();
  for (std::size_t at = 0; at < piece.size();) {
    if (high_ == 0) {
      const std::size_t plain = narrowAscii(piece.data() + at, piece.size() - at, out);
      at += plain;
      out += plain;
    }
    const std::size_t end = std::min(at + lanes, piece.size());
    for (; at < end; ++at) {
      const char16_t unit = piece[at];
      if (unit < 0x80 && unit != 0 && high_ == 0) {
        *out++ = static_cast<char>(unit);
      } else {
        out = encodeSlowly(unit, out);
      }
    }
  }
  const auto size = static_cast<std::size_t>(out - buffer_.data());
  // Blocks of ASCII may hold NULs.
  if (std::memchr(buffer_.data(), 0, size)) std::replace(buffer_.data(), out, '\0', refusedCharacter);
  return {buffer_.data(), size};
}

char* XmlSaxEncoder::encodeSlowly(char16_t unit, char* out) {
  if (high_ != 0) {
    const char16_t high = high_;
    high_ = 0;
    if (isLow(unit)) return encodePair(high, unit, out);
    *out++ = refusedCharacter;
  }
  if (isHigh(unit)) {
    high_ = unit;
  } else if (isLow(unit)) {
    *out++ = refusedCharacter;
  } else if (unit < 0x80) {
    *out++ = static_cast<char>(unit);
  } else if (unit < 0x800) {
    *out++ = static_cast<char>(0xC0 | unit >> 6);
    *out++ = static_cast<char>(0x80 | (unit & 0x3F));
  } else {
    *out++ = static_cast<char>(0xE0 | unit >> 12);
    *out++ = static_cast<char>(0x80 | (unit >> 6 & 0x3F));
    *out++ = static_cast<char>(0x80 | (unit & 0x3F));
  }
  return out;
}

std::string_view XmlSaxEncoder::finish() {
  static constexpr char refused[] = {refusedCharacter};
  return {refused, high_ != 0 ? 1U : 0U};
}

StringView XmlSaxDecoder::decode(std::string_view utf8) {
  if (size_ < utf8.size()) {
    size_ = std::max<std::size_t>(utf8.size(), 1024);
    buffer_.reset(new char16_t[size_]);  // not initialized
  }
  char16_t* out = buffer_.get();
  for (std::size_t at = 0; at < utf8.size();) {
    const std::size_t plain = widenAscii(utf8.data() + at, utf8.size() - at, out);
    at += plain;
    out += plain;
    const std::size_t end = std::min(at + fewLanes, utf8.size());
    while (at < end) {
      const auto first = static_cast<unsigned char>(utf8[at]);
      if (first < 0x80) {
        *out++ = first;
        ++at;
        continue;
      }
      const std::size_t length = std::min(sequenceLength(first), utf8.size() - at);
      const std::uint32_t code = codeOf(reinterpret_cast<const unsigned char*>(utf8.data()) + at, length);
      at += length;
      if (code >= 0x10000) {
        *out++ = static_cast<char16_t>(0xD7C0 + (code >> 10));
        *out++ = static_cast<char16_t>(0xDC00 | (code & 0x3FF));
      } else {
        *out++ = static_cast<char16_t>(code);
      }
    }
  }
  return {buffer_.get(), static_cast<std::size_t>(out - buffer_.get())};
}

}  // namespace zelUtilities
