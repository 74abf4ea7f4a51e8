// Dates as text by a pattern.
//
//   formatDate(39146.5, u"yyyy-mm-dd Hh:Nn", currentLocale());     "2007-03-05 12:00"
//
// d dd ddd dddd: day of the month, its name; m mm mmm mmmm: month; yy yyyy: year; h hh n nn s ss: time;
// m or mm next after h or hh: minutes; w: day of the week from Sunday, ww: week of the year, y: day of
// the year, q: quarter; ddddd, dddddd, ttttt: the locale's short date, long date and time; c: both, as
// generalDate. AM/PM am/pm A/P a/p AMPM: morning or afternoon, and hours up to 12 in the whole pattern.
// / and : are the locale's separators. Letters count in either case; \x and "text" are literal, as is
// everything else.
#pragma once

#include "automation/Locale.h"
#include "automation/String.h"

namespace zelUtilities {

// The date must be in range.
String formatDate(double days, StringView pattern, const Locale& locale);

// The short date, without the day 1899-12-30, and the time, without midnight.
String generalDate(double days, const Locale& locale);

}  // namespace zelUtilities
