#include "text/TextClasses.h"

#include "text/zelSAXExtractor.h"
#include "text/zelSQL.h"
#include "text/zelSchema.h"
#include "text/zelStringCat.h"
#include "text/zelXML.h"

namespace zelUtilities {

void registerText(ClassRegistry& registry) {
  registry.add(zelSAXExtractor::describeClass());
  registry.add(zelSQL::describeClass());
  registry.add(zelSchema::describeClass());
  registry.add(zelStringCat::describeClass());
  registry.add(zelXML::describeClass());
}

}  // namespace zelUtilities
