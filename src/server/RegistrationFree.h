// The manifest by which a program uses the library without its being registered.
#pragma once

#include <string>

#include "foundation/ClassRegistry.h"

namespace zelUtilities {

// The side-by-side manifest of zelUtilities.dll, with LF line ends; "@architecture@" stands where the build
// puts the processor's name.
std::string registrationFreeManifest(const ClassRegistry& registry);

}  // namespace zelUtilities
