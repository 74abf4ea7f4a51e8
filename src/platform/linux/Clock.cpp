#include "platform/Clock.h"

#include <cmath>
#include <ctime>

#include "automation/Calendar.h"

namespace zelUtilities {

namespace {

class LinuxClock : public Clock {
 public:
  Date now() override {
    timespec time{};
    clock_gettime(CLOCK_REALTIME, &time);
    tm local{};
    localtime_r(&time.tv_sec, &local);
    const int day = dayNumberOf(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
    // A leap second belongs to the day that it ends.
    const int second = local.tm_hour * 3600 + local.tm_min * 60 + (local.tm_sec < 60 ? local.tm_sec : 59);
    const double milliseconds = second * 1000.0 + std::floor(static_cast<double>(time.tv_nsec) / 1e6);
    return {day + milliseconds / 86400000.0};
  }
};

}  // namespace

Clock& Clock::system() {
  static auto& service = *new LinuxClock;
  return service;
}

}  // namespace zelUtilities
