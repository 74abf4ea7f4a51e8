// DecimalNumber: a number as sign, decimal digits and the place of the point; what reading,
// writing and formatting of numbers have in common.
//
//   DecimalNumber number = DecimalNumber::of(1234.5, 15);   // digits "12345", point 4
//   number.roundTo(0);                                      // digits "1235"
#pragma once

#include <cstdint>
#include <optional>

namespace zelUtilities {

class DecimalNumber {
 public:
  // A finite value in so many significant digits, halves away from zero. At most 15 digits.
  static DecimalNumber of(double value, int significantDigits);
  // A whole number divided by a power of ten, exactly.
  static DecimalNumber of(std::int64_t value, int decimals);

  bool isZero() const { return count_ == 0; }
  bool negative() const { return negative_; }
  void setNegative(bool negative) { negative_ = negative; }

  // The significant digits '0' to '9'; neither the first nor, once trimmed, the last is '0'. The value is
  // 0.d1d2d3... times ten to the power of point().
  int count() const { return count_; }
  char digit(int position) const { return position >= 0 && position < count_ ? digits_[position] : '0'; }
  const char* digits() const { return digits_; }
  int point() const { return point_; }
  // Digits that stand behind the decimal point.
  int decimals() const { return count_ > point_ ? count_ - point_ : 0; }

  // Appends a digit while reading; leading zeros only move the point.
  void append(char digit, bool behindPoint);
  void scale(int powerOfTen) { point_ += powerOfTen; }
  void trim();

  // Rounds to so many decimals, halves away from zero.
  void roundTo(int decimals);
  // Keeps so many significant digits, halves away from zero.
  void roundToDigits(int digits);

  // The nearest double; nothing where it is too large.
  std::optional<double> toDouble() const;
  // The value times ten to the power of `decimals` as a whole number, halves to even; nothing where it
  // does not fit.
  std::optional<std::int64_t> toWhole(int decimals = 0) const;

  // Ten to the power of 0 to 22: those that a double holds exactly.
  static double powerOfTen(int exponent);

 private:
  // Enough for the nearest double of any text: whatever is cut off counts as a last digit of 1.
  static constexpr int capacity = 64;

  bool negative_ = false;
  int count_ = 0;
  int point_ = 0;
  char digits_[capacity];
};

}  // namespace zelUtilities
