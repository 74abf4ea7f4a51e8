#include "automation/DecimalNumber.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace zelUtilities {

namespace {

// Powers of ten that a double holds exactly.
constexpr double exactPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                  1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int lastExactPower = 22;
constexpr std::uint64_t largestExactWhole = std::uint64_t{1} << 53;

// Exponents beyond these say enough: the value is nothing or too large.
constexpr int farExponent = 100000;

}  // namespace

DecimalNumber DecimalNumber::of(double value, int significantDigits) {
  DecimalNumber number;
  if (value == 0) return number;
  number.negative_ = std::signbit(value);
  value = std::fabs(value);
  // The shortest text that reads back is exact enough to be rounded, but for the smallest values of all and
  // where it ends in the very half that decides.
  char text[64];
  auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::scientific).ptr;
  const char* exponent = std::find(text, end, 'e');
  const bool atHalf = exponent - text == significantDigits + 2 && exponent[-1] == '5';
  if (atHalf || value < std::numeric_limits<double>::min()) {
    constexpr int plenty = 40;
    end = std::to_chars(text, text + sizeof text, value, std::chars_format::scientific, plenty).ptr;
    exponent = std::find(text, end, 'e');
  }
  number.digits_[number.count_++] = text[0];
  for (const char* at = text + 2; at < exponent; ++at) number.digits_[number.count_++] = *at;
  const char* power = exponent + 1;
  if (*power == '+') ++power;
  std::from_chars(power, end, number.point_);
  ++number.point_;
  if (number.count_ > significantDigits) number.roundToDigits(significantDigits);
  number.trim();
  return number;
}

DecimalNumber DecimalNumber::of(std::int64_t value, int decimals) {
  DecimalNumber number;
  if (value == 0) return number;
  number.negative_ = value < 0;
  const auto magnitude =
      number.negative_ ? -static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
  const auto end = std::to_chars(number.digits_, number.digits_ + capacity, magnitude).ptr;
  number.count_ = static_cast<int>(end - number.digits_);
  number.point_ = number.count_ - decimals;
  number.trim();
  return number;
}

void DecimalNumber::append(char digit, bool behindPoint) {
  if (count_ == 0 && digit == '0') {
    if (behindPoint && point_ > -farExponent) --point_;
    return;
  }
  if (count_ < capacity) {
    digits_[count_++] = digit;
  } else if (digit != '0' && digits_[capacity - 1] == '0') {
    digits_[capacity - 1] = '1';
  }
  if (!behindPoint && point_ < farExponent) ++point_;
}

void DecimalNumber::trim() {
  while (count_ > 0 && digits_[count_ - 1] == '0') --count_;
  if (count_ == 0) point_ = 0;
}

void DecimalNumber::roundTo(int decimals) { roundToDigits(point_ + decimals); }

void DecimalNumber::roundToDigits(int digits) {
  if (digits >= count_) return;
  if (digits < 0 || (digits == 0 && digits_[0] < '5')) {
    count_ = 0;
    point_ = 0;
    return;
  }
  const bool up = digits_[digits] >= '5';
  count_ = digits;
  if (up) {
    int at = digits - 1;
    while (at >= 0 && digits_[at] == '9') --at;
    if (at < 0) {
      digits_[0] = '1';
      count_ = 1;
      ++point_;
      return;
    }
    ++digits_[at];
    count_ = at + 1;
  }
  trim();
}

std::optional<double> DecimalNumber::toDouble() const {
  if (count_ == 0) return 0.0;
  const int exponent = point_ - count_;
  if (count_ <= 19) {
    std::uint64_t whole = 0;
    for (int i = 0; i < count_; ++i) whole = whole * 10 + static_cast<std::uint64_t>(digits_[i] - '0');
    if (whole <= largestExactWhole && std::abs(exponent) <= lastExactPower) {
      const auto value = static_cast<double>(whole);
      const double scaled = exponent < 0 ? value / exactPowers[-exponent] : value * exactPowers[exponent];
      return negative_ ? -scaled : scaled;
    }
  }
  char text[capacity + 16];
  std::memcpy(text, digits_, static_cast<std::size_t>(count_));
  char* at = text + count_;
  *at++ = 'e';
  at = std::to_chars(at, text + sizeof text, exponent).ptr;
  double value = 0;
  if (std::from_chars(text, at, value).ec == std::errc::result_out_of_range) {
    if (point_ > 0) return std::nullopt;
    value = 0;
  }
  return negative_ ? -value : value;
}

std::optional<std::int64_t> DecimalNumber::toWhole(int decimals) const {
  const int wanted = point_ + decimals;
  if (count_ == 0 || wanted < 0) return 0;
  if (wanted > 19) return std::nullopt;
  std::uint64_t whole = 0;
  for (int i = 0; i < wanted; ++i) whole = whole * 10 + static_cast<std::uint64_t>(digit(i) - '0');
  if (wanted < count_) {
    const bool half = digits_[wanted] == '5' &&
                      std::all_of(digits_ + wanted + 1, digits_ + count_, [](char c) { return c == '0'; });
    if (half ? (whole & 1) != 0 : digits_[wanted] >= '5') ++whole;
  }
  constexpr auto largest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  if (whole > largest + (negative_ ? 1 : 0)) return std::nullopt;
  return static_cast<std::int64_t>(negative_ ? -whole : whole);
}

}  // namespace zelUtilities
