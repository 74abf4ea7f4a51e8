// Functions of system libraries that few clients need, loaded at their first use so that loading our own
// library stays light.
//
//   const auto help = systemFunction<decltype(&HtmlHelpW)>(u"hhctrl.ocx", "HtmlHelpW");
#pragma once

#include "automation/String.h"

namespace zelUtilities {

// From the system's own folder alone; the library stays loaded. Raises 53 where there is none or it lacks the
// function.
void* systemAddress(StringView library, const char* function);

template <class Function>
Function systemFunction(StringView library, const char* function) {
  return reinterpret_cast<Function>(systemAddress(library, function));
}

}  // namespace zelUtilities
