// Values of the system's that the server owns or writes into.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include "automation/Variant.h"

namespace zelUtilities {

// Cleared at the end.
struct SystemVariant : VARIANT {
  SystemVariant() { VariantInit(this); }
  ~SystemVariant() { VariantClear(this); }
  SystemVariant(const SystemVariant&) = delete;
  SystemVariant& operator=(const SystemVariant&) = delete;
};

// Writes a value where a client's reference (VT_BYREF and anything) points, converted to the type that is
// kept there. Raises 13 or 6 where it does not convert; the client's value is then as before.
void storeReference(const VARIANT& reference, const Variant& value);

}  // namespace zelUtilities
