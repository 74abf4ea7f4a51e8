#include "text/mSQL.h"

#include <algorithm>

#include "automation/Calendar.h"
#include "automation/CaseFolding.h"
#include "automation/Comparison.h"
#include "automation/Conversions.h"
#include "automation/DefaultValue.h"
#include "automation/Error.h"
#include "automation/LeadingNumber.h"
#include "automation/NumberText.h"
#include "foundation/Handled.h"
#include "system/mStrings.h"
#include "text/DateDigits.h"
#include "text/TextSearch.h"

namespace zelUtilities::mSQL {

namespace {

constexpr StringView null = u"Null";

// A locale in which numbers are written as the engine reads them.
const Locale& engineLocale() {
  static const Locale locale;
  return locale;
}

bool isNullOrEmpty(const Variant& value) { return value.isNull() || equals(value, u""); }

String textOfValue(const Variant& value) {
  switch (value.kind()) {
    case VariantKind::Single:
      return String(textOf(value.single(), engineLocale()).view());
    case VariantKind::Double:
      return String(textOf(value.doubleValue(), engineLocale()).view());
    case VariantKind::Currency:
      return String(textOfCurrency(value.currencyValue(), engineLocale()).view());
    default:
      return toText(value);
  }
}

String quoted(StringView text, StringView mark) { return String(mark).append(text).append(mark); }

String dateLiteral(const Moment& moment, bool withDate, bool withTime) {
  DateDigits digits;
  if (withDate)
    digits.part(moment.month, u'/').part(moment.day, u'/').year(moment.year, withTime ? u' ' : u'\0');
  if (withTime) digits.part(moment.hour, u':').part(moment.minute, u':').part(moment.second);
  return quoted(digits.view(), u"#");
}

bool takeEnd(StringView& text, StringView end, std::size_t units) {
  if (text.size() < end.size() || !equalFolded(text.substr(text.size() - end.size()), end)) return false;
  text.remove_suffix(units);
  return true;
}

void appendByte(String& out, std::uint8_t byte) {
  constexpr StringView digits = u"0123456789ABCDEF";
  out.append(u"\\x").append(1, digits[byte >> 4]).append(1, digits[byte & 0xF]);
}

void appendEscaped(String& out, char16_t unit) {
  const auto byte = static_cast<std::uint8_t>(unit);
  if (byte == u'\\') {
    out += u"\\\\";
  } else if (byte == u'\'') {
    out += u"''";
  } else if (byte == u'\n') {
    out += u"\\n";
  } else if (byte == 0 || byte >= 128) {
    appendByte(out, byte);
  } else {
    out += unit;
  }
}

}  // namespace

String SQLBoolean(const Variant& vValue) {
  String literal;
  handled(u"mSQL.SQLBoolean", [&] {
    const Variant value = defaultValue(vValue);
    literal = isNullOrEmpty(value) ? null : toBoolean(value) ? StringView(u"True") : StringView(u"False");
  });
  return literal;
}

String SQLDate(const Variant& vValue) {
  String literal;
  handled(u"mSQL.SQLDate", [&] {
    const Variant value = defaultValue(vValue);
    if (isNullOrEmpty(value)) {
      literal = null;
      return;
    }
    const double days = toDate(value);
    if (!isDateInRange(days)) throw Error(ErrorNumber::Overflow);
    const Moment moment = momentOf(days);
    const bool onDayZero = moment.dayNumber == 0;
    const bool atMidnight = moment.secondOfDay == 0;
    literal = onDayZero && atMidnight ? String(null) : dateLiteral(moment, !onDayZero, !atMidnight);
  });
  return literal;
}

String SQLNumber(const Variant& vValue, bool bUseNull) {
  String literal;
  handled(u"mSQL.SQLNumber", [&] {
    const Variant value = defaultValue(vValue);
    if (value.isNull()) {
      literal = bUseNull ? null : u"0";
    } else {
      literal = textOf(leadingNumber(textOfValue(value)), engineLocale()).view();
    }
  });
  return literal;
}

String SQLString(const Variant& vValue, bool bUseNull, bool bTrimString, bool bPreserveDupSpaces) {
  String literal;
  handled(u"mSQL.SQLString", [&] {
    const Variant value = defaultValue(vValue);
    if (value.isNull()) {
      literal = bUseNull ? null : u"''";
      return;
    }
    String text = textOfValue(value);
    text.resize(std::min(text.find(u'\0'), text.size()));
    text = replaceEach(text, u"'", u"''");
    if (bTrimString) text.resize(text.find_last_not_of(u' ') + 1);
    if (!bPreserveDupSpaces) text = mStrings::RemoveDups(text, u" ");
    literal = quoted(text, u"'");
  });
  return literal;
}

String SQLWhere(StringView sWhere) {
  String clause;
  handled(u"mSQL.SQLWhere", [&] {
    StringView rest = sWhere;
    if (!takeEnd(rest, u" and ", 4)) takeEnd(rest, u" or ", 3);
    takeEnd(rest, u"where ", 6);
    clause = rest;
  });
  return clause;
}

String SQLBinary(StringView sValue) {
  String literal = u"'";
  for (const char16_t unit : sValue) appendEscaped(literal, unit);
  return literal += u'\'';
}

}  // namespace zelUtilities::mSQL
