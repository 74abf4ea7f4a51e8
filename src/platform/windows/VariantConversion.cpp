#include "platform/windows/VariantConversion.h"

#include <windows.h>

#include <oleauto.h>

#include <cstring>
#include <limits>
#include <new>
#include <vector>

#include "automation/ArrayData.h"
#include "automation/Error.h"
#include "platform/windows/ComErrors.h"
#include "platform/windows/ForeignObject.h"
#include "platform/windows/OwnedVariant.h"
#include "platform/windows/WideText.h"

namespace zelUtilities {

namespace {

const ObjectBridge* objectBridge = nullptr;

// The elements of an array, locked in their place for as long as this lives.
class ArrayAccess {
 public:
  explicit ArrayAccess(SAFEARRAY* array) : array_(array) {
    requireSuccess(SafeArrayAccessData(array_, &data_));
  }
  ~ArrayAccess() { SafeArrayUnaccessData(array_); }
  ArrayAccess(const ArrayAccess&) = delete;
  ArrayAccess& operator=(const ArrayAccess&) = delete;

  char* data() const { return static_cast<char*>(data_); }

 private:
  SAFEARRAY* array_;
  void* data_ = nullptr;
};

BSTR newText(StringView text) {
  if (text.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max() / 2))
    throw Error(ErrorNumber::OutOfMemory);
  const BSTR copy = SysAllocStringLen(wide(text.data()), static_cast<UINT>(text.size()));
  if (!copy) throw std::bad_alloc();
  return copy;
}

IDispatch* dispatchOf(Object* object) {
  if (!object) return nullptr;
  if (auto* foreign = foreignObject(object)) {
    foreign->dispatch()->AddRef();
    return foreign->dispatch();
  }
  if (!objectBridge) throw Error(ErrorNumber::TypeMismatch);
  return objectBridge->toSystem(*object);
}

Variant wholeNumber(double value) {
  if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::int32_t>::max())
    return value;
  return static_cast<std::int32_t>(value);
}

// --- arrays to the system ---

SAFEARRAY* newSystemArray(const ArrayData& array) {
  std::vector<SAFEARRAYBOUND> bounds;
  for (const ArrayBound& bound : array.bounds()) bounds.push_back({bound.count, bound.lower});
  SAFEARRAY* created = SafeArrayCreate(static_cast<VARTYPE>(array.elementKind()),
                                       static_cast<UINT>(bounds.size()), bounds.data());
  if (!created) throw std::bad_alloc();
  return created;
}

// Puts an element where it belongs; what it owns goes with it.
void moveElement(OwnedVariant& element, VARTYPE kind, UINT size, char* place) {
  if (kind == VT_VARIANT) {
    std::memcpy(place, static_cast<VARIANT*>(&element), sizeof(VARIANT));
  } else {
    std::memcpy(place, &element.llVal, size);
  }
  VariantInit(&element);
}

void fillSystemArray(const ArrayData& array, SAFEARRAY* filled) {
  const ArrayAccess access(filled);
  if (array.elementKind() == VariantKind::Byte) {
    std::memcpy(access.data(), array.bytes().data(), array.size());
    return;
  }
  const auto kind = static_cast<VARTYPE>(array.elementKind());
  const UINT size = SafeArrayGetElemsize(filled);
  for (std::size_t i = 0; i < array.size(); ++i) {
    OwnedVariant element;
    toSystem(array.at(i), element);
    // A bare stream has no place among objects that answer calls.
    if (kind != VT_VARIANT && element.vt != kind) throw Error(ErrorNumber::TypeMismatch);
    moveElement(element, kind, size, access.data() + i * size);
  }
}

void arrayToSystem(const ArrayData& array, VARIANT& filled) {
  filled.vt = static_cast<VARTYPE>(VT_ARRAY | static_cast<VARTYPE>(array.elementKind()));
  filled.parray = nullptr;
  if (array.bounds().empty()) return;
  filled.parray = newSystemArray(array);  // from here on the caller's to clear
  fillSystemArray(array, filled.parray);
}

// --- arrays from the system ---

// The element kind of ours for one of the system's that has another size; Empty when there is none.
VariantKind elementKindOf(VARTYPE kind) {
  switch (kind) {
    case VT_I2:
    case VT_I4:
    case VT_R4:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
    case VT_BSTR:
    case VT_ERROR:
    case VT_BOOL:
    case VT_VARIANT:
    case VT_UI1:
      return static_cast<VariantKind>(kind);
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return VariantKind::Object;
    case VT_INT:
      return VariantKind::Long;
    default:
      return VariantKind::Variant;  // each element becomes what it becomes
  }
}

std::vector<ArrayBound> boundsOf(SAFEARRAY* array) {
  std::vector<ArrayBound> bounds;
  for (UINT dimension = 1; dimension <= SafeArrayGetDim(array); ++dimension) {
    LONG lower = 0;
    LONG upper = 0;
    requireSuccess(SafeArrayGetLBound(array, dimension, &lower));
    requireSuccess(SafeArrayGetUBound(array, dimension, &upper));
    bounds.push_back({static_cast<std::int32_t>(lower), static_cast<std::uint32_t>(upper - lower + 1)});
  }
  return bounds;
}

// An element looked at in its place: what it owns stays the array's.
Variant elementAt(const char* place, VARTYPE kind, UINT size) {
  VARIANT element;
  VariantInit(&element);
  if (kind == VT_VARIANT) {
    std::memcpy(&element, place, sizeof element);
  } else if (kind == VT_DECIMAL) {
    std::memcpy(&element.decVal, place, sizeof element.decVal);
    element.vt = VT_DECIMAL;  // lies within the decimal
  } else {
    std::memcpy(&element.llVal, place, size);
    element.vt = kind;
  }
  return fromSystem(element);
}

Variant arrayFromSystem(SAFEARRAY* array, VARTYPE kind) {
  const VariantKind elementKind = elementKindOf(kind);
  if (!array) return ArrayData::create(elementKind, {});
  Ref<ArrayData> filled = ArrayData::create(elementKind, boundsOf(array));
  const ArrayAccess access(array);
  if (elementKind == VariantKind::Byte) {
    std::memcpy(filled->bytes().data(), access.data(), filled->size());
    return filled;
  }
  const UINT size = SafeArrayGetElemsize(array);
  for (std::size_t i = 0; i < filled->size(); ++i)
    filled->set(i, elementAt(access.data() + i * size, kind, size));
  return filled;
}

// Kinds that only the system has.
Variant convertedFromSystem(const VARIANT& value) {
  OwnedVariant real;
  requireSuccess(VariantChangeType(&real, const_cast<VARIANT*>(&value), 0, VT_R8));
  return value.vt == VT_DECIMAL ? Variant(real.dblVal) : wholeNumber(real.dblVal);
}

Variant referredFromSystem(const VARIANT& value) {
  OwnedVariant copy;
  requireSuccess(VariantCopyInd(&copy, const_cast<VARIANT*>(&value)));
  return fromSystem(copy);
}

}  // namespace

void setObjectBridge(const ObjectBridge* bridge) { objectBridge = bridge; }

Ref<Object> objectFromSystem(IUnknown* object) {
  if (!object) return {};
  if (Object* own = objectBridge ? objectBridge->fromSystem(*object) : nullptr) return own;
  return wrapForeign(object);
}

void toSystem(const Variant& value, tagVARIANT& filled) {
  if (value.isArray()) return arrayToSystem(value.array(), filled);
  switch (value.kind()) {
    case VariantKind::Integer:
      filled.iVal = value.integer();
      break;
    case VariantKind::Long:
      filled.lVal = value.longInteger();
      break;
    case VariantKind::Error:
      filled.scode = value.errorCode();
      break;
    case VariantKind::Single:
      filled.fltVal = value.single();
      break;
    case VariantKind::Double:
      filled.dblVal = value.doubleValue();
      break;
    case VariantKind::Date:
      filled.date = value.dateValue();
      break;
    case VariantKind::Currency:
      filled.cyVal.int64 = value.currencyValue();
      break;
    case VariantKind::Boolean:
      filled.boolVal = value.boolean() ? VARIANT_TRUE : VARIANT_FALSE;
      break;
    case VariantKind::Byte:
      filled.bVal = value.byte();
      break;
    case VariantKind::String:
      filled.bstrVal = newText(value.text());
      break;
    case VariantKind::Object:
      if (const ForeignStream* bare = foreignStream(value.object())) {
        bare->stream()->AddRef();
        filled.punkVal = bare->stream();
        filled.vt = VT_UNKNOWN;
        return;
      }
      filled.pdispVal = dispatchOf(value.object());
      break;
    default:
      break;  // Empty, Null
  }
  filled.vt = static_cast<VARTYPE>(value.kind());
}

Variant fromSystem(const tagVARIANT& value) {
  if ((value.vt & VT_BYREF) != 0) return referredFromSystem(value);
  if ((value.vt & VT_ARRAY) != 0) return arrayFromSystem(value.parray, value.vt & VT_TYPEMASK);
  switch (value.vt) {
    case VT_EMPTY:
      return {};
    case VT_NULL:
      return Variant::null();
    case VT_I2:
      return std::int16_t{value.iVal};
    case VT_I4:
    case VT_INT:
      return static_cast<std::int32_t>(value.lVal);
    case VT_ERROR:
      return Variant::error(static_cast<std::int32_t>(value.scode));
    case VT_R4:
      return value.fltVal;
    case VT_R8:
      return value.dblVal;
    case VT_DATE:
      return Variant::date(value.date);
    case VT_CY:
      return Variant::currency(value.cyVal.int64);
    case VT_BOOL:
      return value.boolVal != VARIANT_FALSE;
    case VT_UI1:
      return std::uint8_t{value.bVal};
    case VT_BSTR:
      return StringView(reinterpret_cast<const char16_t*>(value.bstrVal), SysStringLen(value.bstrVal));
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return objectFromSystem(value.punkVal);
    default:
      return convertedFromSystem(value);
  }
}

}  // namespace zelUtilities
