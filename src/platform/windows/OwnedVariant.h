// OwnedVariant: a value of the system's that is cleared at the end.
//
// For sources that include the system's headers; this one does not, and so completes the type only there.
#pragma once

struct tagVARIANT;

namespace zelUtilities {

template <class SystemVariant>
struct OwnedVariantOf : SystemVariant {
  OwnedVariantOf() { VariantInit(this); }
  ~OwnedVariantOf() { VariantClear(this); }
  OwnedVariantOf(const OwnedVariantOf&) = delete;
  OwnedVariantOf& operator=(const OwnedVariantOf&) = delete;
};

using OwnedVariant = OwnedVariantOf<tagVARIANT>;

}  // namespace zelUtilities
