// Another locale for the time of one test.
#pragma once

#include "automation/Locale.h"

namespace zelUtilities {

inline Locale germanLocale() {
  Locale locale;
  locale.decimalSeparator = u",";
  locale.thousandsSeparator = u".";
  locale.listSeparator = u";";
  locale.currencySymbol = u"\u20AC";
  locale.positiveCurrencyOrder = 3;
  locale.negativeCurrencyOrder = 8;
  locale.dateSeparator = u".";
  locale.dateOrder = DateOrder::DayMonthYear;
  locale.shortDateFormat = u"dd.mm.yyyy";
  locale.longDateFormat = u"dddd, d. mmmm yyyy";
  locale.timeFormat = u"hh:nn:ss";
  locale.morning.clear();
  locale.afternoon.clear();
  locale.monthNames = {u"Januar", u"Februar", u"M\u00E4rz", u"April",   u"Mai",      u"Juni",
                       u"Juli",   u"August",  u"September", u"Oktober", u"November", u"Dezember"};
  locale.shortMonthNames = {u"Jan", u"Feb", u"M\u00E4r", u"Apr", u"Mai", u"Jun",
                            u"Jul", u"Aug", u"Sep",      u"Okt", u"Nov", u"Dez"};
  locale.dayNames = {u"Sonntag", u"Montag", u"Dienstag", u"Mittwoch", u"Donnerstag", u"Freitag", u"Samstag"};
  locale.shortDayNames = {u"So", u"Mo", u"Di", u"Mi", u"Do", u"Fr", u"Sa"};
  return locale;
}

class LocaleGuard {
 public:
  explicit LocaleGuard(Locale locale) : kept_(currentLocale()) { setCurrentLocale(std::move(locale)); }
  ~LocaleGuard() { setCurrentLocale(kept_); }
  LocaleGuard(const LocaleGuard&) = delete;
  LocaleGuard& operator=(const LocaleGuard&) = delete;

 private:
  Locale kept_;
};

}  // namespace zelUtilities
