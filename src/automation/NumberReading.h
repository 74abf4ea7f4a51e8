// Numbers read from text, in a locale's forms.
//
//   readNumber(u"(1,234.50)", currentLocale());     // minus 1234.5
#pragma once

#include <cstdint>
#include <optional>

#include "automation/DecimalNumber.h"
#include "automation/Locale.h"
#include "automation/String.h"

namespace zelUtilities {

// What a text reads as: a decimal number, or with a prefix &H or &O a pattern of bits.
struct NumberReading {
  DecimalNumber decimal;
  bool otherBase = false;
  std::uint64_t bits = 0;
};

// The most common texts, read fast: a sign, digits, and in the second the locale's decimal separator and an
// exponent. Nothing for any other text, number or not.
std::optional<std::int64_t> readPlainWhole(StringView text);
std::optional<double> readPlainDouble(StringView text, const Locale& locale);

// The number that a text stands for: sign on either side, thousands separators, decimal separator,
// exponent, currency sign on either side, parentheses for negative, blanks around. Nothing for
// any other text.
std::optional<NumberReading> readNumber(StringView text, const Locale& locale);

}  // namespace zelUtilities
