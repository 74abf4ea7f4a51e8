#include "automation/Calendar.h"

#include <chrono>
#include <cmath>

namespace zelUtilities {

namespace {

using namespace std::chrono;

constexpr int firstDay = -657434;  // 0100-01-01
constexpr int lastDay = 2958465;   // 9999-12-31
constexpr int secondsPerDay = 86400;
constexpr sys_days dayZero{year{1899} / December / 30};

}  // namespace

bool isDateInRange(double days) { return days > firstDay - 1.0 && days < lastDay + 1.0; }

Moment momentOf(double days) {
  const double whole = std::trunc(days);
  Moment moment;
  moment.dayNumber = static_cast<int>(whole);
  moment.secondOfDay = static_cast<int>(std::floor(std::fabs(days - whole) * secondsPerDay + 0.5));
  if (moment.secondOfDay >= secondsPerDay) {
    // The day after the last one has no name.
    moment.secondOfDay = moment.dayNumber == lastDay ? secondsPerDay - 1 : 0;
    if (moment.secondOfDay == 0) ++moment.dayNumber;
  }
  const sys_days point = dayZero + std::chrono::days{moment.dayNumber};
  const year_month_day date{point};
  moment.year = static_cast<int>(date.year());
  moment.month = static_cast<int>(static_cast<unsigned>(date.month()));
  moment.day = static_cast<int>(static_cast<unsigned>(date.day()));
  moment.weekday = static_cast<int>(weekday{point}.c_encoding());
  moment.dayOfYear = static_cast<int>((point - sys_days{date.year() / January / 1}).count()) + 1;
  moment.hour = moment.secondOfDay / 3600;
  moment.minute = moment.secondOfDay / 60 % 60;
  moment.second = moment.secondOfDay % 60;
  return moment;
}

bool isCalendarDate(int year, int month, int day) {
  if (year < 100 || year > 9999 || month < 1 || month > 12 || day < 1 || day > 31) return false;
  return year_month_day{std::chrono::year{year}, std::chrono::month{static_cast<unsigned>(month)},
                        std::chrono::day{static_cast<unsigned>(day)}}
      .ok();
}

int dayNumberOf(int year, int month, int day) {
  const sys_days point{std::chrono::year{year} / month / day};
  return static_cast<int>((point - dayZero).count());
}

double dateOf(int dayNumber, int secondOfDay) {
  const double time = static_cast<double>(secondOfDay) / secondsPerDay;
  return dayNumber < 0 ? dayNumber - time : dayNumber + time;
}

int currentYear() {
  const year_month_day today{floor<std::chrono::days>(system_clock::now())};
  return static_cast<int>(today.year());
}

}  // namespace zelUtilities
