// Locale: what conversions and formatting need to know of the user's conventions.
//
// The record starts as US English; the platform replaces it with the user's own. Tests install
// a record of their own and put the old one back.
#pragma once

#include <array>
#include <cstdint>

#include "automation/String.h"

namespace zelUtilities {

enum class DateOrder : std::uint8_t { MonthDayYear, DayMonthYear, YearMonthDay };

struct Locale {
  String decimalSeparator = u".";
  String thousandsSeparator = u",";
  String listSeparator = u",";
  String currencySymbol = u"$";
  String positiveSign;  // empty: none is written
  String negativeSign = u"-";
  int currencyDigits = 2;
  // How currency is laid out, numbered as the system's locale record does: positive 0 $1, 1 1$,
  // 2 $ 1, 3 1 $; negative 0 ($1), 1 -$1, 2 $-1, 3 $1-, 4 (1$), 5 -1$, 6 1-$, 7 1$-, 8 -1 $,
  // 9 -$ 1, 10 1 $-, 11 $ 1-, 12 $ -1, 13 1- $, 14 ($ 1), 15 (1 $).
  int positiveCurrencyOrder = 0;
  int negativeCurrencyOrder = 0;
  String dateSeparator = u"/";
  String timeSeparator = u":";
  DateOrder dateOrder = DateOrder::MonthDayYear;
  String shortDateFormat = u"m/d/yyyy";
  String longDateFormat = u"dddd, mmmm d, yyyy";
  String timeFormat = u"h:nn:ss AM/PM";
  String morning = u"AM";
  String afternoon = u"PM";
  std::array<String, 12> monthNames = {u"January",   u"February", u"March",    u"April",
                                       u"May",       u"June",     u"July",     u"August",
                                       u"September", u"October",  u"November", u"December"};
  std::array<String, 12> shortMonthNames = {u"Jan", u"Feb", u"Mar", u"Apr", u"May", u"Jun",
                                            u"Jul", u"Aug", u"Sep", u"Oct", u"Nov", u"Dec"};
  // From Sunday on.
  std::array<String, 7> dayNames = {u"Sunday",   u"Monday", u"Tuesday", u"Wednesday",
                                    u"Thursday", u"Friday", u"Saturday"};
  std::array<String, 7> shortDayNames = {u"Sun", u"Mon", u"Tue", u"Wed", u"Thu", u"Fri", u"Sat"};
  std::uint32_t codePage = 1252;  // of narrow texts
};

// The record in force in this process. Set it before other threads use the library.
const Locale& currentLocale();
void setCurrentLocale(Locale locale);

}  // namespace zelUtilities
