#include "text/XmlDates.h"

#include <gtest/gtest.h>

#include "automation/Calendar.h"
#include "automation/LocaleGuard.h"
#include "platform/TimeZone.h"
#include "support/RaisedError.h"
#include "text/zelXML.h"

namespace zelUtilities {
namespace {

double at(int year, int month, int day, int seconds = 0) {
  return dateOf(dayNumberOf(year, month, day), seconds);
}

TEST(XmlDates, AreWrittenYearFirstInEveryLocale) {
  Locale finnish = germanLocale();
  finnish.timeSeparator = u".";
  const LocaleGuard guard(finnish);
  const auto expect = [](const Variant& value, StringView text) {
    EXPECT_EQ(toUtf8(zel_ToXMLDate(value)), toUtf8(text));
  };
  expect(Variant::date(at(2007, 3, 5, 50829)), u"2007-03-05 14:07:09");
  expect(Variant::date(at(2007, 3, 5)), u"2007-03-05");
  expect(Variant::date(at(100, 1, 1, 1)), u"0100-01-01 00:00:01");
  expect(Variant::date(at(9999, 12, 31, 86399)), u"9999-12-31 23:59:59");
  expect(u"2007-3-5 14:07", u"2007-03-05 14:07:00");
  for (const Variant& none : {Variant::date(0.5), Variant::date(at(1899, 5, 5)), Variant(39146.0),
                              Variant::null(), Variant(), Variant(u"no date")})
    expect(none, u"");
  for (const double beyond : {-657435.5, 2958466.0, 1e300})
    EXPECT_EQ(raisedError([&] { zel_ToXMLDate(Variant::date(beyond)); }), "6|mXML.ToXMLDate::|Overflow");
}

struct FixedZone : TimeZone {
  std::uint32_t information(std::optional<int>, TimeZoneRecord& record) override {
    record = {};
    record.bias = bias;
    return TimeZoneState::Standard;
  }
  std::int32_t bias = 0;
};

TEST(XmlDates, TheLocalOffsetIsWrittenInWholeHours) {
  FixedZone zone;
  const Replaced<TimeZone> inForce(zone);
  const std::pair<std::int32_t, std::string> offsets[] = {{300, "-05"}, {0, "+00"},  {-330, "+06"},
                                                          {210, "-04"}, {15, "-00"}, {-840, "+14"}};
  for (const auto& [bias, offset] : offsets) {
    zone.bias = bias;
    EXPECT_EQ(toUtf8(zel_LocalDateAsXML(u"T", {at(2007, 3, 5, 50829)}, u" ")),
              " <T>2007-03-05T14:07:09.000000" + offset + ":00</T>\r\n");
  }
  EXPECT_EQ(zel_LocalDateAsXML(u"T", {}), u"");
}

TEST(XmlDates, ARangeIsItsStartAndItsEnd) {
  const auto expect = [](int type, double now, const std::string& start, const std::string& end) {
    const Variant ends[] = {u"3/5/2007", at(2007, 3, 6, 60)};  // for a manual range
    EXPECT_EQ(toUtf8(zel_DateRangeAsXML(1.5, {now}, static_cast<ZEL_XMLDateRanges>(type), ends[0], ends[1])),
              "<StartTime>" + start + ".000000+02:00</StartTime>\r\n<EndTime>" + end +
                  ".000000+02:00</EndTime>\r\n")
        << type;
  };
  const double now = at(2008, 2, 29, 3600);
  const std::string moment = "2008-02-29T01:00:00";
  expect(0, now, "2007-03-05T00:00:00", "2007-03-06T00:01:00");
  expect(1, now, "2008-02-29T00:00:00", "2008-02-29T23:59:59");
  expect(2, now, "2008-02-28T00:00:00", "2008-02-28T23:59:59");
  expect(3, now, "2008-02-28T21:00:00", moment);
  expect(4, now, "2008-02-28T17:00:00", moment);
  expect(5, now, "2008-02-28T13:00:00", moment);
  expect(6, now, "2008-02-28T01:00:00", moment);
  expect(7, now, "2008-02-22T01:00:00", moment);
  expect(8, now, "2008-02-01T00:00:00", moment);
  expect(9, now, "2008-01-01T00:00:00", "2008-01-31T23:59:59");
  expect(10, now, "2008-01-01T00:00:00", moment);
  expect(11, now, "2007-10-01T00:00:00", "2007-12-31T23:59:59");
  expect(12, now, "2008-01-01T00:00:00", moment);
  expect(13, now, "2007-01-01T00:00:00", "2007-12-31T23:59:59");
  expect(3, at(1899, 12, 29, 3600), "1899-12-28T21:00:00", "1899-12-29T01:00:00");
}

TEST(XmlDates, ARangeThatCannotBeIsRefusedAndTheZeroDateLeftOut) {
  EXPECT_EQ(zel_DateRangeAsXML(0, {}, XML_DateRange_ManualDays), u"");
  EXPECT_EQ(zel_DateRangeAsXML(-5, {}, XML_DateRange_ManualDays, 0, at(2007, 3, 5)),
            u"<EndTime>2007-03-05T00:00:00.000000-05:00</EndTime>\r\n");
  const auto raised = [](int type, double now, const Variant& start = 0) {
    return raisedError([&] { zel_DateRangeAsXML(0, {now}, static_cast<ZEL_XMLDateRanges>(type), start); });
  };
  EXPECT_EQ(raised(14, 1), "5|mXML.DateRangeAsXML::|Invalid procedure call or argument");
  EXPECT_EQ(raised(XML_DateRange_LastYear, at(100, 1, 1)), "6|mXML.DateRangeAsXML::|Overflow");
  EXPECT_EQ(raised(XML_DateRange_Today, 1e300), "6|mXML.DateRangeAsXML::|Overflow");
  EXPECT_EQ(raised(XML_DateRange_ManualDays, 1, u"never"), "13|mXML.DateRangeAsXML::|Type mismatch");
}

}  // namespace
}  // namespace zelUtilities
