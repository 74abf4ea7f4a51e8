// What `zel idl` prints: the classes as a type library publishes them.
#pragma once

#include "foundation/ClassRegistry.h"
#include "host/Console.h"

namespace zelUtilities::host {

// The interface description (IDL) of all classes. Raises 51 where a name cannot be published.
void printInterfaceDescription(const ClassRegistry& registry, Console& console);

}  // namespace zelUtilities::host
