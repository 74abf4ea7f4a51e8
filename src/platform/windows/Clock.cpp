#include "platform/Clock.h"

#include <windows.h>

#include "automation/Calendar.h"

namespace zelUtilities {

namespace {

class WindowsClock : public Clock {
 public:
  Date now() override {
    SYSTEMTIME local{};
    GetLocalTime(&local);
    const double milliseconds =
        (local.wHour * 3600 + local.wMinute * 60 + local.wSecond) * 1000.0 + local.wMilliseconds;
    return {dayNumberOf(local.wYear, local.wMonth, local.wDay) + milliseconds / 86400000.0};
  }
};

}  // namespace

Clock& Clock::system() {
  static auto& service = *new WindowsClock;
  return service;
}

}  // namespace zelUtilities
