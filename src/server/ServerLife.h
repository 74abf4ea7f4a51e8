// ServerLife: what keeps the library loaded: the objects that clients hold, and their locks.
#pragma once

#include <windows.h>

namespace zelUtilities::ServerLife {

void add();
void remove();
bool canUnload();

// The library's own module, once it is loaded, and where its file lies.
void setModule(HMODULE module);
HMODULE module();

}  // namespace zelUtilities::ServerLife
