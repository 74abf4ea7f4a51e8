// The system's own conversions, comparison and formatting, asked in our words.
#pragma once

#include <cstdint>

#include "automation/Variant.h"

namespace zelUtilities::oracle {

// What an operation gave: a value, or the number of the error that it raised.
struct Outcome {
  Variant value;
  int error = 0;
};

// As the locale with this identifier has it, without the user's own settings; Booleans as "True" and
// "False".
Outcome systemConvert(const Variant& value, VariantKind kind, std::uint32_t localeId);
// -1, 0, 1 or Null.
Outcome systemCompare(const Variant& left, const Variant& right, std::uint32_t localeId);
// In the user's locale; weeks start on Sunday, the first week holds 1 January.
Outcome systemFormat(const Variant& value, const String& pattern);

}  // namespace zelUtilities::oracle
