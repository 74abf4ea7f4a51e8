// The format function: a value as text by a pattern.
//
//   format(1234.5, u"#,##0.00")            "1,234.50"
//   format(Variant::date(39146), u"yyyy-mm-dd")
//   format(u"abc", u">")                   "ABC"
//
// Number patterns: 0 # . , % E+ E- e+ e-, literals ($ + - ( ) space, \x, "text"), sections for
// positive; negative; zero; null. Date patterns: d dd ddd dddd ddddd dddddd m mm mmm mmmm w ww q y
// yy yyyy h hh n nn s ss ttttt c / : AM/PM am/pm A/P a/p AMPM, m directly after h (or before s)
// meaning minutes. Text patterns: @ & < > !, a second section for empty texts. Named formats:
// "General Number", "Currency", "Fixed", "Standard", "Percent", "Scientific", "Yes/No",
// "True/False", "On/Off", "General Date", "Long Date", "Medium Date", "Short Date", "Long Time",
// "Medium Time", "Short Time". Weeks start on Sunday; the first week holds 1 January.
#pragma once

#include "automation/Variant.h"

namespace zelUtilities {

// An empty pattern gives the value as text. A text that reads as a number or date is formatted as
// one by a number or date pattern, any other text comes back unchanged. Null gives "" where the
// pattern has no section for it. Raises 13 for arrays and 5 for a malformed pattern.
String format(const Variant& value, StringView pattern);

}  // namespace zelUtilities
