// Numbers as text by a pattern.
//
//   formatNumber(DecimalNumber::of(1234.5, 15), u"#,##0.00", currentLocale());     "1,234.50"
//
// 0 is a digit or 0, # a digit or nothing; . the decimal separator; a comma between digits sets thousands
// separators, each one behind the last digit before the point divides by 1000; % multiplies by 100;
// E+ E- e+ e- behind a digit gives an exponent, with - signed only where negative. \x and "text" are
// literal, as is everything else. Digits that find no place stand before the first one. Halves round
// away from zero.
//
// Sections: for all; for positive and zero; negative; for positive; negative; zero. An empty one counts as
// the first, and a negative number written by the first section carries its sign in front.
#pragma once

#include "automation/DecimalNumber.h"
#include "automation/Locale.h"
#include "automation/String.h"

namespace zelUtilities {

String formatNumber(const DecimalNumber& number, StringView pattern, const Locale& locale);

// With the locale's currency sign, digits and layout.
String formatCurrency(const DecimalNumber& number, const Locale& locale);

}  // namespace zelUtilities
