// Short texts in words of four UTF-16 units, the rest of one to three units as two and one.
//
//   equalUnits(u"Paths", key)
//
// Texts are written in the same pieces as they are read: a processor that reads what several writes have just
// put together waits for all that came before them, which may be a key's way from a distant memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "automation/String.h"

namespace zelUtilities {

inline std::uint64_t fourUnits(const char16_t* units) {
  std::uint64_t four;
  std::memcpy(&four, units, sizeof four);
  return four;
}

// Fewer than four units, with zeros in place of the others.
inline std::uint64_t lastUnits(const char16_t* units, std::size_t count) {
  std::uint64_t word = 0;
  if (count & 2) {
    std::uint32_t two;
    std::memcpy(&two, units, sizeof two);
    word = two;
  }
  if (count & 1) word |= static_cast<std::uint64_t>(units[count - 1]) << (count - 1) * 16;
  return word;
}

inline void copyUnits(void* to, StringView text) {
  auto* place = static_cast<unsigned char*>(to);
  const char16_t* units = text.data();
  std::size_t rest = text.size();
  for (; rest >= 4; rest -= 4, units += 4, place += 8) std::memcpy(place, units, 8);
  if (rest & 2) std::memcpy(place, units, 4);
  if (rest & 1) std::memcpy(place + (rest - 1) * 2, units + (rest - 1), 2);
}

inline bool equalUnits(StringView left, StringView right) {
  if (left.size() != right.size()) return false;
  const char16_t* a = left.data();
  const char16_t* b = right.data();
  std::size_t rest = left.size();
  for (; rest >= 4; rest -= 4, a += 4, b += 4)
    if (fourUnits(a) != fourUnits(b)) return false;
  return lastUnits(a, rest) == lastUnits(b, rest);
}

}  // namespace zelUtilities
