#include "files/FilesClasses.h"

#include "files/zelFiles.h"

namespace zelUtilities {

void registerFiles(ClassRegistry& registry) { registry.add(zelFiles::describeClass()); }

}  // namespace zelUtilities
