#include "platform/Locale.h"

#include <windows.h>

#include <limits>
#include <optional>
#include <stdexcept>

#include "platform/SingleByteCodePage.h"
#include "platform/windows/WideText.h"

namespace zelUtilities {

namespace {

constexpr LCID user = LOCALE_USER_DEFAULT;

String textOf(LCTYPE what) {
  wchar_t text[256];
  const int size = GetLocaleInfoW(user, what, text, 256);  // with the terminator
  return size > 0 ? fromWide(text, static_cast<std::size_t>(size) - 1) : String();
}

int numberOf(LCTYPE what) {
  DWORD number = 0;
  GetLocaleInfoW(user, what | LOCALE_RETURN_NUMBER, reinterpret_cast<wchar_t*>(&number),
                 sizeof number / sizeof(wchar_t));
  return static_cast<int>(number);
}

// The system's "M" is our month "m", its "m" our minute "n", its "tt" our "AMPM", 'quoted' is literal.
String patternOf(LCTYPE what) {
  String pattern;
  bool quoted = false;
  char16_t before = 0;
  for (const char16_t unit : textOf(what)) {
    if (unit == u'\'') {
      quoted = !quoted;
    } else if (quoted) {
      pattern.append({u'\\', unit});
    } else if (unit == u't') {
      if (before != u't') pattern.append(u"AMPM");
    } else if (unit != u'g') {  // the era
      pattern.push_back(unit == u'M' ? u'm' : unit == u'm' ? u'n' : unit == u'H' ? u'h' : unit);
    }
    before = unit;
  }
  return pattern;
}

Locale userLocale() {
  Locale record;
  record.decimalSeparator = textOf(LOCALE_SDECIMAL);
  record.thousandsSeparator = textOf(LOCALE_STHOUSAND);
  record.listSeparator = textOf(LOCALE_SLIST);
  record.currencySymbol = textOf(LOCALE_SCURRENCY);
  record.positiveSign = textOf(LOCALE_SPOSITIVESIGN);
  record.negativeSign = textOf(LOCALE_SNEGATIVESIGN);
  record.currencyDigits = numberOf(LOCALE_ICURRDIGITS);
  record.positiveCurrencyOrder = numberOf(LOCALE_ICURRENCY);
  record.negativeCurrencyOrder = numberOf(LOCALE_INEGCURR);
  record.dateSeparator = textOf(LOCALE_SDATE);
  record.timeSeparator = textOf(LOCALE_STIME);
  record.dateOrder = static_cast<DateOrder>(numberOf(LOCALE_IDATE));
  record.shortDateFormat = patternOf(LOCALE_SSHORTDATE);
  record.longDateFormat = patternOf(LOCALE_SLONGDATE);
  record.timeFormat = patternOf(LOCALE_STIMEFORMAT);
  record.morning = textOf(LOCALE_S1159);
  record.afternoon = textOf(LOCALE_S2359);
  for (unsigned i = 0; i < 12; ++i) {
    record.monthNames[i] = textOf(LOCALE_SMONTHNAME1 + i);
    record.shortMonthNames[i] = textOf(LOCALE_SABBREVMONTHNAME1 + i);
  }
  for (unsigned i = 0; i < 7; ++i) {
    const unsigned day = (i + 6) % 7;  // the system's week begins on Monday
    record.dayNames[i] = textOf(LOCALE_SDAYNAME1 + day);
    record.shortDayNames[i] = textOf(LOCALE_SABBREVDAYNAME1 + day);
  }
  record.codePage = GetACP();
  return record;
}

// The tables of the system's code page, where it is one of single bytes.
std::optional<SingleByteCodePage> systemTables() {
  CPINFO info{};
  if (!GetCPInfo(CP_ACP, &info) || info.MaxCharSize != 1) return {};
  char bytes[256];
  for (int i = 0; i < 256; ++i) bytes[i] = static_cast<char>(i);
  String characters(256, u'\0');
  if (MultiByteToWideChar(CP_ACP, 0, bytes, 256, wideBuffer(characters), 256) != 256) return {};
  SingleByteCodePage::Characters table;
  for (std::size_t i = 0; i < 256; ++i) table[i] = characters[i];
  SingleByteCodePage tables(table);

  // What the system chooses for the others. Halves of pairs stay what they are, nothing by themselves.
  String units;
  for (unsigned unit = 0; unit <= 0xFFFF; ++unit)
    if (unit < 0xD800 || unit > 0xDFFF) units.push_back(static_cast<char16_t>(unit));
  std::string chosen(units.size(), '\0');
  const int count = static_cast<int>(units.size());
  if (WideCharToMultiByte(CP_ACP, 0, wide(units), count, chosen.data(), count, nullptr, nullptr) != count)
    return {};
  for (std::size_t i = 0; i < units.size(); ++i)
    tables.setNearest(units[i], static_cast<std::uint8_t>(chosen[i]));
  return tables;
}

int systemLength(std::size_t length) {
  if (length > static_cast<std::size_t>(std::numeric_limits<int>::max()))
    throw std::length_error("text too long");
  return static_cast<int>(length);
}

class WindowsLocale : public LocaleService {
 public:
  Locale locale() override { return userLocale(); }

  std::string narrow(StringView text) override {
    if (tables_) return tables_->narrow(text);
    if (text.empty()) return {};
    const int length = systemLength(text.size());
    const int size = WideCharToMultiByte(CP_ACP, 0, wide(text.data()), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_ACP, 0, wide(text.data()), length, bytes.data(), size, nullptr, nullptr);
    return bytes;
  }

  String widen(std::string_view bytes) override {
    if (tables_) return tables_->widen(bytes);
    if (bytes.empty()) return {};
    const int length = systemLength(bytes.size());
    const int size = MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, nullptr, 0);
    String text(static_cast<std::size_t>(size), u'\0');
    MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, wideBuffer(text), size);
    return text;
  }

  std::uint8_t narrowUnit(char16_t unit) override {
    if (tables_) return tables_->narrow(unit);
    const std::string bytes = narrow({&unit, 1});
    return static_cast<std::uint8_t>(bytes.size() == 1 ? bytes[0] : '?');
  }

  int compareText(StringView left, StringView right) override {
    return CompareStringW(user, NORM_IGNORECASE, wide(left.data()), systemLength(left.size()),
                          wide(right.data()), systemLength(right.size())) -
           CSTR_EQUAL;
  }

 private:
  const std::optional<SingleByteCodePage> tables_ = systemTables();
};

}  // namespace

LocaleService& LocaleService::system() {
  static auto& service = *new WindowsLocale;
  return service;
}

}  // namespace zelUtilities
