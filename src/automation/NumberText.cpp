#include "automation/NumberText.h"

#include <charconv>
#include <cmath>
#include <cstdlib>

#include "automation/DecimalNumber.h"

namespace zelUtilities {

namespace {

constexpr int doubleDigits = 15;
constexpr int singleDigits = 7;

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
  const int point = plain ? number.point() : 1;
  const auto count = static_cast<std::size_t>(number.count());
  const auto whole = static_cast<std::size_t>(point > 0 ? point : 0);
  if (whole == 0) text.append(u'0');
  text.append(number.digits(), whole < count ? whole : count);
  if (whole > count) text.append(whole - count, u'0');
  if (whole < count) {
    text.append(locale.decimalSeparator);
    if (point < 0) text.append(static_cast<std::size_t>(-point), u'0');
    text.append(number.digits() + whole, count - whole);
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

}  // namespace

NumberText textOf(std::int64_t value) {
  char digits[24];
  const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
  NumberText text;
  text.append(digits, static_cast<std::size_t>(end - digits));
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

}  // namespace zelUtilities
