// Comparison of two values of any kind, by the Automation rules.
#pragma once

#include "automation/Variant.h"

namespace zelUtilities {

enum class Ordering : signed char { Less = -1, Equal = 0, Greater = 1, Null = 2 };

// Numbers, dates and Booleans compare as numbers, a Double beside a Single or Currency in the other's
// precision; two texts unit by unit; Empty equals 0 and ""; a number is less than any text; error values
// compare with each other; either side Null gives Null. Objects count as their default members. Raises
// 13 for arrays and for an error value beside another kind, 91 for nothing, 438 for an object without a
// default member.
Ordering compare(const Variant& left, const Variant& right);

// Whether they compare as equal; False where either is Null.
bool equals(const Variant& left, const Variant& right);

}  // namespace zelUtilities
