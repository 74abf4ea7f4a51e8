// mSQL: values as literals of SQL, for an engine that takes dates between "#" as month/day/year, doubled
// apostrophes in texts, and the word Null. Clients reach these routines through zelSQL.h.
//
// Numbers have "." as their decimal point and dates the same form in every locale. Empty counts as the empty
// text, an object as its default member. A failure, such as a value that does not convert, is logged under
// "mSQL.<routine>" and gives "".
#pragma once

#include "automation/String.h"
#include "automation/Variant.h"

namespace zelUtilities::mSQL {

// "True" or "False"; "Null" for Null and the empty text.
String SQLBoolean(const Variant& vValue);

// "#03/05/2007 14:07:09#", without the time at midnight and without the date on the day zero; "Null" for
// Null, the empty text and the zero date.
String SQLDate(const Variant& vValue);

// The number that the value's text begins with: "12" for "12abc", "0" for "abc". For Null "0", or "Null".
String SQLNumber(const Variant& vValue, bool bUseNull = false);

// The value's text between apostrophes, cut at its first NUL, without blanks at the end, and if wanted with
// single blanks only. For Null "''", or "Null".
String SQLString(const Variant& vValue, bool bUseNull = false, bool bTrimString = true,
                 bool bPreserveDupSpaces = true);

// A clause without the conjunction or the word "where" that it ends with. The blank before a conjunction
// stays, a word "where" goes with its own; callers rely on both.
String SQLWhere(StringView sWhere);

// Bytes as a literal for an engine that takes backslash escapes. Only the low byte of a character counts
// where it is escaped: the operation is for texts of bytes. Failures reach the caller.
String SQLBinary(StringView sValue);

}  // namespace zelUtilities::mSQL
