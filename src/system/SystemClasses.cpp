#include "system/SystemClasses.h"

#include "system/zelRegistry.h"
#include "system/zelTimeZone.h"
#include "system/zelWinAPI.h"

namespace zelUtilities {

void registerSystem(ClassRegistry& registry) {
  registry.add(zelRegistryInfo());
  registry.add(zelWinAPI::describeClass());
  registry.add(zelTimeZone::describeClass());
}

}  // namespace zelUtilities
