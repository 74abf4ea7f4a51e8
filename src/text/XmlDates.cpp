#include "text/XmlDates.h"

#include <cmath>
#include <cstdint>

#include "automation/Calendar.h"
#include "automation/Conversions.h"
#include "automation/Error.h"
#include "automation/Format.h"
#include "foundation/Handled.h"
#include "system/mTimeZone.h"
#include "text/DateDigits.h"

namespace zelUtilities {

template <>
const EnumInfo& enumInfo<ZEL_XMLDateRanges>() {
  static const EnumInfo info{u"ZEL_XMLDateRanges",
                             {{u"XML_DateRange_ManualDays", XML_DateRange_ManualDays},
                              {u"XML_DateRange_Today", XML_DateRange_Today},
                              {u"XML_DateRange_Yesterday", XML_DateRange_Yesterday},
                              {u"XML_DateRange_Last4Hours", XML_DateRange_Last4Hours},
                              {u"XML_DateRange_Last8Hours", XML_DateRange_Last8Hours},
                              {u"XML_DateRange_Last12Hours", XML_DateRange_Last12Hours},
                              {u"XML_DateRange_Last24Hours", XML_DateRange_Last24Hours},
                              {u"XML_DateRange_Last7Days", XML_DateRange_Last7Days},
                              {u"XML_DateRange_MonthToDate", XML_DateRange_MonthToDate},
                              {u"XML_DateRange_LastMonth", XML_DateRange_LastMonth},
                              {u"XML_DateRange_QuarterToDate", XML_DateRange_QuarterToDate},
                              {u"XML_DateRange_LastQuarter", XML_DateRange_LastQuarter},
                              {u"XML_DateRange_YearToDate", XML_DateRange_YearToDate},
                              {u"XML_DateRange_LastYear", XML_DateRange_LastYear}}};
  return info;
}

namespace mXML {

namespace {

constexpr int secondsPerHour = 3600;
constexpr int secondsPerDay = 86400;

Moment checkedMoment(double days) {
  if (!isDateInRange(days)) throw Error(ErrorNumber::Overflow);
  return momentOf(days);
}

DateDigits digitsOf(const Moment& moment, char16_t beforeTime) {
  DateDigits digits;
  digits.year(moment.year, u'-').part(moment.month, u'-').part(moment.day, beforeTime);
  return digits.part(moment.hour, u':').part(moment.minute, u':').part(moment.second);
}

String element(StringView margin, StringView tag, double days, double offsetHours) {
  if (days == 0) return {};
  const DateDigits digits = digitsOf(checkedMoment(days), u'T');
  String line(margin);
  line.append(u"<").append(tag).append(u">").append(digits.view()).append(u".000000");
  line.append(offsetHours < 0 ? u"-" : u"+").append(format(std::fabs(offsetHours), u"00")).append(u":00");
  return line.append(u"</").append(tag).append(u">\r\n");
}

struct Range {
  double start = 0;
  double end = 0;
};

// Whole days: from midnight to the last second before the day behind.
Range wholeDays(int first, int behind) { return {dateOf(first, 0), dateOf(behind - 1, secondsPerDay - 1)}; }

// The ranges that end at a moment or before it.
class Past {
 public:
  explicit Past(Date now) : end_(now.days), now_(checkedMoment(now.days)) {}

  Range day(int back) const { return wholeDays(now_.dayNumber - back, now_.dayNumber - back + 1); }
  Range hours(int count) const {
    const std::int64_t second =
        std::int64_t{now_.dayNumber} * secondsPerDay + now_.secondOfDay - count * secondsPerHour;
    const std::int64_t ofDay = (second % secondsPerDay + secondsPerDay) % secondsPerDay;
    return {dateOf(static_cast<int>((second - ofDay) / secondsPerDay), static_cast<int>(ofDay)), end_};
  }
  // Of periods of so many months, of which a year holds a whole number.
  Range toDate(int months) const { return {dateOf(firstDay(months, 0), 0), end_}; }
  Range last(int months) const { return wholeDays(firstDay(months, 1), firstDay(months, 0)); }

 private:
  int firstDay(int months, int back) const {
    const int month = now_.year * 12 + (now_.month - 1) / months * months - back * months;
    return dayNumberOf(month / 12, month % 12 + 1, 1);
  }

  double end_;
  Moment now_;
};

Range rangeOf(ZEL_XMLDateRanges type, Date now, const Variant& start, const Variant& end) {
  if (type == XML_DateRange_ManualDays) return {toDate(start), toDate(end)};
  const Past past(now);
  switch (type) {
    case XML_DateRange_Today:
      return past.day(0);
    case XML_DateRange_Yesterday:
      return past.day(1);
    case XML_DateRange_Last4Hours:
      return past.hours(4);
    case XML_DateRange_Last8Hours:
      return past.hours(8);
    case XML_DateRange_Last12Hours:
      return past.hours(12);
    case XML_DateRange_Last24Hours:
      return past.hours(24);
    case XML_DateRange_Last7Days:
      return past.hours(7 * 24);
    case XML_DateRange_MonthToDate:
      return past.toDate(1);
    case XML_DateRange_LastMonth:
      return past.last(1);
    case XML_DateRange_QuarterToDate:
      return past.toDate(3);
    case XML_DateRange_LastQuarter:
      return past.last(3);
    case XML_DateRange_YearToDate:
      return past.toDate(12);
    case XML_DateRange_LastYear:
      return past.last(12);
    default:
      throw Error(ErrorNumber::InvalidProcedureCall);
  }
}

}  // namespace

String ToXMLDate(const Variant& vValue) {
  return chained(u"mXML.ToXMLDate", [&]() -> String {
    if (!isDate(vValue)) return {};
    const Moment moment = checkedMoment(toDate(vValue));
    if (moment.year == 1899) return {};
    return String(digitsOf(moment, u' ').view().substr(0, moment.secondOfDay == 0 ? 10 : 19));
  });
}

String LocalDateAsXML(StringView sTag, Date tDate, StringView sMargin) {
  return chained(u"mXML.LocalDateAsXML", [&]() -> String {
    if (tDate.days == 0) return {};
    return element(sMargin, sTag, tDate.days, mTimeZone::TZGetLocalOffset());
  });
}

String DateRangeAsXML(double dUTCOffset, Date tCurTime, ZEL_XMLDateRanges eTypeOfRange,
                      const Variant& vStartTime, const Variant& vEndTime) {
  return chained(u"mXML.DateRangeAsXML", [&] {
    const Range range = rangeOf(eTypeOfRange, tCurTime, vStartTime, vEndTime);
    return element({}, u"StartTime", range.start, dUTCOffset) +
           element({}, u"EndTime", range.end, dUTCOffset);
  });
}

}  // namespace mXML

}  // namespace zelUtilities
