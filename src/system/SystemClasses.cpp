#include "system/SystemClasses.h"

#include "system/zelRegistry.h"

namespace zelUtilities {

void registerSystem(ClassRegistry& registry) { registry.add(zelRegistryInfo()); }

}  // namespace zelUtilities
