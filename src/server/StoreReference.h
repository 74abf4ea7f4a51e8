// storeReference: how a call answers through the references that it was given.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include "automation/Variant.h"

namespace zelUtilities {

// Writes a value where a client's reference (VT_BYREF and anything) points, converted to the type that is
// kept there. Raises 13 or 6 where it does not convert, 10 for an array of other bounds than a fixed one
// there; the client's value is then as before.
void storeReference(const VARIANT& reference, const Variant& value);

}  // namespace zelUtilities
