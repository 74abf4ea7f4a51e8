// scriptValue: what an array or date object of a script's counts as where a call wants a value.
#pragma once

#include "automation/ClassInfo.h"

namespace zelUtilities {

// A script's array object (with a length and elements by number) becomes an array where one is wanted, with
// elements of its kind; its date object becomes a date of the local time where a date or any value is
// wanted. Everything else stays as it is, and so does every object where an object is wanted.
Variant scriptValue(Variant given, const TypeInfo& wanted);

}  // namespace zelUtilities
