// FilePattern: names with the wildcards * and ?, matched as Windows lists folders by them.
//
// * stands for any characters and ? for one. At the end of a name or before a dot, ? also stands for none:
// "a?.txt" matches "a.txt". An extension of wildcards alone matches a missing one: "*.*" matches every name,
// "a.?" also "a". A pattern that ends in a dot asks for names without one: "*.". Short names (8.3) are not
// looked at.
#pragma once

#include "automation/String.h"

namespace zelUtilities {

bool hasWildcard(StringView name);

// Without regard to letter case.
bool matchesPattern(StringView name, StringView pattern);

}  // namespace zelUtilities
