#include "automation/DecimalNumber.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "automation/ExactProduct.h"

namespace zelUtilities {

namespace {

// Powers of ten that a double holds exactly.
constexpr double exactPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                  1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int lastExactPower = 22;
constexpr std::uint64_t largestExactWhole = std::uint64_t{1} << 53;

// Exponents beyond these say enough: the value is nothing or too large.
constexpr int farExponent = 100000;

struct WholeDigits {
  std::int64_t value;
  int decimals;
};

// A positive number in so many digits, halves upwards, as a whole number; nothing where that takes a power of
// ten that no double holds.
std::optional<WholeDigits> wholeDigits(double value, int digits) {
  // The exponent of two times log10(2), rounded down; the shift rounds negative ones down, too.
  const int exponent = static_cast<int>(std::bit_cast<std::uint64_t>(value) >> 52) - 1023;
  const int decimals = digits - 1 - ((exponent * 78913) >> 18);
  // The estimate may be one too many, never too few.
  for (int power = decimals; power >= decimals - 1; --power) {
    if (power < 0 || power > lastExactPower) return std::nullopt;
    const ExactProduct product(value, exactPowers[power]);
    const auto whole = static_cast<std::int64_t>(product.rounded);
    const double rest = (product.rounded - static_cast<double>(whole) - 0.5) + product.missing;
    const std::int64_t rounded = rest >= 0 ? whole + 1 : whole;
    if (static_cast<double>(rounded) < exactPowers[digits]) return WholeDigits{rounded, power};
  }
  return std::nullopt;
}

// A positive number as d.ddde+dd.
class ScientificText {
 public:
  // The shortest that reads back as this value.
  explicit ScientificText(double value) {
    split(std::to_chars(text_, text_ + sizeof text_, value, std::chars_format::scientific).ptr);
  }
  void write(double value, int decimals) {
    split(std::to_chars(text_, text_ + sizeof text_, value, std::chars_format::scientific, decimals).ptr);
  }

  int count() const { return count_; }
  int exponent() const { return exponent_; }
  char first() const { return text_[0]; }
  char last() const { return text_[count_ > 1 ? count_ : 0]; }
  const char* behindPoint() const { return text_ + 2; }

 private:
  void split(const char* end) {
    // The exponent has two or three digits.
    const char* e = end[-4] == 'e' ? end - 4 : end - 5;
    count_ = e - text_ > 1 ? static_cast<int>(e - text_) - 1 : 1;
    exponent_ = 0;
    for (const char* at = e + 2; at < end; ++at) exponent_ = exponent_ * 10 + (*at - '0');
    if (e[1] == '-') exponent_ = -exponent_;
  }

  char text_[64];
  int count_ = 0;
  int exponent_ = 0;
};

}  // namespace

double DecimalNumber::powerOfTen(int exponent) { return exactPowers[exponent]; }

DecimalNumber DecimalNumber::of(double value, int significantDigits) {
  const double magnitude = std::fabs(value);
  // Most numbers have few decimals: one that is the nearest double to such a number of at most 15 digits is
  // written as that.
  constexpr double tenThousand = 10000;
  if (magnitude * tenThousand < exactPowers[significantDigits] - 1) {
    const std::int64_t scaled = std::llrint(magnitude * tenThousand);
    if (static_cast<double>(scaled) / tenThousand == magnitude) return of(value < 0 ? -scaled : scaled, 4);
  }
  if (const std::optional<WholeDigits> digits = wholeDigits(magnitude, significantDigits))
    return of(value < 0 ? -digits->value : digits->value, digits->decimals);

  DecimalNumber number;
  number.negative_ = std::signbit(value);
  value = std::fabs(value);
  // The shortest text that reads back is exact enough to be rounded, but for the smallest values of all and
  // where it ends in the very half that decides.
  ScientificText text(value);
  const bool atHalf = text.count() == significantDigits + 1 && text.last() == '5';
  if (atHalf || value < std::numeric_limits<double>::min()) text.write(value, 40);
  number.count_ = text.count();
  number.point_ = text.exponent() + 1;
  number.digits_[0] = text.first();
  std::memcpy(number.digits_ + 1, text.behindPoint(), static_cast<std::size_t>(number.count_ - 1));
  number.roundToDigits(significantDigits);
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
