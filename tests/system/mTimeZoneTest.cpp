#include "system/mTimeZone.h"

#include <gmock/gmock.h>

#include "automation/Calendar.h"
#include "automation/Conversions.h"
#include "automation/Error.h"
#include "foundation/ErrorWatch.h"
#include "support/RaisedError.h"

namespace zelUtilities {
namespace {

using testing::ElementsAre;

Date day(int year, int month, int day, int seconds = 0) {
  return {dateOf(dayNumberOf(year, month, day), seconds)};
}

// New York: the first Sunday of November, the second of March, both at two o'clock.
class MTimeZone : public testing::Test, public TimeZone {
 protected:
  std::uint32_t information(std::optional<int> year, TimeZoneRecord& record) override {
    askedYears.push_back(year.value_or(0));
    record = zone;
    return state;
  }
  std::string on(const Variant& date = Variant::missing()) {
    const double hours = mTimeZone::TZGetLocalOffset(date);
    return toUtf8(mTimeZone::TZGetLocalName(date) + u" " + toText(hours));
  }

  TimeZoneRecord zone{300, u"Eastern", {0, 11, 0, 1, 2}, 0, String(u"Summer\0\0", 8), {0, 3, 0, 2, 2}, -60};
  std::uint32_t state = TimeZoneState::Standard;
  std::vector<int> askedYears;
  std::vector<std::string> reports;
  Replaced<TimeZone> inForce{*this};
  ErrorWatch watch{[this](const ErrorReport& report) {
    reports.push_back(toUtf8(report.source) + "|" + std::to_string(report.number));
  }};
};

TEST_F(MTimeZone, ThePresentIsAsTheSystemSaysAndADateAsTheRulesSay) {
  EXPECT_EQ(on(), "Eastern -5");
  state = TimeZoneState::Daylight;
  EXPECT_EQ(on(), "Summer -4");
  EXPECT_EQ(on(Variant::date(day(2007, 1, 15).days)), "Eastern -5");
  EXPECT_EQ(on(Variant::date(day(2007, 3, 11, 7199).days)), "Eastern -5");
  EXPECT_EQ(on(Variant::date(day(2007, 3, 11, 7200).days)), "Summer -4");
  EXPECT_EQ(on(Variant::date(day(2007, 11, 4, 7199).days)), "Summer -4");
  EXPECT_EQ(on(Variant::date(day(2007, 11, 4, 7200).days)), "Eastern -5");
  EXPECT_EQ(on(u"7/4/2010"), "Summer -4");
  std::swap(zone.standardDate, zone.daylightDate);  // the south: always standard time, on purpose
  EXPECT_EQ(on(u"1/4/2010"), "Eastern -5");
  EXPECT_EQ(on(u"7/4/2010"), "Eastern -5");
  zone.standardBias = 30;
  EXPECT_EQ(on(u"7/4/2010"), "Eastern -5.5");
  EXPECT_EQ(askedYears.front(), 0);
  EXPECT_EQ(askedYears.back(), 2010);
  zone.daylightDate = {};  // nothing is looked for in an empty rule
  EXPECT_EQ(on(u"7/4/2010"), "Eastern -5.5");
  EXPECT_TRUE(reports.empty());
}

TEST_F(MTimeZone, ARuleNamesTheNthWeekdayOfAMonthTheLastOneOrADateOfItsOwn) {
  const std::tuple<TimeRecord, Date, Date> rules[] = {
      {{0, 10, 0, 5, 3}, day(2006, 5, 1), day(2006, 10, 29, 10800)},  // five Sundays
      {{0, 10, 0, 5, 3}, day(2007, 12, 31), day(2007, 10, 28, 10800)},
      {{0, 2, 6, 5, 0}, day(2020, 1, 1), day(2020, 2, 29)},
      {{0, 3, 0, 1, 0}, day(2026, 1, 1), day(2026, 3, 1)},  // the month begins with one
      {{0, 3, 0, 2, 2, 30, 15}, day(2007, 1, 1), day(2007, 3, 11, 9015)},
      {{0, 3, 0, 4, 0}, day(2007, 1, 1), day(2007, 3, 25)},
      {{2010, 10, 3, 9, 1}, day(1999, 1, 1), day(2010, 10, 9, 3600)}};
  for (const auto& [rule, date, expected] : rules)
    EXPECT_EQ(mTimeZone::TimeZoneDate(rule, date).days, expected.days);
  EXPECT_TRUE(reports.empty());
  for (const TimeRecord& rule :
       {TimeRecord{0, 13, 0, 1}, {0, 3, 7, 1}, {0, 3, 0, 0}, {0, 3, 0, 6}, {2007, 2, 0, 29}})
    EXPECT_EQ(mTimeZone::TimeZoneDate(rule, day(2007, 1, 1)).days, 0);
  EXPECT_EQ(reports, std::vector<std::string>(5, "mTimeZone.TimeZoneDate|5"));
}

TEST_F(MTimeZone, FailuresAreLoggedButASystemWithoutAnAnswerIsRaised) {
  EXPECT_EQ(mTimeZone::TZGetLocalName(u"no date"), u"");
  EXPECT_EQ(mTimeZone::TZGetLocalOffset(Variant::null()), 0);
  mTimeZone::TZGetLocalOffset(Variant::date(1e9));
  EXPECT_THAT(reports, ElementsAre("mTimeZone.TZGetLocalName|13", "mTimeZone.TZGetLocalOffset|94",
                                   "mTimeZone.LoadTimeZoneInfo|6"));
  state = TimeZoneState::Invalid;
  EXPECT_EQ(raisedError([] { mTimeZone::TZGetLocalName(); }),
            "-2147220991|mTimeZone.TZGetLocalName::mTimeZone.LoadTimeZoneInfo|"
            "GetTimeZoneInformation returned an invalid response");
  EXPECT_EQ(reports.size(), 3U);
}

}  // namespace
}  // namespace zelUtilities
