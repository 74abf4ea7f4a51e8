// Case folding of keys: simple folding of UTF-16 units, the same in every locale.
//
//   equalFolded(u"[Paths]HOME", u"[paths]Home")     true
#pragma once

#include <cstdint>

#include "automation/String.h"
#include "automation/UnitWords.h"

namespace zelUtilities {

char16_t foldCase(char16_t unit);
String foldCase(StringView text);

// For texts of one length.
bool foldAlike(StringView left, StringView right);

inline bool equalFolded(StringView left, StringView right) {
  return left.size() == right.size() && (equalUnits(left, right) || foldAlike(left, right));
}

// Negative, 0 or positive as the folded left text sorts before, with or after the right one.
int compareFolded(StringView left, StringView right);

// Equal for texts that fold alike; well spread over all 32 bits.
std::uint32_t foldedHash(StringView text);

}  // namespace zelUtilities
