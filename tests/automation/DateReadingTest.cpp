#include "automation/DateReading.h"

#include <gtest/gtest.h>

#include <cmath>

#include "automation/Calendar.h"
#include "automation/Conversions.h"
#include "automation/LocaleGuard.h"
#include "automation/Results.h"

namespace zelUtilities {
namespace {

constexpr double hour = 1 / 24.0;
constexpr double minute = hour / 60;
constexpr double second = minute / 60;

// Texts divided by "|" that all read as the same.
struct Case {
  StringView texts;
  double days;
};

void expectDates(const Locale& locale, std::initializer_list<Case> cases) {
  for (const auto& [texts, days] : cases)
    for (const StringView text : partsOf(texts))
      EXPECT_NEAR(readDate(text, locale).value_or(HUGE_VAL), days, 1e-9) << toUtf8(text);
}
// Macros, so that several rows stand on a line.
#define EXPECT_ENGLISH(...) expectDates(Locale(), {__VA_ARGS__})
#define EXPECT_GERMAN(...) expectDates(germanLocale(), {__VA_ARGS__})

TEST(DateReading, TakesNumbersInTheLocalesOrderAndThenInOthersAndSplitsTwoDigitYearsAtThirty) {
  EXPECT_ENGLISH({u"1/2/1970|1-2-1970|1 2 1970| 1 / 2 / 1970 ", 25570}, {u"13-1-1970|1970-1-13", 25581},
                 {u"14 2 3", 41673}, {u"2 14 3", 37666}, {u"2/30", 10990}, {u"3/1999", 36220},
                 {u"1 2 29", 47120}, {u"1 2 30", 10960}, {u"1 2 99", 36162}, {u"1 2 0", 36527});
  EXPECT_GERMAN({u"02.01.1970|2/1/1970", 25570}, {u"02.13.1970", 25612}, {u"2173-10-14", 100000},
                {u"5. M\u00E4rz 2007", 39146}, {u"5.3.07 14:07", 39146 + 14 * hour + 7 * minute});
}

TEST(DateReading, TakesMonthNamesAndCompletesADayByThePresentYear) {
  const double day = dayNumberOf(currentYear(), 1, 2);
  EXPECT_ENGLISH({u"2 January, 1970|jan 2 1970|2-Jan-1970|1970 January 2|2Jan70", 25570},
                 {u"March 2007", 39142}, {u"Jan 35|35/Jan", 12785}, {u"1 2|Jan 2|2 Jan", day},
                 {u"3 am 1 2", day + 3 * hour});
  EXPECT_GERMAN({u"2.1", day});
}

TEST(DateReading, TakesTimesBeforeOrAfterTheDateInTheFullRange) {
  const double moment = 39146 + 14 * hour + 7 * minute + 9 * second;
  EXPECT_ENGLISH({u"1 am", hour}, {u"2:05|2.5", 2 * hour + 5 * minute}, {u"00:00 pm", 0.5},
                 {u"1.5.2", hour + 5 * minute + 2 * second}, {u"12:59 A", 59 * minute},
                 {u"13:00 AM", 13 * hour}, {u"14:07:09 3/5/2007|2007-03-05 14:07:09", moment},
                 {u"March 5, 2007 2PM", 39146 + 14 * hour}, {u"1.2 3 4 5", 38415 + hour + 2 * minute},
                 {u"12/29/1899 6:00", -1.25}, {u"1/1/100", -657434},
                 {u"12/31/9999 23:59:59", 2958466 - second});
}

TEST(DateReading, RefusesEverythingElse) {
  for (const StringView text : partsOf(
           u"|True|0|39146|0.|.0|-1.1|1.1-|1;2;3|0.60|24:00|0:60|1 2 am|1 am 2|AM 1|1 am pm|1.5 2|2 32 3|"
           u"1 2 am 3|1 2 3 4|1.2.3.4|1.2 3 4 am|1 2 3.4 5|1:2:3:4|2/30/2007|2/29/1900|1/1/10000|1/1/0099|"
           u"32 49|3//5/2007|/3/5/2007|3/5/2007/|Jan|Jan Feb|Jan 1 2 3|Ma 5 2007|2007-03-05T14:07:09|"
           u"20070305|Monday, March 5, 2007|1 2 3 4 5 6 7 8 9|02.01.1970"))
    EXPECT_FALSE(readDate(text, Locale())) << toUtf8(text);
}

TEST(DateTest, TakesDatesAndTextsThatReadAsOne) {
  EXPECT_EQ(results(isDate, Variant::date(0), u"3/5/2007|39146", 39146, Variant(), nullptr), "1|1|0|0|0|0");
}

TEST(Calendar, WritesBackEveryDateItReads) {
  for (int day = -657434; day <= 2958465; day += 97) {
    const Moment moment = momentOf(day);
    ASSERT_EQ(dayNumberOf(moment.year, moment.month, moment.day), day);
    const double evening = day + (day < 0 ? -0.75 : 0.75);
    ASSERT_EQ(toDate(Variant(toText(Variant::date(evening)))), evening);
  }
}

TEST(DateReading, ReadsIsoDatesFastAndAlike) {
  Locale colons;
  colons.dateSeparator = u":";
  // With a blank behind it the text is read the long way.
  for (const StringView text :
       partsOf(u"2007-03-05|2007-02-29|0099-01-01|0100-01-01|9999-12-31 23:59:59|1899-12-29 06:00:00|"
               u"2007-03-05 24:00:00|2007-03-05 23:60:00|2007-03-05 23:59:60|2007-03-05T14:07:09|2007-1a-05|"
               u"2007-03-0 "))
    for (const Locale& locale : {Locale(), germanLocale(), colons})
      EXPECT_EQ(readDate(text, locale), readDate(String(text) + u" ", locale)) << toUtf8(text);
}

}  // namespace
}  // namespace zelUtilities
