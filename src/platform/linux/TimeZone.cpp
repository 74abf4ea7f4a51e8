#include "platform/TimeZone.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

namespace zelUtilities {

namespace {

// What the clocks of the zone show.
struct ZoneTime {
  long offset = 0;      // seconds to add to universal time
  bool saving = false;  // what the rules call daylight saving time
  std::string name;

  friend bool operator==(const ZoneTime&, const ZoneTime&) = default;
  std::int32_t minutes() const {
    return static_cast<std::int32_t>(std::lround(static_cast<double>(offset) / 60));
  }
};

struct Change {
  std::time_t at;
  ZoneTime before;
  ZoneTime after;
};

ZoneTime zoneTimeAt(std::time_t moment) {
  tm local{};
  if (!localtime_r(&moment, &local)) return {};
  return {local.tm_gmtoff, local.tm_isdst > 0, local.tm_zone};
}

std::time_t startOfYear(int year) {
  tm start{};
  start.tm_year = year - 1900;
  start.tm_mday = 1;
  start.tm_isdst = -1;
  return mktime(&start);
}

// The first moment in (from, to] when the clocks do not show this time; they do at from, not at to.
std::time_t endOf(const ZoneTime& time, std::time_t from, std::time_t to) {
  while (to - from > 1) {
    const std::time_t middle = from + (to - from) / 2;
    (zoneTimeAt(middle) == time ? from : to) = middle;
  }
  return to;
}

// The C library tells the time of a moment, not its rules, so they are found by looking. No zone has
// changed its clocks there and back within ten days.
std::vector<Change> changesIn(int year) {
  constexpr std::time_t step = 10 * 86400;
  const std::time_t last = startOfYear(year + 1) - 1;
  std::vector<Change> changes;
  std::time_t at = startOfYear(year);
  ZoneTime before = zoneTimeAt(at);
  while (at < last) {
    const std::time_t next = std::min(at + step, last);
    if (zoneTimeAt(next) == before) {
      at = next;
      continue;
    }
    at = endOf(before, at, next);
    ZoneTime after = zoneTimeAt(at);
    changes.push_back({at, before, after});
    before = std::move(after);
  }
  return changes;
}

// The moment of a change by the clocks that run until then.
TimeRecord clockAt(const Change& change) {
  const std::time_t shown = change.at + change.before.offset;
  tm clock{};
  gmtime_r(&shown, &clock);
  const auto unit = [](int value) { return static_cast<std::uint16_t>(value); };
  return {unit(clock.tm_year + 1900), unit(clock.tm_mon + 1), unit(clock.tm_wday), unit(clock.tm_mday),
          unit(clock.tm_hour),        unit(clock.tm_min),     unit(clock.tm_sec),  0};
}

// When the time that the year's first change brought is over: at the last change back, or with the year.
TimeRecord endOfInnerTime(const std::vector<Change>& changes, int year) {
  const auto back = std::find_if(changes.rbegin(), changes.rend(), [&](const Change& change) {
    return change.before == changes.front().after && change.after == changes.front().before;
  });
  if (back != changes.rend()) return clockAt(*back);
  return {static_cast<std::uint16_t>(year + 1), 1, 0, 1, 0, 0, 0, 0};
}

struct Zone {
  ZoneTime standard;
  ZoneTime daylight;
  TimeRecord standardDate;
  TimeRecord daylightDate;
};

// Daylight time is what the zone has within the year and not around it, whatever it is called: Ireland calls
// its winter the saved time, and Morocco sets its clocks back for a month. It is around the year where that
// is saved time ahead of the other: in the south.
Zone zoneIn(int year) {
  const std::vector<Change> changes = changesIn(year);
  if (changes.empty()) return {zoneTimeAt(startOfYear(year)), {}, {}, {}};
  const ZoneTime& outer = changes.front().before;
  const ZoneTime& inner = changes.front().after;
  const TimeRecord begin = clockAt(changes.front());
  const TimeRecord end = endOfInnerTime(changes, year);
  if (outer.saving && outer.offset > inner.offset) return {inner, outer, begin, end};
  return {outer, inner, end, begin};
}

int yearAt(std::time_t moment) {
  tm local{};
  localtime_r(&moment, &local);
  return local.tm_year + 1900;
}

// The zone in a year or the present one. Looking takes some microseconds, and programs ask for every date
// that they write, so a thread keeps what it found for the rest of the second.
const Zone& currentZone(std::optional<int> asked, std::time_t present) {
  struct Found {
    std::time_t at = -1;
    std::string variable;
    std::optional<int> year;
    Zone zone;
  };
  thread_local Found found;
  const char* variable = std::getenv("TZ");
  if (found.at != present || found.variable != (variable ? variable : "")) {
    found = {present, variable ? variable : "", {}, {}};
    tzset();  // the user may have moved
  }
  const int year = asked ? *asked : yearAt(present);
  if (found.year != year) {
    found.zone = zoneIn(year);
    found.year = year;
  }
  return found.zone;
}

class LinuxTimeZone : public TimeZone {
 public:
  // The dates are those of the year, so that rules of every form are told.
  std::uint32_t information(std::optional<int> year, TimeZoneRecord& record) override {
    const std::time_t present = std::time(nullptr);
    const Zone& zone = currentZone(year, present);
    record = {};
    record.bias = -zone.standard.minutes();
    record.standardName = fromUtf8(zone.standard.name);
    if (zone.daylightDate.month == 0) return TimeZoneState::Unknown;
    record.standardDate = zone.standardDate;
    record.daylightName = fromUtf8(zone.daylight.name);
    record.daylightDate = zone.daylightDate;
    record.daylightBias = zone.standard.minutes() - zone.daylight.minutes();
    return zoneTimeAt(present) == zone.daylight ? TimeZoneState::Daylight : TimeZoneState::Standard;
  }
};

}  // namespace

TimeZone& TimeZone::system() {
  static auto& service = *new LinuxTimeZone;
  return service;
}

}  // namespace zelUtilities
