// DateDigits: the parts of a date as digits, the same in every locale.
//
//   DateDigits().year(2007, u'-').part(3, u'-').part(5).view()      // 2007-03-05
#pragma once

#include <cstddef>

#include "automation/String.h"

namespace zelUtilities {

class DateDigits {
 public:
  // Four digits, and what stands behind them.
  DateDigits& year(int year, char16_t behind) {
    part(year / 100);
    return part(year % 100, behind);
  }
  // Two digits, and what stands behind them if anything.
  DateDigits& part(int number, char16_t behind = u'\0') {
    units_[size_++] = static_cast<char16_t>(u'0' + number / 10);
    units_[size_++] = static_cast<char16_t>(u'0' + number % 10);
    if (behind != u'\0') units_[size_++] = behind;
    return *this;
  }
  StringView view() const { return {units_, size_}; }

 private:
  std::size_t size_ = 0;
  char16_t units_[20];  // a date and a time of day
};

}  // namespace zelUtilities
