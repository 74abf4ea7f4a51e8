#include "platform/linux/LocalDate.h"

#include "automation/Calendar.h"

namespace zelUtilities {

Date localDate(std::time_t seconds) {
  std::tm local{};
  localtime_r(&seconds, &local);
  const int day = dayNumberOf(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
  // A leap second belongs to the day that it ends.
  const int second = local.tm_sec < 60 ? local.tm_sec : 59;
  return {dateOf(day, local.tm_hour * 3600 + local.tm_min * 60 + second)};
}

}  // namespace zelUtilities
