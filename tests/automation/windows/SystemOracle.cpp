#include "automation/windows/SystemOracle.h"

#include <windows.h>
// After windows.h, whose names it needs.
#include <oleauto.h>

#include <bit>
#include <cmath>
#include <cstdio>

#include "automation/Error.h"

namespace zelUtilities::oracle {

namespace {

const OLECHAR* systemText(const String& text) { return reinterpret_cast<const OLECHAR*>(text.c_str()); }

// Owns a VARIANT.
class SystemValue {
 public:
  SystemValue() { VariantInit(&value_); }
  explicit SystemValue(const Variant& value) : SystemValue() {
    value_.vt = static_cast<VARTYPE>(value.kind());
    switch (value.kind()) {
      case VariantKind::Boolean:
        value_.boolVal = value.boolean() ? VARIANT_TRUE : VARIANT_FALSE;
        break;
      case VariantKind::Byte:
        value_.bVal = value.byte();
        break;
      case VariantKind::Integer:
        value_.iVal = value.integer();
        break;
      case VariantKind::Long:
        value_.lVal = value.longInteger();
        break;
      case VariantKind::Single:
        value_.fltVal = value.single();
        break;
      case VariantKind::Double:
        value_.dblVal = value.doubleValue();
        break;
      case VariantKind::Date:
        value_.date = value.dateValue();
        break;
      case VariantKind::Currency:
        value_.cyVal.int64 = value.currencyValue();
        break;
      case VariantKind::String:
        value_.bstrVal = SysAllocString(systemText(String(value.text())));
        break;
      default:
        break;
    }
  }
  ~SystemValue() { VariantClear(&value_); }
  SystemValue(const SystemValue&) = delete;
  SystemValue& operator=(const SystemValue&) = delete;

  VARIANT* get() { return &value_; }

  Variant read() const {
    switch (static_cast<VariantKind>(value_.vt)) {
      case VariantKind::Boolean:
        return value_.boolVal != VARIANT_FALSE;
      case VariantKind::Byte:
        return value_.bVal;
      case VariantKind::Integer:
        return value_.iVal;
      case VariantKind::Long:
        return static_cast<std::int32_t>(value_.lVal);
      case VariantKind::Single:
        return value_.fltVal;
      case VariantKind::Double:
        return value_.dblVal;
      case VariantKind::Date:
        return Variant::date(value_.date);
      case VariantKind::Currency:
        return Variant::currency(value_.cyVal.int64);
      case VariantKind::String:
        return String(reinterpret_cast<const char16_t*>(value_.bstrVal), SysStringLen(value_.bstrVal));
      default:
        return {};
    }
  }

 private:
  VARIANT value_;
};

Outcome failure(HRESULT result) {
  switch (result) {
    case DISP_E_TYPEMISMATCH:
      return {{}, ErrorNumber::TypeMismatch};
    case DISP_E_OVERFLOW:
      return {{}, ErrorNumber::Overflow};
    default:
      return {{}, static_cast<int>(result)};
  }
}

std::uint64_t bitsOf(const Variant& value) {
  switch (value.kind()) {
    case VariantKind::Boolean:
      return value.boolean() ? 1 : 0;
    case VariantKind::Byte:
      return value.byte();
    case VariantKind::Integer:
      return static_cast<std::uint16_t>(value.integer());
    case VariantKind::Long:
      return static_cast<std::uint32_t>(value.longInteger());
    case VariantKind::Single:
      return std::bit_cast<std::uint32_t>(value.single() + 0.0F);
    case VariantKind::Double:
    case VariantKind::Date:
      return std::bit_cast<std::uint64_t>(value.doubleValue() + 0.0);  // -0 as 0
    case VariantKind::Currency:
      return static_cast<std::uint64_t>(value.currencyValue());
    default:
      return 0;
  }
}

String numberText(const char* pattern, double value) {
  char text[64];
  std::snprintf(text, sizeof text, pattern, value);
  return fromUtf8(text);
}

}  // namespace

bool same(const Outcome& left, const Outcome& right) {
  if (left.error != 0 || right.error != 0) return left.error == right.error;
  if (left.value.kind() != right.value.kind()) return false;
  if (left.value.isString()) return left.value.text() == right.value.text();
  if (left.value.kind() == VariantKind::Date &&
      std::fabs(left.value.dateValue() - right.value.dateValue()) < 1e-9)
    return true;
  return bitsOf(left.value) == bitsOf(right.value);
}

String describe(const Variant& value) {
  switch (value.kind()) {
    case VariantKind::Empty:
      return u"Empty";
    case VariantKind::Null:
      return u"Null";
    case VariantKind::Boolean:
      return value.boolean() ? u"True" : u"False";
    case VariantKind::Byte:
      return u"Byte " + decimalText(value.byte());
    case VariantKind::Integer:
      return u"Integer " + decimalText(value.integer());
    case VariantKind::Long:
      return u"Long " + decimalText(value.longInteger());
    case VariantKind::Single:
      return u"Single " + numberText("%.9g", static_cast<double>(value.single()));
    case VariantKind::Double:
      return u"Double " + numberText("%.17g", value.doubleValue());
    case VariantKind::Date:
      return u"Date " + numberText("%.17g", value.dateValue());
    case VariantKind::Currency:
      return u"Currency " + decimalText(value.currencyValue()) + u"/10000";
    case VariantKind::String:
      return u"\"" + String(value.text()) + u"\"";
    default:
      return u"?";
  }
}

String describe(const Outcome& outcome) {
  return outcome.error != 0 ? u"error " + decimalText(outcome.error) : describe(outcome.value);
}

Outcome systemConvert(const Variant& value, VariantKind kind, std::uint32_t localeId) {
  SystemValue from(value);
  SystemValue to;
  const HRESULT result = VariantChangeTypeEx(
      to.get(), from.get(), localeId, VARIANT_NOUSEROVERRIDE | VARIANT_ALPHABOOL, static_cast<VARTYPE>(kind));
  return FAILED(result) ? failure(result) : Outcome{to.read(), 0};
}

Outcome systemReadDate(StringView text, std::uint32_t localeId) {
  DATE date = 0;
  const HRESULT result =
      VarDateFromStr(const_cast<OLECHAR*>(systemText(String(text))), localeId, LOCALE_NOUSEROVERRIDE, &date);
  return FAILED(result) ? failure(result) : Outcome{Variant::date(date), 0};
}

Outcome systemCompare(const Variant& left, const Variant& right, std::uint32_t localeId) {
  SystemValue a(left);
  SystemValue b(right);
  const HRESULT result = VarCmp(a.get(), b.get(), localeId, 0);
  if (FAILED(result)) return failure(result);
  if (result == VARCMP_NULL) return {Variant::null(), 0};
  return {static_cast<std::int32_t>(result) - VARCMP_EQ, 0};
}

Outcome systemFormat(const Variant& value, StringView pattern) {
  SystemValue from(value);
  BSTR text = nullptr;
  const HRESULT result =
      VarFormat(from.get(), const_cast<OLECHAR*>(systemText(String(pattern))), 1, 1, 0, &text);
  if (FAILED(result)) return failure(result);
  Outcome outcome{String(reinterpret_cast<const char16_t*>(text), SysStringLen(text)), 0};
  SysFreeString(text);
  return outcome;
}

}  // namespace zelUtilities::oracle
