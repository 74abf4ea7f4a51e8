// How a system writes dates and times, as the patterns of a Locale record.
#pragma once

#include "automation/Locale.h"
#include "automation/String.h"

namespace zelUtilities {

// "%d.%m.%Y" is "dd.mm.yyyy". A conversion that has no counterpart is left out.
String patternFromConversions(StringView conversions);

// The order of day, month and year in a pattern.
DateOrder dateOrderOf(StringView pattern);

// What stands between the first two parts of a pattern; nothing where it has but one.
String separatorOf(StringView pattern);

}  // namespace zelUtilities
