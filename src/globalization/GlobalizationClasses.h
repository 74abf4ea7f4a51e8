// The classes of this folder, for the class registry.
#pragma once

#include "foundation/ClassRegistry.h"

namespace zelUtilities {

void registerGlobalization(ClassRegistry& registry);

}  // namespace zelUtilities
