// FilePattern: names with the wildcards * and ?.
#pragma once

#include "automation/String.h"

namespace zelUtilities {

bool hasWildcard(StringView name);

// Without regard to letter case. "*.*" matches every name, also one without a dot.
bool matchesPattern(StringView name, StringView pattern);

}  // namespace zelUtilities
