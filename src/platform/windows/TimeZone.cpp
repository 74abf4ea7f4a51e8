#include "platform/TimeZone.h"

#include <windows.h>

#include <iterator>

#include "platform/windows/WideText.h"

namespace zelUtilities {

namespace {

TimeRecord recordOf(const SYSTEMTIME& time) {
  return {time.wYear, time.wMonth,  time.wDayOfWeek, time.wDay,
          time.wHour, time.wMinute, time.wSecond,    time.wMilliseconds};
}

class WindowsTimeZone : public TimeZone {
 public:
  std::uint32_t information(std::optional<int>, TimeZoneRecord& record) override {
    TIME_ZONE_INFORMATION zone{};
    const DWORD state = GetTimeZoneInformation(&zone);
    record.bias = zone.Bias;
    record.standardName = fromWide(zone.StandardName, std::size(zone.StandardName));
    record.standardDate = recordOf(zone.StandardDate);
    record.standardBias = zone.StandardBias;
    record.daylightName = fromWide(zone.DaylightName, std::size(zone.DaylightName));
    record.daylightDate = recordOf(zone.DaylightDate);
    record.daylightBias = zone.DaylightBias;
    return state;
  }
};

}  // namespace

TimeZone& TimeZone::system() {
  static auto& service = *new WindowsTimeZone;
  return service;
}

}  // namespace zelUtilities
