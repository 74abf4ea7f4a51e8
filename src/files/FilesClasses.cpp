#include "files/FilesClasses.h"

#include "files/zelFileFilters.h"
#include "files/zelFileList.h"
#include "files/zelFiles.h"

namespace zelUtilities {

void registerFiles(ClassRegistry& registry) {
  registry.add(zelFiles::describeClass());
  registry.add(zelFile::describeClass());
  registry.add(zelFileList::describeClass());
  registry.add(zelFileFilter::describeClass());
  registry.add(zelFileFilters::describeClass());
}

}  // namespace zelUtilities
