#include "automation/NumberReading.h"

#include <charconv>

#include "automation/UnitKinds.h"

namespace zelUtilities {

namespace {

// Exponents beyond this say enough.
constexpr int farExponent = 100000;

// A text of sign, digits, decimal separator and exponent, narrowed for the C++ library's reader.
class PlainDecimal {
 public:
  PlainDecimal(StringView text, const Locale& locale) {
    if (text.empty() || text.size() > capacity || locale.decimalSeparator.size() != 1) return;
    const char16_t separator = locale.decimalSeparator[0];
    const char16_t* at = text.data();
    const char16_t* const end = at + text.size();
    negative_ = *at == u'-';
    if (negative_) ++at;
    at = readDigits(at, end);
    wholeDigits_ = size_;
    if (at < end && *at == separator) {
      narrow_[size_++] = '.';
      at = readDigits(at + 1, end);
      decimals_ = size_ - wholeDigits_ - 1;
    }
    isComplete_ = at == end && wholeDigits_ + decimals_ > 0;
    if (at < end && (*at == u'e' || *at == u'E') && wholeDigits_ + decimals_ > 0) readExponent(at + 1, end);
  }

  bool isComplete() const { return isComplete_; }

  // Nothing where it does not fit; the general reader decides then.
  std::optional<double> value() const {
    constexpr std::uint64_t largestExactWhole = std::uint64_t{1} << 53;
    double value = 0;
    if (!hasExponent_ && wholeDigits_ + decimals_ <= 19 && mantissa_ <= largestExactWhole) {
      value = static_cast<double>(mantissa_) / DecimalNumber::powerOfTen(static_cast<int>(decimals_));
    } else if (const auto [end, error] = std::from_chars(narrow_, narrow_ + size_, value);
               error != std::errc() || end != narrow_ + size_) {
      return std::nullopt;
    }
    return negative_ ? -value : value;
  }

 private:
  static constexpr std::size_t capacity = 48;

  const char16_t* readDigits(const char16_t* at, const char16_t* end) {
    for (; at < end && isDigit(*at); ++at) {
      mantissa_ = mantissa_ * 10 + (*at - u'0');
      narrow_[size_++] = static_cast<char>(*at);
    }
    return at;
  }

  void readExponent(const char16_t* at, const char16_t* end) {
    hasExponent_ = true;
    narrow_[size_++] = 'e';
    if (at < end && (*at == u'-' || *at == u'+')) narrow_[size_++] = static_cast<char>(*at++);
    const std::size_t first = size_;
    isComplete_ = readDigits(at, end) == end && size_ > first;
  }

  char narrow_[capacity + 1];
  std::size_t size_ = 0;
  std::size_t wholeDigits_ = 0;
  std::size_t decimals_ = 0;
  std::uint64_t mantissa_ = 0;  // of up to 19 digits
  bool negative_ = false;
  bool hasExponent_ = false;
  bool isComplete_ = false;
};

// Reads one number text from left to right.
class NumberReader {
 public:
  NumberReader(StringView text, const Locale& locale)
      : at_(text.data()), end_(text.data() + text.size()), locale_(locale) {}

  bool read(NumberReading& reading) {
    readLead();
    if (at_ < end_ && *at_ == u'&') {
      if (negative_ || parenthesis_ || currency_ || !readOtherBase(reading)) return false;
    } else if (!readDigits(reading.decimal) || !readExponent(reading.decimal)) {
      return false;
    }
    readTrail();
    if (parenthesis_ && !closed_) return false;
    reading.decimal.setNegative(negative_ || parenthesis_);
    reading.decimal.trim();
    return at_ == end_;
  }

 private:
  bool take(StringView symbol) {
    if (symbol.empty() ||
        StringView(at_, static_cast<std::size_t>(end_ - at_)).substr(0, symbol.size()) != symbol)
      return false;
    at_ += symbol.size();
    return true;
  }

  bool takeSign() {
    if (signed_) return false;
    const bool minus = take(locale_.negativeSign) || take(u"-");
    if (!minus && !take(u"+") && !take(locale_.positiveSign)) return false;
    signed_ = true;
    negative_ = minus;
    return true;
  }

  bool takeCurrency() {
    if (currency_ || !take(locale_.currencySymbol)) return false;
    currency_ = true;
    return true;
  }

  void readLead() {
    for (; at_ < end_;) {
      if (isDigit(*at_)) return;
      if (isBlank(*at_)) {
        ++at_;
      } else if (*at_ == u'(' && !parenthesis_) {
        ++at_;
        parenthesis_ = true;
      } else if (!takeSign() && !takeCurrency()) {
        return;
      }
    }
  }

  // A thousands separator; where it is one of the blanks, a plain blank will do between digits.
  bool takeThousands() {
    const StringView separator = locale_.thousandsSeparator;
    if (take(separator)) return true;
    const bool blank = separator == u"\u00A0" || separator == u"\u202F";
    if (!blank || *at_ != u' ' || at_ + 1 == end_ || !isDigit(at_[1])) return false;
    ++at_;
    return true;
  }

  bool readDigits(DecimalNumber& number) {
    bool any = false;
    bool behindPoint = false;
    while (at_ < end_) {
      if (isDigit(*at_)) {
        number.append(static_cast<char>(*at_++), behindPoint);
        any = true;
      } else if (!behindPoint && take(locale_.decimalSeparator)) {
        behindPoint = true;
      } else if (!any || behindPoint || !takeThousands()) {
        break;
      }
    }
    return any;
  }

  bool readExponent(DecimalNumber& number) {
    // An amount with the currency sign in front has none.
    if (at_ == end_ || currency_ || !(*at_ == u'e' || *at_ == u'E' || *at_ == u'd' || *at_ == u'D'))
      return true;
    ++at_;
    const bool negative = at_ < end_ && *at_ == u'-';
    if (negative || (at_ < end_ && *at_ == u'+')) ++at_;
    if (at_ == end_ || !isDigit(*at_)) return false;
    int exponent = 0;
    for (; at_ < end_ && isDigit(*at_); ++at_)
      if (exponent < farExponent) exponent = exponent * 10 + (*at_ - u'0');
    number.scale(negative ? -exponent : exponent);
    return true;
  }

  bool readOtherBase(NumberReading& reading) {
    ++at_;
    unsigned shift = 3;
    if (at_ < end_ && (*at_ == u'h' || *at_ == u'H')) {
      shift = 4;
      ++at_;
    } else if (at_ < end_ && (*at_ == u'o' || *at_ == u'O')) {
      ++at_;
    } else {
      return false;
    }
    bool any = false;
    for (int value = baseDigit(shift); value >= 0; value = baseDigit(shift)) {
      if (reading.bits >> (64 - shift) != 0) return false;
      reading.bits = (reading.bits << shift) | static_cast<std::uint64_t>(value);
      any = true;
      ++at_;
    }
    reading.otherBase = true;
    return any;
  }

  // The digit at hand in base 8 or 16; negative where there is none.
  int baseDigit(unsigned shift) const {
    if (at_ == end_) return -1;
    const char16_t unit = *at_;
    if (unit >= u'0' && unit <= (shift == 3 ? u'7' : u'9')) return unit - u'0';
    const char16_t letter = unit | 0x20;
    return shift == 4 && letter >= u'a' && letter <= u'f' ? letter - u'a' + 10 : -1;
  }

  void readTrail() {
    while (at_ < end_) {
      if (isBlank(*at_)) {
        ++at_;
      } else if (*at_ == u')' && parenthesis_ && !closed_) {
        ++at_;
        closed_ = true;
      } else if (!takeSign() && !takeCurrency()) {
        return;
      }
    }
  }

  const char16_t* at_;
  const char16_t* end_;
  const Locale& locale_;
  bool signed_ = false;
  bool negative_ = false;
  bool parenthesis_ = false;
  bool closed_ = false;
  bool currency_ = false;
};

}  // namespace

std::optional<std::int64_t> readPlainWhole(StringView text) {
  constexpr std::size_t mostDigits = 18;  // that never overflow
  const bool negative = !text.empty() && text[0] == u'-';
  text.remove_prefix(negative ? 1 : 0);
  if (text.empty() || text.size() > mostDigits) return std::nullopt;
  std::int64_t value = 0;
  for (const char16_t unit : text) {
    if (!isDigit(unit)) return std::nullopt;
    value = value * 10 + (unit - u'0');
  }
  return negative ? -value : value;
}

std::optional<double> readPlainDouble(StringView text, const Locale& locale) {
  const PlainDecimal plain(text, locale);
  if (!plain.isComplete()) return std::nullopt;
  return plain.value();
}

std::optional<NumberReading> readNumber(StringView text, const Locale& locale) {
  std::optional<NumberReading> reading(std::in_place);
  if (!NumberReader(text, locale).read(*reading)) reading.reset();
  return reading;
}

}  // namespace zelUtilities
