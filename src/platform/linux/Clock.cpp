#include "platform/Clock.h"

#include <cmath>
#include <ctime>

#include "automation/Calendar.h"

namespace zelUtilities {

namespace {

using Split = tm*(const std::time_t*, tm*);

Date nowBy(Split* split) {
  timespec time{};
  clock_gettime(CLOCK_REALTIME, &time);
  tm clock{};
  split(&time.tv_sec, &clock);
  const int day = dayNumberOf(clock.tm_year + 1900, clock.tm_mon + 1, clock.tm_mday);
  // A leap second belongs to the day that it ends.
  const int second = clock.tm_hour * 3600 + clock.tm_min * 60 + (clock.tm_sec < 60 ? clock.tm_sec : 59);
  const double milliseconds = second * 1000.0 + std::floor(static_cast<double>(time.tv_nsec) / 1e6);
  return {day + milliseconds / 86400000.0};
}

class LinuxClock : public Clock {
 public:
  Date now() override { return nowBy(&localtime_r); }
  Date universalNow() override { return nowBy(&gmtime_r); }
};

}  // namespace

Clock& Clock::system() {
  static auto& service = *new LinuxClock;
  return service;
}

}  // namespace zelUtilities
