#include "text/TextClasses.h"

#include "text/zelSQL.h"
#include "text/zelStringCat.h"
#include "text/zelXML.h"

namespace zelUtilities {

void registerText(ClassRegistry& registry) {
  registry.add(zelSQL::describeClass());
  registry.add(zelStringCat::describeClass());
  registry.add(zelXML::describeClass());
}

}  // namespace zelUtilities
