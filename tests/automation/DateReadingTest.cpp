#include "automation/DateReading.h"

#include <gtest/gtest.h>

#include "automation/Calendar.h"
#include "automation/Conversions.h"
#include "automation/LocaleGuard.h"
#include "automation/Results.h"

namespace zelUtilities {
namespace {

// What the texts that "|" divides read as in the locale.
std::string read(StringView texts, const Locale& locale = {}) {
  const auto dateText = [&](const Variant& text) {
    const std::optional<double> days = readDate(text.text(), locale);
    return days ? toText(Variant::date(*days)) : String(u"refused");
  };
  return results(dateText, texts);
}
std::string readGerman(StringView texts) { return read(texts, germanLocale()); }

TEST(DateReading, TakesNumbersInTheLocalesOrderAndThenInOthersAndSplitsTwoDigitYearsAtThirty) {
  EXPECT_EQ(read(u"1/2/1970|1-2-1970|1 2 1970| 1 / 2 / 1970 |13-1-1970|1970-1-13"),
            "1/2/1970|1/2/1970|1/2/1970|1/2/1970|1/13/1970|1/13/1970");
  EXPECT_EQ(read(u"14 2 3|2 14 3|2/30|3/1999|1 2 29|1 2 30|1 2 99|1 2 0"),
            "2/3/2014|2/14/2003|2/1/1930|3/1/1999|1/2/2029|1/2/1930|1/2/1999|1/2/2000");
  EXPECT_EQ(readGerman(u"02.01.1970|2/1/1970|02.13.1970|2173-10-14|5. M\u00E4rz 2007|5.3.07 14:07"),
            "1/2/1970|1/2/1970|2/13/1970|10/14/2173|3/5/2007|3/5/2007 2:07:00 PM");
}

TEST(DateReading, TakesMonthNamesAndCompletesADayByThePresentYear) {
  EXPECT_EQ(read(u"2 January, 1970|jan 2 1970|2-Jan-1970|1970 January 2|2Jan70"),
            "1/2/1970|1/2/1970|1/2/1970|1/2/1970|1/2/1970");
  EXPECT_EQ(read(u"March 2007|Jan 35|35/Jan"), "3/1/2007|1/1/1935|1/1/1935");
  const std::string day = "1/2/" + std::to_string(currentYear());
  EXPECT_EQ(read(u"1 2|Jan 2|2 Jan|3 am 1 2"), day + "|" + day + "|" + day + "|" + day + " 3:00:00 AM");
  EXPECT_EQ(readGerman(u"2.1"), day);
}

TEST(DateReading, TakesTimesBeforeOrAfterTheDateInTheFullRange) {
  EXPECT_EQ(read(u"1 am|2:05|2.5|1.5.2|00:00 pm|12:59 A|13:00 AM"),
            "1:00:00 AM|2:05:00 AM|2:05:00 AM|1:05:02 AM|12:00:00 PM|12:59:00 AM|1:00:00 PM");
  EXPECT_EQ(read(u"14:07:09 3/5/2007|2007-03-05 14:07:09|March 5, 2007 2PM|1.2 3 4 5"),
            "3/5/2007 2:07:09 PM|3/5/2007 2:07:09 PM|3/5/2007 2:00:00 PM|3/4/2005 1:02:00 AM");
  EXPECT_EQ(read(u"12/29/1899 6:00|1/1/100|12/31/9999 23:59:59"),
            "12/29/1899 6:00:00 AM|1/1/100|12/31/9999 11:59:59 PM");
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
