// The classes of the data list, for the class registry.
#pragma once

#include "foundation/ClassRegistry.h"

namespace zelUtilities {

void registerDatalist(ClassRegistry& registry);

}  // namespace zelUtilities
