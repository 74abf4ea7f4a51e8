// The number that a text begins with, whatever follows it.
#pragma once

#include "automation/String.h"

namespace zelUtilities {

// Sign, digits with "." as the decimal point in every locale, and an exponent. Blanks, tabs and line ends are
// skipped wherever they stand; reading stops at the first other character that does not fit: "12abc" is 12,
// "1 000" 1000, "abc" 0, "&H10" 0. Raises 6 for a number that no double holds.
double leadingNumber(StringView text);

}  // namespace zelUtilities
