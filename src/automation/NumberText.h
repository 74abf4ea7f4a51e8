// Numbers as text, in a locale's forms.
//
//   NumberText text = textOf(0.5, currentLocale());      // text.view() is "0.5"
#pragma once

#include <cstddef>
#include <cstdint>

#include "automation/Locale.h"
#include "automation/String.h"

namespace zelUtilities {

// The text of one number, without an allocation.
class NumberText {
 public:
  StringView view() const { return {units_, size_}; }
  void append(char16_t unit) {
    if (size_ < capacity) units_[size_++] = unit;
  }
  void append(StringView text) {
    for (const char16_t unit : text) append(unit);
  }
  void append(std::size_t count, char16_t unit) {
    for (; count > 0; --count) append(unit);
  }
  void append(const char* digits, std::size_t count) {
    if (count > capacity - size_) count = capacity - size_;
    for (std::size_t i = 0; i < count; ++i) units_[size_ + i] = static_cast<unsigned char>(digits[i]);
    size_ += count;
  }

 private:
  static constexpr std::size_t capacity = 48;

  std::size_t size_ = 0;
  char16_t units_[capacity];
};

NumberText textOf(std::int64_t value);
// Up to 15 significant digits; plain up to 15 digits on either side of the point, else with an exponent
// ("1E+15", "3.33333333333333E-02").
NumberText textOf(double value, const Locale& locale);
// The same with 7 digits.
NumberText textOf(float value, const Locale& locale);
// Up to four decimals.
NumberText textOfCurrency(std::int64_t tenThousandths, const Locale& locale);

}  // namespace zelUtilities
