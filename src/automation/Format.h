// The format function: a value as text by a pattern.
//
//   format(1234.5, u"#,##0.00")            "1,234.50"
//   format(Variant::date(39146), u"yyyy-mm-dd")
//   format(u"abc", u">")                   "ABC"
//
// What a pattern is for is decided by its first unit that means something: 0 # . , % for numbers,
// @ & < > ! for texts, the letters of dates for dates; literals alone are for numbers. The grammars are
// in NumberPattern.h, DatePattern.h and TextPattern.h; \x and "text" are literal in all of them.
// Named formats, in any letter case: "General Number", "Currency", "Fixed", "Standard", "Percent",
// "Scientific", "Yes/No", "True/False", "On/Off", "General Date", "Long Date", "Medium Date", "Short Date",
// "Long Time", "Medium Time", "Short Time". Weeks start on Sunday; the first week holds 1 January.
#pragma once

#include "automation/Variant.h"

namespace zelUtilities {

// An empty pattern gives the value as text. A text that reads as a number or date is formatted as one by a
// number or date pattern (a date pattern takes numbers as dates, and the other way round); any other
// text comes back unchanged. Empty counts as 0 or "". Null gives the fourth section of a number
// pattern, the second of a text pattern, else "". No pattern is malformed: what is left open ends with it.
// Raises 13 for arrays and for error values, 6 for a number beyond the dates under a date pattern.
String format(const Variant& value, StringView pattern);

}  // namespace zelUtilities
