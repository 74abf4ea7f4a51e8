// Comparison of two values of any kind, by the Automation rules.
#pragma once

#include "automation/Variant.h"

namespace zelUtilities {

enum class Ordering : signed char { Less = -1, Equal = 0, Greater = 1, Null = 2 };

// Numbers, dates and Booleans compare as numbers; two texts unit by unit; Empty equals 0 and "";
// a number is less than any text; either side Null gives Null. Objects count as their default
// members. Raises 13 for arrays and for objects without a default member.
Ordering compare(const Variant& left, const Variant& right);

// Whether they compare as equal; False where either is Null.
bool equals(const Variant& left, const Variant& right);

}  // namespace zelUtilities
