#include "automation/windows/SystemOracle.h"

#include <windows.h>
// After windows.h, whose names it needs.
#include <oleauto.h>

#include "automation/Error.h"
#include "platform/windows/VariantConversion.h"

namespace zelUtilities::oracle {

namespace {

struct SystemValue : VARIANT {
  SystemValue() { VariantInit(this); }
  explicit SystemValue(const Variant& value) : SystemValue() { toSystem(value, *this); }
  ~SystemValue() { VariantClear(this); }
  SystemValue(const SystemValue&) = delete;
  SystemValue& operator=(const SystemValue&) = delete;
};

Outcome failure(HRESULT result) {
  return {{},
          result == DISP_E_TYPEMISMATCH ? ErrorNumber::TypeMismatch
          : result == DISP_E_OVERFLOW   ? ErrorNumber::Overflow
                                        : static_cast<int>(result)};
}

}  // namespace

Outcome systemConvert(const Variant& value, VariantKind kind, std::uint32_t localeId) {
  SystemValue from(value), to;
  const HRESULT result = VariantChangeTypeEx(&to, &from, localeId, VARIANT_NOUSEROVERRIDE | VARIANT_ALPHABOOL,
                                             static_cast<VARTYPE>(kind));
  return FAILED(result) ? failure(result) : Outcome{fromSystem(to)};
}

Outcome systemCompare(const Variant& left, const Variant& right, std::uint32_t localeId) {
  SystemValue a(left), b(right);
  const HRESULT result = VarCmp(&a, &b, localeId, 0);
  if (FAILED(result)) return failure(result);
  return {result == VARCMP_NULL ? Variant::null() : Variant(static_cast<std::int32_t>(result) - VARCMP_EQ)};
}

Outcome systemFormat(const Variant& value, const String& pattern) {
  SystemValue from(value), text;
  const auto units = const_cast<OLECHAR*>(reinterpret_cast<const OLECHAR*>(pattern.c_str()));
  const HRESULT result = VarFormat(&from, units, 1, 1, 0, &text.bstrVal);
  if (FAILED(result)) return failure(result);
  text.vt = VT_BSTR;
  return {fromSystem(text)};
}

}  // namespace zelUtilities::oracle
