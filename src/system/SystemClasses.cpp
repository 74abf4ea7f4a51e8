#include "system/SystemClasses.h"

#include "system/zelApp.h"
#include "system/zelControls.h"
#include "system/zelConversions.h"
#include "system/zelHelp.h"
#include "system/zelMisc.h"
#include "system/zelObjects.h"
#include "system/zelRegistry.h"
#include "system/zelStrings.h"
#include "system/zelTimeZone.h"
#include "system/zelWinAPI.h"

namespace zelUtilities {

void registerSystem(ClassRegistry& registry) {
  registry.add(zelRegistryInfo());
  registry.add(zelStrings::describeClass());
  registry.add(zelConversions::describeClass());
  registry.add(zelObjects::describeClass());
  registry.add(zelMisc::describeClass());
  registry.add(zelTimeZone::describeClass());
  registry.add(zelWinAPI::describeClass());
  registry.add(zelControls::describeClass());
  registry.add(zelHelp::describeClass());
  registry.add(zelApp::describeClass());
}

}  // namespace zelUtilities
