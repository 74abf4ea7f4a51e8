// `zel call`: one global operation with arguments given as text.
#pragma once

#include <span>

#include "foundation/ClassRegistry.h"
#include "host/Console.h"

namespace zelUtilities::host {

// Converts each argument to its parameter's type, calls the operation and prints its result. An
// enumeration's value may be given by name, a byte array as hexadecimal digits, no object as ""; trailing
// optional arguments may be left out. Complains, without calling, about a wrong number of arguments and one
// that does not convert.
void callOperation(const ClassRegistry::GlobalOperation& operation, std::span<const String> arguments,
                   Console& console);

// A value as people read it: texts as they are, the items of a collection one a line, the elements of an
// array separated by tabs, bytes as hexadecimal digits, "Null", "Empty", "Nothing"; other objects by class
// name.
void printValue(const Variant& value, Console& console);

}  // namespace zelUtilities::host
