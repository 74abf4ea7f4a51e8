#include "automation/Conversions.h"

#include <cmath>
#include <limits>
#include <optional>

#include "automation/Calendar.h"
#include "automation/CaseFolding.h"
#include "automation/DatePattern.h"
#include "automation/DateReading.h"
#include "automation/DefaultValue.h"
#include "automation/Error.h"
#include "automation/ExactProduct.h"
#include "automation/Locale.h"
#include "automation/NumberReading.h"
#include "automation/NumberText.h"

namespace zelUtilities {

namespace {

constexpr double currencyUnits = 10000;

[[noreturn]] void raiseOverflow() { throw Error(ErrorNumber::Overflow); }

// For the kinds that no conversion takes.
[[noreturn]] void refuse(const Variant& value) {
  throw Error(value.isNull() ? ErrorNumber::InvalidUseOfNull : ErrorNumber::TypeMismatch);
}

template <class T>
T orOverflow(std::optional<T> value) {
  if (!value) raiseOverflow();
  return *value;
}

NumberReading numberIn(StringView text) {
  std::optional<NumberReading> reading = readNumber(text, currentLocale());
  if (!reading) throw Error(ErrorNumber::TypeMismatch);
  return *reading;
}

double doubleIn(StringView text) {
  if (const std::optional<double> plain = readPlainDouble(text, currentLocale())) return *plain;
  const NumberReading reading = numberIn(text);
  return reading.otherBase ? static_cast<double>(reading.bits) : orOverflow(reading.decimal.toDouble());
}

// Halves to even. Beyond the 64-bit range, and for what is no number, nothing.
std::optional<std::int64_t> wholeOf(double value) {
  const double rounded = std::nearbyint(value);
  if (!(rounded >= -0x1p63 && rounded < 0x1p63)) return std::nullopt;
  return static_cast<std::int64_t>(rounded);
}

std::int64_t divideRounded(std::int64_t tenThousandths) {
  constexpr std::int64_t divisor = 10000;
  std::int64_t quotient = tenThousandths / divisor;
  const std::int64_t rest = std::abs(tenThousandths % divisor);
  if (rest > divisor / 2 || (rest == divisor / 2 && quotient % 2 != 0))
    quotient += tenThousandths < 0 ? -1 : 1;
  return quotient;
}

// Rounded by the value's exact product with 10000, halves to even: rounding the product to a double first
// would make halves of what is just above or below one, and lose the last digits of large amounts.
std::int64_t currencyOf(double value) {
  const ExactProduct exact(value, currencyUnits);
  const double product = exact.rounded;
  const double missing = exact.missing;
  const std::optional<std::int64_t> rounded = wholeOf(product);
  if (!rounded) raiseOverflow();
  // From 2^53 on the product is whole and `missing` may be more than a fraction.
  const double rest = product - static_cast<double>(*rounded);
  if (std::fabs(rest) != 0.5) {
    const auto correction = static_cast<std::int64_t>(std::nearbyint(missing));
    if (correction < 0 && *rounded < std::numeric_limits<std::int64_t>::min() - correction) raiseOverflow();
    return *rounded + correction;
  }
  if (missing == 0) return *rounded;
  return static_cast<std::int64_t>(missing > 0 ? std::ceil(product) : std::floor(product));
}

std::optional<std::int64_t> wholeIn(StringView text, std::uint64_t signBit) {
  if (const std::optional<std::int64_t> plain = readPlainWhole(text)) return plain;
  const NumberReading reading = numberIn(text);
  if (!reading.otherBase) return reading.decimal.toWhole();
  if (signBit == 0) return reading.bits <= 0xFF ? std::optional<std::int64_t>(reading.bits) : std::nullopt;
  const std::uint64_t all = signBit * 2 - 1;
  if (reading.bits > all) return std::nullopt;
  const auto whole = static_cast<std::int64_t>(reading.bits);
  return (reading.bits & signBit) != 0 ? whole - static_cast<std::int64_t>(all) - 1 : whole;
}

std::int64_t currencyIn(StringView text) {
  const NumberReading reading = numberIn(text);
  if (reading.otherBase) return currencyOf(static_cast<double>(reading.bits));
  return orOverflow(reading.decimal.toWhole(4));
}

// The value rounded to a whole number; signBit is the highest bit of the kind asked for, 0 for a Byte.
std::optional<std::int64_t> whole(const Variant& value, std::uint64_t signBit) {
  switch (value.kind()) {
    case VariantKind::Empty:
      return 0;
    case VariantKind::Boolean:
      return value.boolean() ? -1 : 0;
    case VariantKind::Byte:
      return value.byte();
    case VariantKind::Integer:
      return value.integer();
    case VariantKind::Long:
      return value.longInteger();
    case VariantKind::Single:
      return wholeOf(static_cast<double>(value.single()));
    case VariantKind::Double:
      return wholeOf(value.doubleValue());
    case VariantKind::Date:
      return wholeOf(value.dateValue());
    case VariantKind::Currency:
      return divideRounded(value.currencyValue());
    case VariantKind::String:
      return wholeIn(value.text(), signBit);
    case VariantKind::Object:
      return whole(defaultValue(value), signBit);
    default:
      refuse(value);
  }
}

template <class T>
T toWhole(const Variant& value, std::uint64_t signBit) {
  const std::optional<std::int64_t> result = whole(value, signBit);
  if (!result || *result < std::numeric_limits<T>::min() || *result > std::numeric_limits<T>::max())
    raiseOverflow();
  return static_cast<T>(*result);
}

double checkedDate(double days) {
  if (!isDateInRange(days)) raiseOverflow();
  return days;
}

bool booleanIn(StringView text) {
  if (equalFolded(text, u"True") || text == u"#TRUE#") return true;
  if (equalFolded(text, u"False") || text == u"#FALSE#") return false;
  return doubleIn(text) != 0;
}

double dateIn(StringView text) {
  const std::optional<double> days = readDate(text, currentLocale());
  if (!days) throw Error(ErrorNumber::TypeMismatch);
  return *days;
}

// The run time's number for an automation code; any other code stands for itself.
std::int32_t errorNumberOf(std::int32_t code) {
  const auto bits = static_cast<std::uint32_t>(code);
  if ((bits & 0xFFFF0000) == 0x800A0000) return code & 0xFFFF;
  switch (bits) {
    case 0x80020003:
      return ErrorNumber::ObjectDoesNotSupport;
    case 0x80020004:
      return ErrorNumber::NamedArgumentNotFound;
    case 0x80020005:
      return ErrorNumber::TypeMismatch;
    case 0x80020006:
      return ErrorNumber::ObjectDoesNotSupport;
    case 0x8002000A:
      return ErrorNumber::Overflow;
    case 0x8002000B:
      return ErrorNumber::SubscriptOutOfRange;
    case 0x8002000E:
      return ErrorNumber::WrongNumberOfArguments;
    case 0x8002000F:
      return ErrorNumber::ArgumentNotOptional;
    case 0x80020012:
      return ErrorNumber::DivisionByZero;
    case 0x8007000E:
      return ErrorNumber::OutOfMemory;
    case 0x80070057:
      return ErrorNumber::InvalidProcedureCall;
    default:
      return code;
  }
}

String dateText(double days) {
  if (!isDateInRange(days)) throw Error(ErrorNumber::TypeMismatch);
  return generalDate(days, currentLocale());
}

bool isNumericKind(VariantKind kind) {
  switch (kind) {
    case VariantKind::Empty:
    case VariantKind::Boolean:
    case VariantKind::Byte:
    case VariantKind::Integer:
    case VariantKind::Long:
    case VariantKind::Single:
    case VariantKind::Double:
    case VariantKind::Currency:
      return true;
    default:
      return false;
  }
}

}  // namespace

std::uint8_t toByte(const Variant& value) {
  if (value.isBoolean()) return value.boolean() ? 255 : 0;  // the low byte of -1
  return toWhole<std::uint8_t>(value, 0);
}

std::int16_t toInteger(const Variant& value) { return toWhole<std::int16_t>(value, 0x8000); }

std::int32_t toLong(const Variant& value) { return toWhole<std::int32_t>(value, 0x80000000); }

float toSingle(const Variant& value) {
  if (value.kind() == VariantKind::Single) return value.single();
  const double wide = toDouble(value);
  if (std::fabs(wide) > static_cast<double>(std::numeric_limits<float>::max())) raiseOverflow();
  return static_cast<float>(wide);
}

double toDouble(const Variant& value) {
  switch (value.kind()) {
    case VariantKind::Empty:
      return 0;
    case VariantKind::Boolean:
      return value.boolean() ? -1 : 0;
    case VariantKind::Byte:
      return value.byte();
    case VariantKind::Integer:
      return value.integer();
    case VariantKind::Long:
      return value.longInteger();
    case VariantKind::Single:
      return static_cast<double>(value.single());
    case VariantKind::Double:
      return value.doubleValue();
    case VariantKind::Date:
      return value.dateValue();
    case VariantKind::Currency:
      return static_cast<double>(value.currencyValue()) / currencyUnits;
    case VariantKind::String:
      return doubleIn(value.text());
    case VariantKind::Object:
      return toDouble(defaultValue(value));
    default:
      refuse(value);
  }
}

std::int64_t toCurrency(const Variant& value) {
  switch (value.kind()) {
    case VariantKind::Currency:
      return value.currencyValue();
    case VariantKind::Single:
    case VariantKind::Double:
    case VariantKind::Date:
      return currencyOf(toDouble(value));
    case VariantKind::String:
      return currencyIn(value.text());
    case VariantKind::Object:
      return toCurrency(defaultValue(value));
    default:
      return std::int64_t{toLong(value)} * 10000;
  }
}

double toDate(const Variant& value) {
  switch (value.kind()) {
    case VariantKind::Date:
      return value.dateValue();
    case VariantKind::String:
      return dateIn(value.text());
    case VariantKind::Object:
      return toDate(defaultValue(value));
    default:
      return checkedDate(toDouble(value));
  }
}

bool toBoolean(const Variant& value) {
  switch (value.kind()) {
    case VariantKind::Boolean:
      return value.boolean();
    case VariantKind::String:
      return booleanIn(value.text());
    case VariantKind::Object:
      return toBoolean(defaultValue(value));
    default:
      return toDouble(value) != 0;
  }
}

String toText(const Variant& value) {
  switch (value.kind()) {
    case VariantKind::Empty:
      return {};
    case VariantKind::String:
      return String(value.text());
    case VariantKind::Boolean:
      return value.boolean() ? u"True" : u"False";
    case VariantKind::Byte:
      return String(textOf(std::int64_t{value.byte()}).view());
    case VariantKind::Integer:
      return String(textOf(std::int64_t{value.integer()}).view());
    case VariantKind::Long:
      return String(textOf(std::int64_t{value.longInteger()}).view());
    case VariantKind::Single:
      return String(textOf(value.single(), currentLocale()).view());
    case VariantKind::Double:
      return String(textOf(value.doubleValue(), currentLocale()).view());
    case VariantKind::Currency:
      return String(textOfCurrency(value.currencyValue(), currentLocale()).view());
    case VariantKind::Date:
      return dateText(value.dateValue());
    case VariantKind::Error:
      return u"Error " + decimalText(errorNumberOf(value.errorCode()));
    case VariantKind::Object:
      return toText(defaultValue(value));
    default:
      refuse(value);
  }
}

Variant convertTo(const Variant& value, VariantKind kind) {
  if (value.kind() == kind) return value;
  switch (kind) {
    case VariantKind::Byte:
      return toByte(value);
    case VariantKind::Integer:
      return toInteger(value);
    case VariantKind::Long:
      return toLong(value);
    case VariantKind::Single:
      return toSingle(value);
    case VariantKind::Double:
      return toDouble(value);
    case VariantKind::Currency:
      return Variant::currency(toCurrency(value));
    case VariantKind::Date:
      return Variant::date(toDate(value));
    case VariantKind::Boolean:
      return toBoolean(value);
    case VariantKind::String:
      return toText(value);
    case VariantKind::Variant:
      return value;
    default:
      refuse(value);
  }
}

bool isNumeric(const Variant& value) {
  if (value.isString()) return isNumeric(value.text());
  if (value.isObject() && value.object()) return isNumeric(defaultValue(value));
  return isNumericKind(value.kind());
}

bool isNumeric(StringView text) {
  if (readPlainWhole(text) || readPlainDouble(text, currentLocale())) return true;
  const std::optional<NumberReading> reading = readNumber(text, currentLocale());
  return reading && !reading->otherBase && reading->decimal.toDouble();
}

bool isDate(const Variant& value) {
  if (value.kind() == VariantKind::Date) return true;
  if (value.isString()) return readDate(value.text(), currentLocale()).has_value();
  return value.isObject() && value.object() && isDate(defaultValue(value));
}

}  // namespace zelUtilities
