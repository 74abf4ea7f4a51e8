// What the readers of numbers and dates ask of a unit of text.
#pragma once

namespace zelUtilities {

inline bool isDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

// Blanks of any width, tabs and line ends.
inline bool isBlank(char16_t unit) {
  return unit == u' ' || (unit >= u'\t' && unit <= u'\r') || unit == 0xA0 || unit == 0x202F || unit == 0x3000;
}

}  // namespace zelUtilities
