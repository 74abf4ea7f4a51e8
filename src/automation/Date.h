// Date: a moment as clients keep it, in days since 1899-12-30 00:00; the fraction is the time of day.
#pragma once

namespace zelUtilities {

struct Date {
  double days = 0;  // 0 doubles as "no date"

  friend bool operator==(const Date&, const Date&) = default;
};

}  // namespace zelUtilities
