// TimeZone: the local time zone as the system describes it.
#pragma once

#include <cstdint>
#include <optional>

#include "automation/String.h"
#include "platform/Service.h"

namespace zelUtilities {

// A moment, or the yearly rule for one: without a year it is the n-th weekday of its month, n standing in
// day, 5 for the last one.
struct TimeRecord {
  std::uint16_t year = 0;
  std::uint16_t month = 0;
  std::uint16_t dayOfWeek = 0;  // 0 is Sunday
  std::uint16_t day = 0;
  std::uint16_t hour = 0;
  std::uint16_t minute = 0;
  std::uint16_t second = 0;
  std::uint16_t millisecond = 0;
};

// Biases are minutes to add to local time for universal time: bias always, one of the others beside it. The
// dates tell when that time begins, as the clock shows it until then; a zone without daylight time has no
// month there. A name may have NULs behind it.
struct TimeZoneRecord {
  std::int32_t bias = 0;
  String standardName;
  TimeRecord standardDate;
  std::int32_t standardBias = 0;
  String daylightName;
  TimeRecord daylightDate;
  std::int32_t daylightBias = 0;
};

namespace TimeZoneState {
inline constexpr std::uint32_t Unknown = 0;  // no daylight time in this zone
inline constexpr std::uint32_t Standard = 1;
inline constexpr std::uint32_t Daylight = 2;
inline constexpr std::uint32_t Invalid = 0xFFFFFFFF;  // the system does not know
}  // namespace TimeZoneState

struct TimeZone {
  virtual ~TimeZone() = default;

  // Fills the record with the zone's rules and returns the state at present. The rules are those of the year,
  // of the present one without it, where the system keeps the rules of other years. Never raises but for
  // memory.
  virtual std::uint32_t information(std::optional<int> year, TimeZoneRecord& record) = 0;

  static TimeZone& system();
};

inline TimeZone& timeZone() { return Service<TimeZone>::inForce(); }

}  // namespace zelUtilities
