// Whether a type library can hold the names of a class registry.
#pragma once

#include "foundation/ClassRegistry.h"

namespace zelUtilities {

// A type library keeps one spelling of a name, whatever it names, so a parameter "value" would rename a
// property "Value"; and some words have a meaning of their own in the description language. Raises 51 with a
// sentence about the first name or help text that cannot be published.
void checkPublishedNames(const ClassRegistry& registry);

}  // namespace zelUtilities
