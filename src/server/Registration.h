// How the classes enter the system's class store, and leave it.
//
// Written are the programmatic and the class identifier of every class that clients create, the type library
// and the interfaces that cross apartments. The 32- and the 64-bit library may be registered side by side;
// each takes back only what the other does not need.
#pragma once

#include <windows.h>

namespace zelUtilities {

enum class RegistrationScope { Machine, User };

// Replaces an earlier registration, also one from another folder. What was written is taken back on failure.
HRESULT registerServer(RegistrationScope scope);

// Leaves alone the registration of a copy in another folder that is still there.
HRESULT unregisterServer(RegistrationScope scope);

}  // namespace zelUtilities
