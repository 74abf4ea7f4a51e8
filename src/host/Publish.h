// What `zel idl` and `zel manifest` print: the classes as Windows programs get to know them.
#pragma once

#include "foundation/ClassRegistry.h"
#include "host/Console.h"

namespace zelUtilities::host {

// The interface description (IDL) of all classes. Raises 51 where a name cannot be published.
void printInterfaceDescription(const ClassRegistry& registry, Console& console);

// The manifest by which programs use the classes without their being registered.
void printManifest(const ClassRegistry& registry, Console& console);

}  // namespace zelUtilities::host
