#include "automation/Format.h"

#include <cmath>
#include <optional>

#include "automation/Calendar.h"
#include "automation/CaseFolding.h"
#include "automation/Conversions.h"
#include "automation/DatePattern.h"
#include "automation/DateReading.h"
#include "automation/DefaultValue.h"
#include "automation/Error.h"
#include "automation/Locale.h"
#include "automation/NumberPattern.h"
#include "automation/NumberReading.h"
#include "automation/PatternText.h"
#include "automation/TextPattern.h"

namespace zelUtilities {

namespace {

constexpr int formatDigits = 15;  // of a Double that are shown

enum class PatternKind { Number, Date, Text };

// Decided by the first unit that means something; a pattern of literals alone is one for numbers.
PatternKind kindOf(StringView pattern) {
  while (!pattern.empty()) {
    if (const std::size_t literal = literalLength(pattern); literal != 0) {
      pattern.remove_prefix(literal);
      continue;
    }
    const char16_t unit = lowerLetter(pattern[0]);
    if (StringView(u"0#.,%").find(unit) != StringView::npos) return PatternKind::Number;
    if (StringView(u"@&<>!").find(unit) != StringView::npos) return PatternKind::Text;
    if (StringView(u"dmyhnsqwc/:").find(unit) != StringView::npos) return PatternKind::Date;
    for (const StringView word : {u"ttttt", u"am/pm", u"a/p", u"ampm"})
      if (startsWithWord(pattern, word)) return PatternKind::Date;
    pattern.remove_prefix(1);
  }
  return PatternKind::Number;
}

// A text keeps all its digits.
std::optional<DecimalNumber> numberIn(StringView text) {
  const std::optional<NumberReading> reading = readNumber(text, currentLocale());
  if (!reading) return std::nullopt;
  if (reading->otherBase) return DecimalNumber::of(static_cast<double>(reading->bits), formatDigits);
  // What no Double holds would make a text of any length.
  return reading->decimal.toDouble() ? std::optional(reading->decimal) : std::nullopt;
}

// The value as a number; nothing for a text that does not read as one, and for what is no number at all.
std::optional<DecimalNumber> numberOf(const Variant& value) {
  switch (value.kind()) {
    case VariantKind::Byte:
    case VariantKind::Integer:
    case VariantKind::Long:
      return DecimalNumber::of(std::int64_t{toLong(value)}, 0);
    case VariantKind::Currency:
      return DecimalNumber::of(value.currencyValue(), 4);
    case VariantKind::String:
      return numberIn(value.text());
    default:
      break;
  }
  const double number = toDouble(value);
  return std::isfinite(number) ? std::optional(DecimalNumber::of(number, formatDigits)) : std::nullopt;
}

// The value as a date; nothing for a text that reads neither as a date nor as a number.
std::optional<double> dateOf(const Variant& value) {
  if (!value.isString()) {
    const double days = toDate(value);
    if (!isDateInRange(days)) throw Error(ErrorNumber::Overflow);
    return days;
  }
  if (std::optional<double> days = readDate(value.text(), currentLocale())) return days;
  if (!isNumeric(value.text())) return std::nullopt;
  const double days = toDouble(value);
  return isDateInRange(days) ? std::optional(days) : std::nullopt;
}

String formatAsNumber(const Variant& value, StringView pattern) {
  const std::optional<DecimalNumber> number = numberOf(value);
  return number ? formatNumber(*number, pattern, currentLocale()) : toText(value);
}

String formatAsDate(const Variant& value, StringView pattern) {
  const std::optional<double> days = dateOf(value);
  return days ? formatDate(*days, patternSection(pattern, 0), currentLocale()) : toText(value);
}

String asGeneralNumber(const Variant& value, StringView) {
  if (value.isString() ? isNumeric(value.text()) : value.kind() == VariantKind::Date)
    return toText(toDouble(value));
  return toText(value.isBoolean() ? Variant(toInteger(value)) : value);
}

String asCurrency(const Variant& value, StringView) {
  const std::optional<DecimalNumber> number = numberOf(value);
  return number ? formatCurrency(*number, currentLocale()) : toText(value);
}

// Patterns of a number and its absence: "Yes;Yes;No".
String asWord(const Variant& value, StringView words) {
  const std::optional<DecimalNumber> number = numberOf(value);
  return number ? String(patternSection(words, number->isZero() ? 1 : 0)) : toText(value);
}

struct NamedFormat {
  StringView name;
  String (*format)(const Variant& value, StringView pattern);
  StringView pattern;
};

constexpr NamedFormat namedFormats[] = {
    {u"General Number", asGeneralNumber, u""},
    {u"Currency", asCurrency, u""},
    {u"Fixed", formatAsNumber, u"0.00"},
    {u"Standard", formatAsNumber, u"#,##0.00"},
    {u"Percent", formatAsNumber, u"0.00%"},
    {u"Scientific", formatAsNumber, u"0.00E+00"},
    {u"Yes/No", asWord, u"Yes;No"},
    {u"True/False", asWord, u"True;False"},
    {u"On/Off", asWord, u"On;Off"},
    {u"General Date", formatAsDate, u"c"},
    {u"Long Date", formatAsDate, u"dddddd"},
    {u"Medium Date", formatAsDate, u"dd-mmm-yy"},
    {u"Short Date", formatAsDate, u"ddddd"},
    {u"Long Time", formatAsDate, u"ttttt"},
    {u"Medium Time", formatAsDate, u"hh:nn AM/PM"},
    {u"Short Time", formatAsDate, u"hh:nn"},
};

const NamedFormat* namedFormat(StringView name) {
  for (const NamedFormat& format : namedFormats)
    if (equalFolded(format.name, name)) return &format;
  return nullptr;
}

// Null has the fourth section of a number pattern and the second of a text pattern.
String formatNull(StringView pattern) {
  if (namedFormat(pattern)) return {};
  switch (kindOf(pattern)) {
    case PatternKind::Number: {
      const StringView section = patternSection(pattern, 3);
      return section.empty() ? String() : formatNumber(DecimalNumber(), section, currentLocale());
    }
    case PatternKind::Text:
      return patternSection(pattern, 1).empty() ? String() : formatText(u"", pattern);
    default:
      return {};
  }
}

String formatPlain(const Variant& value, StringView pattern) {
  if (value.isNull()) return formatNull(pattern);
  if (pattern.empty()) return toText(value);
  if (value.isArray() || value.isError()) throw Error(ErrorNumber::TypeMismatch);
  if (const NamedFormat* named = namedFormat(pattern)) return named->format(value, named->pattern);
  switch (kindOf(pattern)) {
    case PatternKind::Number:
      return formatAsNumber(value, pattern);
    case PatternKind::Date:
      return formatAsDate(value, pattern);
    default:
      return formatText(toText(value), pattern);
  }
}

}  // namespace

String format(const Variant& value, StringView pattern) {
  return value.isObject() ? formatPlain(defaultValue(value), pattern) : formatPlain(value, pattern);
}

}  // namespace zelUtilities
