// The library's own type information, read from the resource of its own module and never from the system's
// registry, which may know another copy or none.
#pragma once

#include <windows.h>

#include <oleauto.h>

namespace zelUtilities {

// The description of a class or interface; TYPE_E_ELEMENTNOTFOUND and the like where there is none.
HRESULT typeInformation(const GUID& id, ITypeInfo** information);

}  // namespace zelUtilities
