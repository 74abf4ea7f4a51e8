// Dates read from text, in a locale's forms.
#pragma once

#include <optional>

#include "automation/Locale.h"
#include "automation/String.h"

namespace zelUtilities {

// The date that a text stands for, in days; nothing for any other text. A text is a date, a time, or both in
// either order.
//
// Dates: two or three numbers, or a month's name with one or two, divided by blanks, commas, "-", "/" or
// the locale's date separator. Three numbers are tried in the locale's order first, then in the others;
// of two numbers both are day and month of the present year, or else month and year. Years below 100
// with one or two digits lie in 1930 to 2029.
// Times: hours, minutes and seconds divided by ":", "." or the locale's time separator; before or after
// noon by AM/PM, A/P or the locale's words, which is ignored for hours above 12. With such a word
// the hour alone is a time.
std::optional<double> readDate(StringView text, const Locale& locale);

}  // namespace zelUtilities
