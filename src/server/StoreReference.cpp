#include "server/StoreReference.h"

#include <cstring>

#include "automation/Error.h"
#include "platform/windows/ComErrors.h"
#include "platform/windows/OwnedVariant.h"
#include "platform/windows/VariantConversion.h"

namespace zelUtilities {

namespace {

// Bytes that a value of the type takes; 0 for types that no reference is written to.
std::size_t sizeOf(VARTYPE type) {
  switch (type) {
    case VT_I1:
    case VT_UI1:
      return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
      return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
      return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
      return 8;
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return sizeof(void*);
    default:
      return 0;
  }
}

// Exchanges the contents, so that the old one is cleared with the value.
void exchange(void* place, void* content, std::size_t size) {
  unsigned char kept[sizeof(VARIANT)];
  std::memcpy(kept, place, size);
  std::memcpy(place, content, size);
  std::memcpy(content, kept, size);
}

// An array whose memory is the client's own keeps it and its bounds; any other is replaced.
void storeArray(SAFEARRAY** place, OwnedVariant& value) {
  constexpr USHORT inPlace = FADF_AUTO | FADF_STATIC | FADF_EMBEDDED | FADF_FIXEDSIZE;
  if (*place && ((*place)->fFeatures & inPlace || (*place)->cLocks > 0)) {
    const HRESULT copied = SafeArrayCopyData(value.parray, *place);
    if (copied == E_INVALIDARG) throw Error(ErrorNumber::ArrayIsFixed);
    return requireSuccess(copied);
  }
  exchange(place, &value.parray, sizeof(SAFEARRAY*));
}

}  // namespace

void storeReference(const VARIANT& reference, const Variant& value) {
  OwnedVariant stored;
  toSystem(value, stored);
  const VARTYPE type = reference.vt & ~VT_BYREF;
  if (type == VT_VARIANT) {
    const VARTYPE inner = reference.pvarVal->vt;  // a reference again, where a variable is itself a parameter
    if ((inner & VT_BYREF) != 0 && inner != (VT_BYREF | VT_VARIANT))
      return storeReference(*reference.pvarVal, value);
    return exchange(reference.pvarVal, static_cast<VARIANT*>(&stored), sizeof(VARIANT));
  }
  if (stored.vt != type) requireSuccess(VariantChangeType(&stored, &stored, 0, type));
  if ((type & VT_ARRAY) != 0) return storeArray(reference.pparray, stored);
  const std::size_t size = sizeOf(type);
  if (size == 0) throw Error(ErrorNumber::TypeMismatch);
  exchange(reference.byref, &stored.llVal, size);
}

}  // namespace zelUtilities
