// ObjectTable: the classes that were registered in this process, for the implementations of Objects.
#pragma once

#include "platform/Objects.h"

namespace zelUtilities {

// A new object of the class that the program registered, or of the stand-in; nothing when there is none.
// Raises what the factory raises.
Ref<Object> createRegistered(StringView progId);
Ref<Object> createStandIn(StringView progId);

// The 429 of a class that cannot be created, with the reason where there is one.
[[noreturn]] void raiseCannotCreate(StringView progId, StringView reason = {});

}  // namespace zelUtilities
