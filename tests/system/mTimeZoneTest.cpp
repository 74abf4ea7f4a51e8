#include "system/mTimeZone.h"

#include <gtest/gtest.h>

#include "automation/Calendar.h"
#include "automation/Conversions.h"
#include "support/RaisedError.h"
#include "support/Reports.h"

namespace zelUtilities {
namespace {

// New York: the first Sunday of November, the second of March, both at two o'clock.
class MTimeZone : public testing::Test, public TimeZone {
 protected:
  std::uint32_t information(std::optional<int> year, TimeZoneRecord& record) override {
    askedYear = year.value_or(0);
    record = zone;
    return state;
  }
  std::string on(const Variant& date = Variant::missing()) {
    const double hours = mTimeZone::TZGetLocalOffset(date);
    return toUtf8(mTimeZone::TZGetLocalName(date) + u" " + toText(hours));
  }

  TimeZoneRecord zone{300, u"Eastern", {0, 11, 0, 1, 2}, 0, String(u"Summer\0\0", 8), {0, 3, 0, 2, 2}, -60};
  std::uint32_t state = TimeZoneState::Daylight;
  int askedYear = -1;
  Replaced<TimeZone> inForce{*this};
  Reports reports{"mTimeZone."};
};

TEST_F(MTimeZone, ThePresentIsAsTheSystemSaysAndADateAsTheRulesSay) {
  EXPECT_EQ(on(), "Summer -4");
  EXPECT_EQ(askedYear, 0);
  state = TimeZoneState::Standard;
  EXPECT_EQ(on(), "Eastern -5");
  for (const StringView summer : {u"3/11/2007 2:00:00", u"11/4/2007 1:59:59", u"7/4/2010"})
    EXPECT_EQ(on(summer), "Summer -4");
  EXPECT_EQ(askedYear, 2010);
  for (const StringView winter : {u"1/15/2007", u"3/11/2007 1:59:59", u"11/4/2007 2:00:00"})
    EXPECT_EQ(on(winter), "Eastern -5");
  std::swap(zone.standardDate, zone.daylightDate);  // the south: always standard time, on purpose
  zone.standardBias = 30;
  for (const StringView date : {u"1/4/2010", u"7/4/2010"}) EXPECT_EQ(on(date), "Eastern -5.5");
  zone.daylightDate = {};  // nothing is looked for in an empty rule
  EXPECT_EQ(on(u"7/4/2010"), "Eastern -5.5");
  EXPECT_EQ(reports.taken(), "");
}

TEST_F(MTimeZone, ARuleNamesTheNthWeekdayOfAMonthTheLastOneOrADateOfItsOwn) {
  const std::tuple<TimeRecord, StringView, StringView> rules[] = {
      {{0, 10, 0, 5, 3}, u"5/1/2006", u"10/29/2006 3:00:00"},  // five Sundays
      {{0, 10, 0, 5, 3}, u"12/31/2007", u"10/28/2007 3:00:00"},
      {{0, 2, 6, 5, 0}, u"1/1/2020", u"2/29/2020"},
      {{0, 3, 0, 1, 0}, u"1/1/2026", u"3/1/2026"},  // the month begins with one
      {{0, 3, 0, 2, 2, 30, 15}, u"1/1/2007", u"3/11/2007 2:30:15"},
      {{2010, 10, 3, 9, 1}, u"1/1/1999", u"10/9/2010 1:00:00"}};
  for (const auto& [rule, date, expected] : rules)
    EXPECT_EQ(mTimeZone::TimeZoneDate(rule, {toDate(date)}).days, toDate(expected));
  EXPECT_EQ(reports.taken(), "");
  for (const TimeRecord& rule :
       {TimeRecord{0, 13, 0, 1}, {0, 3, 7, 1}, {0, 3, 0, 0}, {0, 3, 0, 6}, {2007, 2, 0, 29}}) {
    EXPECT_EQ(mTimeZone::TimeZoneDate(rule, {toDate(u"1/1/2007")}).days, 0);
    EXPECT_EQ(reports.taken(), "TimeZoneDate|5 ");
  }
}

TEST_F(MTimeZone, FailuresAreLoggedButASystemWithoutAnAnswerIsRaised) {
  EXPECT_EQ(mTimeZone::TZGetLocalName(u"no date"), u"");
  EXPECT_EQ(mTimeZone::TZGetLocalOffset(Variant::null()), 0);
  mTimeZone::TZGetLocalOffset(Variant::date(1e9));
  EXPECT_EQ(reports.taken(), "TZGetLocalName|13 TZGetLocalOffset|94 LoadTimeZoneInfo|6 ");
  state = TimeZoneState::Invalid;
  EXPECT_EQ(raisedError([] { mTimeZone::TZGetLocalName(); }),
            "-2147220991|mTimeZone.TZGetLocalName::mTimeZone.LoadTimeZoneInfo|"
            "GetTimeZoneInformation returned an invalid response");
  EXPECT_EQ(reports.taken(), "");
}

}  // namespace
}  // namespace zelUtilities
