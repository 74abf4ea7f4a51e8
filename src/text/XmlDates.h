// Dates in XML text: years 100 to 9999, by the day or to the second, the same in every locale.
//
// A failure is raised under "mXML.<routine>::<its own source>" and not logged; a date out of range is 6.
#pragma once

#include "automation/ClassInfo.h"
#include "automation/Date.h"
#include "automation/String.h"
#include "automation/Variant.h"

namespace zelUtilities {

// A range of time relative to a moment. Those that end "to date" and the last so many hours or days end at
// that moment; all others are whole days, from midnight to a second before midnight.
enum ZEL_XMLDateRanges : std::int32_t {
  XML_DateRange_ManualDays = 0,  // as the caller says
  XML_DateRange_Today = 1,
  XML_DateRange_Yesterday = 2,
  XML_DateRange_Last4Hours = 3,
  XML_DateRange_Last8Hours = 4,
  XML_DateRange_Last12Hours = 5,
  XML_DateRange_Last24Hours = 6,
  XML_DateRange_Last7Days = 7,
  XML_DateRange_MonthToDate = 8,
  XML_DateRange_LastMonth = 9,
  XML_DateRange_QuarterToDate = 10,
  XML_DateRange_LastQuarter = 11,
  XML_DateRange_YearToDate = 12,
  XML_DateRange_LastYear = 13
};

template <>
const EnumInfo& enumInfo<ZEL_XMLDateRanges>();

namespace mXML {

// "2007-03-05 14:07:09", or "2007-03-05" at midnight. "" for the year 1899, which is that of a mere time and
// of the zero date, and for what is neither a date nor a text that reads as one.
String ToXMLDate(const Variant& vValue);

// A line <Tag>2007-03-05T14:07:09.000000-05:00</Tag>; "" for the zero date. The offset is that of the present
// moment, not of the date, in whole hours, halves away from zero, since readers expect ":00" there.
String LocalDateAsXML(StringView sTag, Date tDate, StringView sMargin = {});

// The lines StartTime and EndTime of a range, in the same form, with dUTCOffset hours as the offset; a line
// is left out for the zero date. vStartTime and vEndTime are those of XML_DateRange_ManualDays. Raises 5 for
// a range that is none of the enumeration.
String DateRangeAsXML(double dUTCOffset, Date tCurTime, ZEL_XMLDateRanges eTypeOfRange,
                      const Variant& vStartTime = std::int32_t{0}, const Variant& vEndTime = std::int32_t{0});

}  // namespace mXML

}  // namespace zelUtilities
