// ServerLife: what keeps the library loaded: the objects that clients hold, and their locks.
#pragma once

#include <windows.h>

#include "automation/String.h"

namespace zelUtilities::ServerLife {

void add();
void remove();
bool canUnload();

// The library's own module, once it is loaded, and the path of its file.
void setModule(HMODULE module);
String modulePath();

}  // namespace zelUtilities::ServerLife
