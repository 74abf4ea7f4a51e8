// OwnedVariant: a value of the system's that is cleared at the end.
#pragma once

#include <windows.h>

#include <oleauto.h>

namespace zelUtilities {

struct OwnedVariant : VARIANT {
  OwnedVariant() { VariantInit(this); }
  ~OwnedVariant() { VariantClear(this); }
  OwnedVariant(const OwnedVariant&) = delete;
  OwnedVariant& operator=(const OwnedVariant&) = delete;
};

}  // namespace zelUtilities
