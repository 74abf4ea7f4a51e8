#include "automation/NumberText.h"

#include <charconv>
#include <cmath>

namespace zelUtilities {

namespace {

constexpr int doubleDigits = 15;
constexpr int singleDigits = 7;
constexpr int farExponent = 100000;

bool isBlank(char16_t unit) {
  return unit == u' ' || (unit >= u'\t' && unit <= u'\r') || unit == 0xA0 || unit == 0x3000;
}

bool isDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

NumberText textOfNotFinite(double value) {
  NumberText text;
  if (std::signbit(value)) text.append(u'-');
  text.append(std::isnan(value) ? StringView(u"1.#QNAN") : StringView(u"1.#INF"));
  return text;
}

void appendExponent(NumberText& text, int exponent) {
  text.append(u'E');
  text.append(exponent < 0 ? u'-' : u'+');
  if (std::abs(exponent) < 10) text.append(u'0');
  text.append(textOf(std::int64_t{std::abs(exponent)}).view());
}

NumberText textOfDecimal(const DecimalNumber& number, int plainDigits, const Locale& locale) {
  NumberText text;
  if (number.isZero()) {
    text.append(u'0');
    return text;
  }
  if (number.negative()) text.append(u'-');
  const bool plain = number.point() <= plainDigits && number.decimals() <= plainDigits;
  const int whole = plain ? number.point() : 1;
  if (whole <= 0) text.append(u'0');
  for (int i = 0; i < whole; ++i) text.append(static_cast<char16_t>(number.digit(i)));
  if (number.count() > whole) {
    text.append(locale.decimalSeparator);
    for (int i = whole; i < 0; ++i) text.append(u'0');
    for (int i = whole > 0 ? whole : 0; i < number.count(); ++i)
      text.append(static_cast<char16_t>(number.digit(i)));
  }
  if (!plain) appendExponent(text, number.point() - 1);
  return text;
}

NumberText textOfReal(double value, int digits, double wholeLimit, const Locale& locale) {
  if (!std::isfinite(value)) return textOfNotFinite(value);
  if (std::fabs(value) < wholeLimit && value == std::trunc(value))
    return textOf(static_cast<std::int64_t>(value));
  return textOfDecimal(DecimalNumber::of(value, digits), digits, locale);
}

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
    if (at_ == end_ || currency_ || !(*at_ == u'e' || *at_ == u'E' || *at_ == u'd' || *at_ == u'D')) return true;
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

NumberText textOf(std::int64_t value) {
  char digits[24];
  const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
  NumberText text;
  for (const char* at = digits; at < end; ++at) text.append(static_cast<char16_t>(*at));
  return text;
}

NumberText textOf(double value, const Locale& locale) {
  return textOfReal(value, doubleDigits, 1e15, locale);
}

NumberText textOf(float value, const Locale& locale) {
  return textOfReal(static_cast<double>(value), singleDigits, 1e7, locale);
}

NumberText textOfCurrency(std::int64_t tenThousandths, const Locale& locale) {
  return textOfDecimal(DecimalNumber::of(tenThousandths, 4), 20, locale);
}

std::optional<NumberReading> readNumber(StringView text, const Locale& locale) {
  std::optional<NumberReading> reading(std::in_place);
  if (!NumberReader(text, locale).read(*reading)) reading.reset();
  return reading;
}

}  // namespace zelUtilities
