// The system's own conversions, comparison and formatting, asked in our words; they raise as ours do.
#pragma once

#include "automation/Variant.h"

namespace zelUtilities::oracle {

// As the locale with this identifier has it, without the user's own settings; Booleans as "True" and
// "False".
Variant systemConvert(const Variant& value, VariantKind kind, std::uint32_t localeId);
// -1, 0, 1 or Null.
Variant systemCompare(const Variant& left, const Variant& right, std::uint32_t localeId);
// In the user's locale; weeks start on Sunday, the first week holds 1 January.
Variant systemFormat(const Variant& value, const String& pattern);

}  // namespace zelUtilities::oracle
