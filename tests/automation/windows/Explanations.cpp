#include "automation/windows/Explanations.h"

#include <algorithm>
#include <cmath>

#include "automation/Conversions.h"
#include "automation/Error.h"
#include "automation/LetterCase.h"
#include "automation/Locale.h"

namespace zelUtilities::oracle {

namespace {

constexpr int mismatch = ErrorNumber::TypeMismatch;
constexpr int overflow = ErrorNumber::Overflow;

String lowered(StringView text) {
  String out(text);
  for (char16_t& unit : out) unit = lowerCase(unit);
  return out;
}

bool has(StringView text, StringView part) { return lowered(text).find(part) != String::npos; }

// Any of the parts, which "|" divides.
bool hasAny(StringView text, StringView parts) {
  const std::size_t end = parts.find(u'|');
  return has(text, parts.substr(0, end)) || (end != StringView::npos && hasAny(text, parts.substr(end + 1)));
}

String without(StringView text, char16_t unit) {
  String out(text);
  std::erase(out, unit);
  return out;
}

// The texts of a trial; empty where a value is none.
StringView textOf(const Variant& value) { return value.isString() ? value.text() : StringView(); }
StringView in(const Trial& trial) { return textOf(trial.value); }
StringView our(const Trial& trial) { return textOf(trial.ours.value); }
StringView their(const Trial& trial) { return textOf(trial.system.value); }

bool isDate(const Outcome& outcome) { return outcome.value.kind() == VariantKind::Date; }

bool eitherIs(const Trial& trial, VariantKind kind) {
  return trial.value.kind() == kind || trial.other.kind() == kind;
}

// What a number pattern is given.
double numberIn(const Trial& trial) {
  return trial.value.isString() && !isNumeric(trial.value) ? 0 : toDouble(trial.value);
}

double apart(const Trial& trial) {
  if (trial.ours.error != 0 || trial.system.error != 0 || !isNumeric(trial.ours.value)) return HUGE_VAL;
  return std::fabs(toDouble(trial.ours.value) - toDouble(trial.system.value));
}

bool differInLastPlaces(const Trial& trial) {
  const double relative = trial.ours.value.kind() == VariantKind::Single ? 2e-7 : 5e-15;
  return apart(trial) <= relative * std::fabs(toDouble(trial.ours.value));
}

bool isCenturyLater(const Trial& trial) {
  if (!isDate(trial.ours) || !isDate(trial.system)) return false;
  const double days = trial.system.value.dateValue() - trial.ours.value.dateValue();
  return days > 36523 && days < 36526;
}

// More than one sign or currency sign, or a thousands separator behind the decimal one.
bool hasSurplus(StringView text) {
  const auto signs = std::count(text.begin(), text.end(), u'-') + std::count(text.begin(), text.end(), u'+');
  const std::size_t point = lowered(text).find_first_of(currentLocale().decimalSeparator + u"e");
  return signs > 1 || without(text, currentLocale().currencySymbol[0]).size() + 1 < text.size() ||
         (point != String::npos && text.find(currentLocale().thousandsSeparator, point) != String::npos);
}

// The longest run of digits; leading zeros count.
std::size_t longestNumber(StringView text) {
  std::size_t longest = 0, run = 0;
  for (const char16_t unit : text)
    longest = std::max(longest, run = unit >= u'0' && unit <= u'9' ? run + 1 : 0);
  return longest;
}

// A divider that stands first, last, or before anything but a number or a month's name.
bool hasLooseDivider(StringView text) {
  const String close = without(without(text, u' '), u'\t') + u",";
  for (std::size_t at = 0; at + 1 < close.size(); ++at)
    if (StringView(u",./-:").find(close[at]) != StringView::npos &&
        (at == 0 || StringView(u",./-:aApP").find(close[at + 1]) != StringView::npos))
      return true;
  return false;
}

// An a or p that is no am or pm.
bool hasLetterMark(StringView text) {
  const String lower = lowered(text) + u" ";
  const std::size_t at = lower.find_first_of(u"ap");
  return at != String::npos && lower[at + 1] != u'm';
}

constexpr Explanation nextCentury = {"the system puts the years 30 to 49 into the coming century",
                                     isCenturyLater};

// A macro, so that an explanation takes two lines.
#define WHERE(...) [](const Trial& t) { return __VA_ARGS__; }

}  // namespace

std::vector<Explanation> explainNumberConversions() {
  std::vector<Explanation> all = {
      {"the system makes dates that no calendar has from Single and Currency",
       WHERE(isDate(t.system) && t.ours.error == overflow)},
      {"the system chooses the exponent of small numbers by their size, we by the decimals they take",
       WHERE(has(our(t), u"e-") != has(their(t), u"e-"))},
      {"the system keeps the point in a number with an exponent in every locale",
       WHERE(has(our(t), u"e") && without(our(t), u',') == without(their(t), u'.'))},
      {"the system writes a moment that rounds to midnight with the time",
       WHERE(eitherIs(t, VariantKind::Date) && has(their(t), u":00:00"))},
  };
  if constexpr (sizeof(void*) == 4)
    all.push_back({"in 32 bits the system rounds a currency once, we twice as in 64 bits",
                   WHERE(t.value.kind() == VariantKind::Currency && differInLastPlaces(t))});
  return all;
}

std::vector<Explanation> explainNumberTexts() {
  return {
      {"the system is off in the last places, the fifth decimal of a Currency, and negative exponents",
       WHERE(differInLastPlaces(t) || apart(t) < 1.5)},
      {"the system makes no Currency from other bases, and only a Long from 32 bits",
       WHERE(has(in(t), u"&") && t.system.error == overflow)},
      {"the system overflows for what is too small for a Single, and for negative fractions as Bytes",
       WHERE(t.system.error == overflow && !t.ours.error && toDouble(t.ours.value) == 0)},
      {"the system takes exponents of more than nine digits modulo 2^32",
       WHERE(longestNumber(in(t)) > 9 && has(in(t), u"e"))},
      {"we take one sign, one currency sign, thousands before the decimals, and closed parentheses only",
       WHERE(t.ours.error == mismatch && (hasSurplus(in(t)) || !has(in(t), u")")))},
      {"the system knows no D for an exponent", WHERE(t.system.error == mismatch && has(in(t), u"d"))},
      nextCentury,
  };
}

std::vector<Explanation> explainDateTexts() {
  return {
      nextCentury,
      {"the system reads a month's name between or behind two numbers as year, month, day, and in times",
       WHERE(hasAny(in(t), u"jan|feb|mar|m\u00E4rz|may|mai|sep|dec|dez"))},
      {"the system passes over dividers that divide nothing",
       WHERE(t.ours.error == mismatch && hasLooseDivider(in(t)))},
      {"we let a date's divider stand between time and date",
       WHERE(t.system.error == mismatch && has(in(t), u" /"))},
      {"the system takes the letters a and p for other things, but after hours and minutes alone",
       WHERE(hasLetterMark(in(t)))},
      {"the system takes numbers of more than four digits, and gives the years 001 to 0099 a century",
       WHERE(longestNumber(in(t)) > (has(in(t), u"0") ? 2 : 4))},
  };
}

std::vector<Explanation> explainComparisons() {
  return {
      {"the system compares any number with a Single in the precision of a Single",
       WHERE(eitherIs(t, VariantKind::Single))},
      {"we compare a Double with a Currency in the precision of a Currency, as the clients' language does",
       WHERE(eitherIs(t, VariantKind::Currency) && eitherIs(t, VariantKind::Double))},
  };
}

std::vector<Explanation> explainNumberFormats() {
  return {
      {"the system has no digits for Empty, and leaves a text under General Number as it is",
       WHERE(t.value.isEmpty() || (t.value.isString() && t.pattern == u"General Number"))},
      {"the system takes the digits of other bases for decimal ones", WHERE(has(in(t), u"&"))},
      {"the system takes the 0 of a text with a sign for a negative number",
       WHERE(numberIn(t) == 0 && has(in(t), u"-") && isNumeric(t.value))},
      {"we take one sign, one currency sign, and thousands separators before the decimal one only",
       WHERE(hasSurplus(in(t)))},
      {"the system shows 7 digits of a Single", WHERE(eitherIs(t, VariantKind::Single))},
      {"the system writes the sign next to the digits, we before everything",
       WHERE(our(t).find(u'-') == 0 && without(our(t), u'-') == without(their(t), u'-'))},
      {"the system loses what is carried over from the decimals of a number below one",
       WHERE(std::fabs(numberIn(t)) < 1 && numberIn(t) != 0)},
      {"the system's exponents go wrong beside commas and # places",
       WHERE(has(t.pattern, u"e+###") || (hasAny(t.pattern, u"e+|e-") && has(t.pattern, u",")))},
      {"the system drops a place for zero where # stands behind 0, and its exponent",
       WHERE(numberIn(t) == 0 && (has(t.pattern, u"##00##") || hasAny(t.pattern, u"e+|e-")))},
      {"the system loses the last 0 before the point under #,#",
       WHERE(has(t.pattern, u"#,#") && !has(t.pattern, u"#,##0"))},
  };
}

std::vector<Explanation> explainDateFormats() {
  return {
      {"the system is at fault in medium dates, long times at midnight, half-day marks, c, and weeks",
       WHERE(hasAny(t.pattern, u"medium date|ttttt|long time|a/p|am/pm|ampm|c|ww"))},
      {"the system takes m for minutes anywhere behind an hour, we next to it",
       WHERE(has(t.pattern, u"h") && has(t.pattern, u"m"))},
      {"the system rounds the last second of a day into the time but not into the date",
       WHERE(std::fabs(std::remainder(t.value.dateValue(), 1)) < 0.5 / 86400)},
  };
}

std::vector<Explanation> explainTextFormats() {
  return {
      {"the system turns texts to lower case unasked", WHERE(lowered(our(t)) == their(t))},
      {"the system ignores ! and fills & from the left", WHERE(hasAny(t.pattern, u"!|&"))},
  };
}

}  // namespace zelUtilities::oracle
