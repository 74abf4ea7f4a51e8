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
  const std::pair<Variant, StringView> cases[] = {
      {Variant::date(at(2007, 3, 5, 50829)), u"2007-03-05 14:07:09"},
      {Variant::date(at(2007, 3, 5)), u"2007-03-05"},
      {Variant::date(at(100, 1, 1, 1)), u"0100-01-01 00:00:01"},
      {Variant::date(at(9999, 12, 31, 86399)), u"9999-12-31 23:59:59"},
      {u"2007-3-5 14:07", u"2007-03-05 14:07:00"},
      {Variant::date(0.5), u""},
      {Variant::date(at(1899, 5, 5)), u""},
      {39146.0, u""},
      {Variant::null(), u""},
      {Variant(), u""},
      {u"no date", u""}};
  for (const auto& [value, text] : cases) EXPECT_EQ(toUtf8(zel_ToXMLDate(value)), toUtf8(text));
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
  const auto range = [](int type, double now, const Variant& start = 0, const Variant& end = 0) {
    const std::string xml =
        toUtf8(zel_DateRangeAsXML(1.5, {now}, static_cast<ZEL_XMLDateRanges>(type), start, end));
    const std::string between = ".000000+02:00</StartTime>\r\n<EndTime>";
    EXPECT_EQ(xml.substr(0, 11) + xml.substr(30, between.size()), "<StartTime>" + between);
    EXPECT_EQ(xml.substr(30 + between.size() + 19), ".000000+02:00</EndTime>\r\n");
    return xml.substr(11, 19) + " " + xml.substr(30 + between.size(), 19);
  };
  const double now = at(2008, 2, 29, 3600);
  const std::string end = " 2008-02-29T01:00:00";
  const std::string expected[] = {"2008-02-29T00:00:00 2008-02-29T23:59:59",
                                  "2008-02-28T00:00:00 2008-02-28T23:59:59",
                                  "2008-02-28T21:00:00" + end,
                                  "2008-02-28T17:00:00" + end,
                                  "2008-02-28T13:00:00" + end,
                                  "2008-02-28T01:00:00" + end,
                                  "2008-02-22T01:00:00" + end,
                                  "2008-02-01T00:00:00" + end,
                                  "2008-01-01T00:00:00 2008-01-31T23:59:59",
                                  "2008-01-01T00:00:00" + end,
                                  "2007-10-01T00:00:00 2007-12-31T23:59:59",
                                  "2008-01-01T00:00:00" + end,
                                  "2007-01-01T00:00:00 2007-12-31T23:59:59"};
  for (int type = 1; type <= 13; ++type) EXPECT_EQ(range(type, now), expected[type - 1]) << type;
  EXPECT_EQ(range(XML_DateRange_Last4Hours, at(1899, 12, 29, 3600)),
            "1899-12-28T21:00:00 1899-12-29T01:00:00");
  EXPECT_EQ(range(0, 0, u"3/5/2007", at(2007, 3, 6, 60)), "2007-03-05T00:00:00 2007-03-06T00:01:00");
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
