// What an object counts as where a plain value is wanted.
#pragma once

#include "automation/Variant.h"

namespace zelUtilities {

// A value that is no object comes back as it is; of an object the value of its default member, through as
// many objects as it takes. Raises 91 for nothing, 438 for an object without a default member, and 13 for
// objects that only lead to each other.
Variant defaultValue(const Variant& value);

}  // namespace zelUtilities
