// scriptValue: what an array or date of a script's counts as where a call wants a value.
#pragma once

#include "automation/ArrayData.h"
#include "automation/ClassInfo.h"

namespace zelUtilities {

// Whether it is an array of variants, the only one that scripts have, where one of another kind is wanted.
bool isScriptArray(const Variant& given, const TypeInfo& wanted);

// A script's array, or its array object (with a length and elements by number), becomes the array that is
// wanted; its date object becomes a date of the local time where a date or any value is wanted. Everything
// else stays as it is, and so does every object where an object is wanted. Raises what the conversion of an
// element raises.
Variant scriptValue(Variant given, const TypeInfo& wanted);

// The same bounds with each element converted.
Ref<ArrayData> withElements(const ArrayData& array, VariantKind kind);

}  // namespace zelUtilities
