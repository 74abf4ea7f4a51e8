// The whole path of a name that may be relative.
#pragma once

#include "automation/String.h"

namespace zelUtilities {

// Raises 52 for a name that can be no file's: empty, with a NUL or a wildcard.
void requireFileName(StringView path);

// Without a separator at its end, unless it is a root. Raises as above.
String fullPathOf(StringView path);

}  // namespace zelUtilities
