#include "automation/DateReading.h"

#include <gtest/gtest.h>

#include "automation/Calendar.h"
#include "automation/Conversions.h"
#include "automation/LocaleGuard.h"

namespace zelUtilities {
namespace {

struct Case {
  StringView text;
  double days;
};

constexpr double hour = 1 / 24.0;
constexpr double minute = hour / 60;
constexpr double second = minute / 60;

void expectDates(const Locale& locale, std::initializer_list<Case> cases) {
  for (const auto& [text, days] : cases) {
    const std::optional<double> read = readDate(text, locale);
    ASSERT_TRUE(read) << toUtf8(text);
    EXPECT_NEAR(*read, days, 1e-9) << toUtf8(text);
  }
}

TEST(DateReading, TakesNumbersInTheLocalesOrderAndThenInOthers) {
  expectDates(Locale(), {{u"1/2/1970", 25570},
                         {u"1-2-1970", 25570},
                         {u"1 2 1970", 25570},
                         {u" 1 / 2 / 1970 ", 25570},
                         {u"13-1-1970", 25581},
                         {u"1970-1-13", 25581},
                         {u"14 2 3", 41673},
                         {u"2 14 3", 37666},
                         {u"2/30", 10990},
                         {u"3/1999", 36220}});
  expectDates(germanLocale(), {{u"02.01.1970", 25570},
                               {u"02.13.1970", 25612},
                               {u"2/1/1970", 25570},
                               {u"2173-10-14", 100000},
                               {u"5. M\u00E4rz 2007", 39146},
                               {u"5.3.07 14:07", 39146 + 14 * hour + 7 * minute}});
}

TEST(DateReading, SplitsTwoDigitYearsAtThirty) {
  expectDates(Locale(), {{u"1 2 29", 47120}, {u"1 2 30", 10960}, {u"1 2 99", 36162}, {u"1 2 0", 36527}});
}

TEST(DateReading, TakesMonthNames) {
  expectDates(Locale(), {{u"2 January, 1970", 25570},
                         {u"jan 2 1970", 25570},
                         {u"2-Jan-1970", 25570},
                         {u"1970 January 2", 25570},
                         {u"2Jan70", 25570},
                         {u"March 2007", 39142},
                         {u"Jan 35", 12785},
                         {u"35/Jan", 12785}});
}

TEST(DateReading, CompletesADayByThePresentYear) {
  const double day = dayNumberOf(currentYear(), 1, 2);
  expectDates(Locale(), {{u"1 2", day}, {u"Jan 2", day}, {u"2 Jan", day}, {u"3 am 1 2", day + 3 * hour}});
  expectDates(germanLocale(), {{u"2.1", day}});
}

TEST(DateReading, TakesTimesBeforeOrAfterTheDate) {
  expectDates(Locale(), {{u"1 am", hour},
                         {u"2:05", 2 * hour + 5 * minute},
                         {u"2.5", 2 * hour + 5 * minute},
                         {u"1.5.2", hour + 5 * minute + 2 * second},
                         {u"00:00 pm", 0.5},
                         {u"12:59 A", 59 * minute},
                         {u"13:00 AM", 13 * hour},
                         {u"14:07:09 3/5/2007", 39146 + 14 * hour + 7 * minute + 9 * second},
                         {u"2007-03-05 14:07:09", 39146 + 14 * hour + 7 * minute + 9 * second},
                         {u"March 5, 2007 2PM", 39146 + 14 * hour},
                         {u"1.2 3 4 5", 38415 + hour + 2 * minute},
                         {u"12/29/1899 6:00", -1.25}});
}

TEST(DateReading, RefusesEverythingElse) {
  for (const StringView text : {u"",
                                u"True",
                                u"0",
                                u"1",
                                u"39146",
                                u"0.",
                                u".0",
                                u"-1.1",
                                u"1.1-",
                                u"1;2;3",
                                u"0.60",
                                u"24:00",
                                u"0:60",
                                u"1 2 am",
                                u"1 am 2",
                                u"AM 1",
                                u"1 am pm",
                                u"1.5 2",
                                u"2 32 3",
                                u"1 2 am 3",
                                u"1 2 3 4",
                                u"1.2.3.4",
                                u"1.2 3 4 am",
                                u"1 2 3.4 5",
                                u"1 2.3 4",
                                u"1:2:3:4",
                                u"2/30/2007",
                                u"2/29/1900",
                                u"1/1/10000",
                                u"1/1/0099",
                                u"32 49",
                                u"3//5/2007",
                                u"/3/5/2007",
                                u"3/5/2007/",
                                u"Jan",
                                u"Jan Feb",
                                u"Jan 1 2 3",
                                u"Ma 5 2007",
                                u"2007-03-05T14:07:09",
                                u"20070305",
                                u"Monday, March 5, 2007",
                                u"1.2.3.4.5.6",
                                u"1 2 3 4 5 6 7 8 9"})
    EXPECT_FALSE(readDate(text, Locale())) << toUtf8(text);
  EXPECT_FALSE(readDate(u"02.01.1970", Locale()));
}

TEST(DateReading, KeepsTheFullRange) {
  expectDates(Locale(), {{u"1/1/100", -657434}, {u"12/31/9999 23:59:59", 2958466 - second}});
}

TEST(DateTest, TakesDatesAndTextsThatReadAsOne) {
  EXPECT_TRUE(isDate(Variant::date(0)));
  EXPECT_TRUE(isDate(u"3/5/2007"));
  EXPECT_FALSE(isDate(u"39146"));
  EXPECT_FALSE(isDate(39146));
  EXPECT_FALSE(isDate(Variant()));
  EXPECT_FALSE(isDate(nullptr));
}

TEST(Calendar, WritesBackEveryDateItReads) {
  for (int day = -657434; day <= 2958465; day += 97) {
    const Moment moment = momentOf(day);
    ASSERT_EQ(dayNumberOf(moment.year, moment.month, moment.day), day);
    ASSERT_EQ(toDate(Variant(toText(Variant::date(day + (day < 0 ? -0.75 : 0.75))))),
              day + (day < 0 ? -0.75 : 0.75));
  }
}

}  // namespace
}  // namespace zelUtilities
