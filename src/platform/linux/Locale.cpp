#include "platform/Locale.h"

#include <langinfo.h>

#include <clocale>
#include <cstring>

#include "automation/CaseFolding.h"
#include "platform/linux/CodePage.h"
#include "platform/linux/DateFormat.h"

namespace zelUtilities {

namespace {

// The environment's locale of the C library; nothing where it names one that is not there.
class EnvironmentLocale {
 public:
  EnvironmentLocale() : handle_(newlocale(LC_ALL_MASK, "", nullptr)) {}
  ~EnvironmentLocale() {
    if (handle_) freelocale(handle_);
  }
  EnvironmentLocale(const EnvironmentLocale&) = delete;
  EnvironmentLocale& operator=(const EnvironmentLocale&) = delete;

  locale_t handle() const { return handle_; }

  // The locales without a language keep the library's own conventions, which are US English.
  bool hasLanguage(int category) const {
    if (!handle_) return false;
    const char* name = nl_langinfo_l(NL_LOCALE_NAME(category), handle_);
    return *name != '\0' && std::strcmp(name, "C") != 0 && std::strcmp(name, "POSIX") != 0 &&
           std::strncmp(name, "C.", 2) != 0;
  }
  bool speaksUtf8() const { return std::strcmp(nl_langinfo_l(CODESET, handle_), "UTF-8") == 0; }

  String text(nl_item item) const {
    const char* bytes = nl_langinfo_l(item, handle_);
    return speaksUtf8() ? fromUtf8(bytes) : fromCharacterSet(nl_langinfo_l(CODESET, handle_), bytes);
  }
  int number(nl_item item) const { return *nl_langinfo_l(item, handle_); }

 private:
  locale_t handle_;
};

int positiveOrder(bool symbolFirst, bool blank) {
  if (symbolFirst) return blank ? 2 : 0;
  return blank ? 3 : 1;
}

// The system says where the sign stands: 0 parentheses, 1 before all, 2 behind all, 3 before and 4 behind
// the symbol.
int negativeOrder(bool symbolFirst, bool blank, int sign) {
  switch (sign) {
    case 0:
      return symbolFirst ? (blank ? 14 : 0) : (blank ? 15 : 4);
    case 2:
      return symbolFirst ? (blank ? 11 : 3) : (blank ? 10 : 7);
    case 3:
      return symbolFirst ? (blank ? 9 : 1) : (blank ? 13 : 6);
    case 4:
      return symbolFirst ? (blank ? 12 : 2) : (blank ? 10 : 7);
    default:
      return symbolFirst ? (blank ? 9 : 1) : (blank ? 8 : 5);
  }
}

void fillNumbers(Locale& record, const EnvironmentLocale& environment) {
  record.decimalSeparator = environment.text(RADIXCHAR);
  record.thousandsSeparator = environment.text(THOUSEP);
  record.listSeparator = record.decimalSeparator == u"," ? u";" : u",";
}

void fillCurrency(Locale& record, const EnvironmentLocale& environment) {
  record.currencySymbol = environment.text(__CURRENCY_SYMBOL);
  record.currencyDigits = environment.number(__FRAC_DIGITS);
  record.positiveCurrencyOrder =
      positiveOrder(environment.number(__P_CS_PRECEDES) == 1, environment.number(__P_SEP_BY_SPACE) != 0);
  record.negativeCurrencyOrder =
      negativeOrder(environment.number(__N_CS_PRECEDES) == 1, environment.number(__N_SEP_BY_SPACE) != 0,
                    environment.number(__N_SIGN_POSN));
}

// The system has no long date; this is the usual one for the order.
String longDateFor(DateOrder order) {
  switch (order) {
    case DateOrder::DayMonthYear:
      return u"dddd, d mmmm yyyy";
    case DateOrder::YearMonthDay:
      return u"yyyy mmmm d, dddd";
    default:
      return u"dddd, mmmm d, yyyy";
  }
}

void fillTime(Locale& record, const EnvironmentLocale& environment) {
  record.shortDateFormat = patternFromConversions(environment.text(D_FMT));
  record.timeFormat = patternFromConversions(environment.text(T_FMT));
  record.dateOrder = dateOrderOf(record.shortDateFormat);
  record.longDateFormat = longDateFor(record.dateOrder);
  if (const String separator = separatorOf(record.shortDateFormat); !separator.empty())
    record.dateSeparator = separator;
  if (const String separator = separatorOf(record.timeFormat); !separator.empty())
    record.timeSeparator = separator;
  record.morning = environment.text(AM_STR);
  record.afternoon = environment.text(PM_STR);
  for (int i = 0; i < 12; ++i) {
    const auto at = static_cast<std::size_t>(i);
    record.monthNames[at] = environment.text(MON_1 + i);
    record.shortMonthNames[at] = environment.text(ABMON_1 + i);
  }
  for (int i = 0; i < 7; ++i) {
    const auto at = static_cast<std::size_t>(i);
    record.dayNames[at] = environment.text(DAY_1 + i);
    record.shortDayNames[at] = environment.text(ABDAY_1 + i);
  }
}

class LinuxLocale : public LocaleService {
 public:
  LinuxLocale() : codePage_(CodePage::system()) {}

  Locale locale() override {
    const EnvironmentLocale environment;
    Locale record;
    if (environment.hasLanguage(LC_NUMERIC)) fillNumbers(record, environment);
    if (environment.hasLanguage(LC_MONETARY)) fillCurrency(record, environment);
    if (environment.hasLanguage(LC_TIME)) fillTime(record, environment);
    record.codePage = codePage_.number();
    return record;
  }

  std::string narrow(StringView text) override { return codePage_.narrow(text); }
  String widen(std::string_view bytes) override { return codePage_.widen(bytes); }
  std::uint8_t narrowUnit(char16_t unit) override { return codePage_.narrow(unit); }

  int compareText(StringView left, StringView right) override {
    const int folded = compareFolded(left, right);
    if (folded == 0 || !collation_.hasLanguage(LC_COLLATE) || !collation_.speaksUtf8()) return folded;
    return strcoll_l(toUtf8(foldCase(left)).c_str(), toUtf8(foldCase(right)).c_str(), collation_.handle());
  }

 private:
  const CodePage& codePage_;
  const EnvironmentLocale collation_;
};

}  // namespace

LocaleService& LocaleService::system() {
  static auto& service = *new LinuxLocale;
  return service;
}

}  // namespace zelUtilities
