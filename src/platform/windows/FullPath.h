// The whole path of a name that may be relative.
#pragma once

#include "automation/String.h"

namespace zelUtilities {

// Without a separator at its end, unless it is a root. Raises 52 for a name that can be no file's.
String fullPathOf(StringView path);

}  // namespace zelUtilities
