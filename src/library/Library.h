// The whole library: every class of every folder.
//
//   Ref<Object> list = library().create(u"zelUtilities.zelNodeList");
#pragma once

#include "foundation/ClassRegistry.h"

namespace zelUtilities {

// The registry of all classes. The first call fills it, takes over the user's conventions (decimal separator,
// dates, code page) for conversions and formatting, and lets CreateNamedObject find the library's own
// classes. Call it before several threads use the library.
const ClassRegistry& library();

}  // namespace zelUtilities
