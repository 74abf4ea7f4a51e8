#include "files/FilesClasses.h"

#include "files/zelFileFilters.h"
#include "files/zelFiles.h"

namespace zelUtilities {

void registerFiles(ClassRegistry& registry) {
  registry.add(zelFiles::describeClass());
  registry.add(zelFileFilter::describeClass());
  registry.add(zelFileFilters::describeClass());
}

}  // namespace zelUtilities
