// The classes of this folder.
#pragma once

#include "foundation/ClassRegistry.h"

namespace zelUtilities {

void registerSystem(ClassRegistry& registry);

}  // namespace zelUtilities
