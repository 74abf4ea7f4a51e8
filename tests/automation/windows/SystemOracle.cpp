#include "automation/windows/SystemOracle.h"

#include <windows.h>
// After windows.h, whose names it needs.
#include <oleauto.h>

#include "platform/windows/ComErrors.h"
#include "platform/windows/OwnedVariant.h"
#include "platform/windows/VariantConversion.h"

namespace zelUtilities::oracle {

Variant systemConvert(const Variant& value, VariantKind kind, std::uint32_t localeId) {
  OwnedVariant from, to;
  toSystem(value, from);
  requireSuccess(VariantChangeTypeEx(&to, &from, localeId, VARIANT_NOUSEROVERRIDE | VARIANT_ALPHABOOL,
                                     static_cast<VARTYPE>(kind)));
  return fromSystem(to);
}

Variant systemCompare(const Variant& left, const Variant& right, std::uint32_t localeId) {
  OwnedVariant a, b;
  toSystem(left, a);
  toSystem(right, b);
  const HRESULT result = VarCmp(&a, &b, localeId, 0);
  requireSuccess(result);
  return result == VARCMP_NULL ? Variant::null() : Variant(static_cast<std::int32_t>(result) - VARCMP_EQ);
}

Variant systemFormat(const Variant& value, const String& pattern) {
  OwnedVariant from, text;
  toSystem(value, from);
  const auto units = const_cast<OLECHAR*>(reinterpret_cast<const OLECHAR*>(pattern.c_str()));
  requireSuccess(VarFormat(&from, units, 1, 1, 0, &text.bstrVal));
  text.vt = VT_BSTR;
  return fromSystem(text);
}

}  // namespace zelUtilities::oracle
