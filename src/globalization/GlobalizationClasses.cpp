#include "globalization/GlobalizationClasses.h"

#include "globalization/zelGlobalization.h"

namespace zelUtilities {

void registerGlobalization(ClassRegistry& registry) { registry.add(zelGlobalization::describeClass()); }

}  // namespace zelUtilities
