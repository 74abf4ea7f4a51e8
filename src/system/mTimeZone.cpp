#include "system/mTimeZone.h"

#include "automation/Calendar.h"
#include "automation/Conversions.h"
#include "automation/Error.h"
#include "foundation/Handled.h"

namespace zelUtilities::mTimeZone {

namespace {

constexpr std::int32_t invalidResponse = objectErrorBase + 513;
constexpr int lastWeek = 5;  // of a month, however many it has

// Runs the body and logs what it throws; the one error that is meant for the caller goes on to it.
template <class Body>
void handledButInvalid(StringView source, const Body& body) {
  try {
    body();
  } catch (const Error& error) {
    if (error.number() == invalidResponse) raiseChained(source);
    logCurrent(source);
  } catch (...) {
    logCurrent(source);
  }
}

std::optional<Date> dateIn(const Variant& value) {
  if (value.isMissing()) return {};
  return Date{toDate(value)};
}

int yearOf(Date date) {
  if (!isDateInRange(date.days)) throw Error(ErrorNumber::Overflow);
  return momentOf(date.days).year;
}

int requireDate(int year, int month, int day) {
  if (!isCalendarDate(year, month, day)) throw Error(ErrorNumber::InvalidProcedureCall);
  return dayNumberOf(year, month, day);
}

int weekdayOf(int dayNumber) { return momentOf(dayNumber).weekday; }

int lastDayOf(int year, int month) {
  int day = 31;
  while (!isCalendarDate(year, month, day)) --day;
  return dayNumberOf(year, month, day);
}

// The day of the n-th weekday of the month, or of the last one.
int ruledDay(const TimeRecord& rule, int year) {
  const int first = requireDate(year, rule.month, 1);
  if (rule.dayOfWeek > 6 || rule.day < 1 || rule.day > lastWeek)
    throw Error(ErrorNumber::InvalidProcedureCall);
  int day = rule.day == lastWeek ? lastDayOf(year, rule.month) : first;
  const int step = rule.day == lastWeek ? -1 : 1;
  while (weekdayOf(day) != rule.dayOfWeek) day += step;
  return rule.day == lastWeek ? day : day + 7 * (rule.day - 1);
}

std::uint32_t stateOn(Date date, const TimeZoneRecord& record) {
  if (record.daylightDate.month == 0) return TimeZoneState::Standard;
  const Date standardStart = TimeZoneDate(record.standardDate, date);
  const Date daylightStart = TimeZoneDate(record.daylightDate, date);
  return date.days >= daylightStart.days && date.days < standardStart.days ? TimeZoneState::Daylight
                                                                           : TimeZoneState::Standard;
}

}  // namespace

void LoadTimeZoneInfo(TimeZoneRecord& record, std::uint32_t& state, std::optional<Date> date) {
  constexpr StringView source = u"mTimeZone.LoadTimeZoneInfo";
  handled(source, [&] {
    state = timeZone().information(date ? std::optional(yearOf(*date)) : std::nullopt, record);
    if (state != TimeZoneState::Invalid && date) state = stateOn(*date, record);
    record.bias = -record.bias;
    record.standardBias = -record.standardBias;
    record.daylightBias = -record.daylightBias;
  });
  if (state == TimeZoneState::Invalid)
    throw Error(invalidResponse, source, u"GetTimeZoneInformation returned an invalid response");
}

Date TimeZoneDate(const TimeRecord& rule, Date date) {
  Date moment;
  handled(u"mTimeZone.TimeZoneDate", [&] {
    const int day =
        rule.year != 0 ? requireDate(rule.year, rule.month, rule.day) : ruledDay(rule, yearOf(date));
    moment.days = dateOf(day, rule.hour * 3600 + rule.minute * 60 + rule.second);
  });
  return moment;
}

String TZGetLocalName(const Variant& vCompareDateTime) {
  String name;
  handledButInvalid(u"mTimeZone.TZGetLocalName", [&] {
    TimeZoneRecord record;
    std::uint32_t state = TimeZoneState::Unknown;
    LoadTimeZoneInfo(record, state, dateIn(vCompareDateTime));
    name = TrimNull(state == TimeZoneState::Daylight ? record.daylightName : record.standardName);
  });
  return name;
}

double TZGetLocalOffset(const Variant& vCompareDateTime) {
  double hours = 0;
  handledButInvalid(u"mTimeZone.TZGetLocalOffset", [&] {
    TimeZoneRecord record;
    std::uint32_t state = TimeZoneState::Unknown;
    LoadTimeZoneInfo(record, state, dateIn(vCompareDateTime));
    const std::int32_t minutes =
        record.bias + (state == TimeZoneState::Daylight ? record.daylightBias : record.standardBias);
    hours = minutes / 60.0;
  });
  return hours;
}

String TrimNull(StringView text) {
  String trimmed;
  handled(u"mTimeZone.TrimNull", [&] { trimmed = text.substr(0, text.find(u'\0')); });
  return trimmed;
}

}  // namespace zelUtilities::mTimeZone
