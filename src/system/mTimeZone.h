// mTimeZone: the name of the local time zone and its distance from universal time, now or on a date.
//
//   double hours = mTimeZone::TZGetLocalOffset();                            // -5 in New York's winter
//   String name = mTimeZone::TZGetLocalName(Variant::date(39278));           // in the summer of 2007
//
// Failures are logged, under "mTimeZone." and the routine's name, but for one, which reaches the caller:
// where the system does not know its time zone, everything but TimeZoneDate and TrimNull raises -2147220991.
#pragma once

#include <cstdint>
#include <optional>

#include "automation/Date.h"
#include "automation/Variant.h"
#include "platform/TimeZone.h"

namespace zelUtilities::mTimeZone {

// The system's record with its biases negated, so that they are minutes to add to universal time, and the
// state (TimeZoneState): at present, or on the date, as the zone's clocks show it. On a date the daylight
// time counts only as far as it lies within one calendar year, from its start to the start of standard time:
// the south, where it spans the new year, is always in standard time then. Clients rely on that. So is a zone
// without daylight time.
void LoadTimeZoneInfo(TimeZoneRecord& record, std::uint32_t& state, std::optional<Date> date = {});

// The moment that a rule names in the year of the date, which counts only where the rule has no year of its
// own. A rule that names no moment logs 5 and gives the zero date.
Date TimeZoneDate(const TimeRecord& rule, Date date);

// The zone's name in daylight or standard time; "" after a failure. Only a missing argument means now.
String TZGetLocalName(const Variant& vCompareDateTime = Variant::missing());

// Hours to add to universal time, negative west of it; 0 after a failure. Only a missing argument means now.
double TZGetLocalOffset(const Variant& vCompareDateTime = Variant::missing());

// The text before its first NUL; all of it where there is none.
String TrimNull(StringView text);

}  // namespace zelUtilities::mTimeZone
