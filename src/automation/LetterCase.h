// Letters of one case or the other: unit by unit, the same in every locale.
#pragma once

#include "automation/String.h"

namespace zelUtilities {

char16_t upperCase(char16_t unit);
char16_t lowerCase(char16_t unit);

}  // namespace zelUtilities
