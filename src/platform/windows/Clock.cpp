#include "platform/Clock.h"

#include <windows.h>

#include "automation/Calendar.h"

namespace zelUtilities {

namespace {

Date dateIn(const SYSTEMTIME& time) {
  const double milliseconds =
      (time.wHour * 3600 + time.wMinute * 60 + time.wSecond) * 1000.0 + time.wMilliseconds;
  return {dayNumberOf(time.wYear, time.wMonth, time.wDay) + milliseconds / 86400000.0};
}

class WindowsClock : public Clock {
 public:
  Date now() override {
    SYSTEMTIME local{};
    GetLocalTime(&local);
    return dateIn(local);
  }
  Date universalNow() override {
    SYSTEMTIME universal{};
    GetSystemTime(&universal);
    return dateIn(universal);
  }
};

}  // namespace

Clock& Clock::system() {
  static auto& service = *new WindowsClock;
  return service;
}

}  // namespace zelUtilities
