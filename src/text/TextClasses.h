// The classes of text/, entered into a registry.
#pragma once

#include "foundation/ClassRegistry.h"

namespace zelUtilities {

void registerText(ClassRegistry& registry);

}  // namespace zelUtilities
