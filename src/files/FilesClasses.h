// The classes of files/, entered into a registry.
#pragma once

#include "foundation/ClassRegistry.h"

namespace zelUtilities {

void registerFiles(ClassRegistry& registry);

}  // namespace zelUtilities
