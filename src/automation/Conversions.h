// Conversions between the kinds of Variant, by the Automation rules, in the current locale.
//
// A conversion raises 13 where the value has no such meaning, 6 where it does not fit, 94 for
// Null. Fractions round to the nearest whole, halves to even. Booleans as numbers are -1 and 0;
// as text "True" and "False". An object counts as the value of its default member; nothing raises 91,
// an object without one 438.
#pragma once

#include <cstdint>

#include "automation/Variant.h"

namespace zelUtilities {

std::uint8_t toByte(const Variant& value);
std::int16_t toInteger(const Variant& value);
std::int32_t toLong(const Variant& value);
float toSingle(const Variant& value);
double toDouble(const Variant& value);
std::int64_t toCurrency(const Variant& value);  // ten-thousandths
// Days since 1899-12-30. A text is a date or a time in words and numbers, not a number of days.
double toDate(const Variant& value);
bool toBoolean(const Variant& value);
// Dates show no midnight, and no day where it is 1899-12-30. Empty is ""; an error value is "Error " and its
// code, as the run time writes it.
String toText(const Variant& value);

// The value as that kind; a value of the kind comes back unchanged.
Variant convertTo(const Variant& value, VariantKind kind);

// Whether the value is a number or a text that reads as one: the locale's number forms (sign,
// thousands separators, decimal separator, exponent, currency sign, surrounding blanks,
// parentheses). No prefixes for other number bases. Dates are not numeric; Empty and Booleans are.
bool isNumeric(const Variant& value);
bool isNumeric(StringView text);
inline bool isNumeric(const String& text) { return isNumeric(StringView(text)); }
inline bool isNumeric(const char16_t* text) { return isNumeric(StringView(text)); }

// Whether the value is a date or a text that reads as one.
bool isDate(const Variant& value);

// A kind's name as clients see it: "Empty", "Null", "Integer", "Long", "Single", "Double",
// "Currency", "Date", "String", "Error", "Boolean", "Byte", "Variant", else "Object".
StringView kindName(VariantKind kind);
// The name of the value's kind, for an object that of its class or "Nothing", and with "()" for an array.
String typeName(const Variant& value);

}  // namespace zelUtilities
