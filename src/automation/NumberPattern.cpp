#include "automation/NumberPattern.h"

#include <algorithm>
#include <cstdlib>

#include "automation/NumberText.h"
#include "automation/PatternText.h"

namespace zelUtilities {

namespace {

bool isPlace(char16_t unit) { return unit == u'0' || unit == u'#'; }

// Whether an exponent stands here: E or e and a sign.
bool isExponent(StringView pattern) {
  return pattern.size() > 1 && (pattern[0] == u'E' || pattern[0] == u'e') &&
         (pattern[1] == u'+' || pattern[1] == u'-');
}

// What a section asks for as a whole; found before anything is written.
struct Layout {
  int wholePlaces = 0;
  int decimalPlaces = 0;
  int fixedDecimals = 0;  // up to the last 0 behind the point
  int scalingCommas = 0;
  bool thousands = false;
  bool percent = false;
  bool hasPoint = false;
  bool scientific = false;
};

Layout layoutOf(StringView section) {
  Layout layout;
  for (std::size_t at = 0; at < section.size();) {
    const StringView rest = section.substr(at);
    if (const std::size_t literal = literalLength(rest); literal != 0) {
      at += literal;
      continue;
    }
    const bool anyPlace = layout.wholePlaces + layout.decimalPlaces > 0;
    if (isPlace(rest[0]) && !layout.scientific) {
      if (layout.hasPoint) {
        ++layout.decimalPlaces;
        if (rest[0] == u'0') layout.fixedDecimals = layout.decimalPlaces;
      } else {
        ++layout.wholePlaces;
        layout.thousands = layout.thousands || layout.scalingCommas > 0;
        layout.scalingCommas = 0;
      }
    } else if (rest[0] == u'.') {
      layout.hasPoint = true;
    } else if (rest[0] == u',' && !layout.hasPoint) {
      ++layout.scalingCommas;
    } else if (rest[0] == u'%') {
      layout.percent = true;
    } else if (anyPlace && isExponent(rest)) {
      layout.scientific = true;
    }
    ++at;
  }
  return layout;
}

// Writes one number by one section.
class NumberWriter {
 public:
  NumberWriter(DecimalNumber number, StringView section, const Locale& locale, String& out)
      : number_(number), section_(section), layout_(layoutOf(section)), locale_(locale), out_(out) {
    if (layout_.percent) number_.scale(2);
    number_.scale(-3 * layout_.scalingCommas);
    if (layout_.scientific) {
      number_.roundToDigits(layout_.wholePlaces + layout_.decimalPlaces);
      if (!number_.isZero()) exponent_ = number_.point() - layout_.wholePlaces;
      number_.scale(-exponent_);
    } else {
      number_.roundTo(layout_.decimalPlaces);
    }
    wholeDigits_ = number_.isZero() ? 0 : std::max(number_.point(), 0);
  }

  void write() {
    for (StringView rest = section_; !rest.empty();) rest.remove_prefix(writeToken(rest));
  }

 private:
  std::size_t writeToken(StringView rest) {
    if (const std::size_t literal = literalLength(rest); literal != 0) {
      out_.append(literalText(rest.substr(0, literal)));
      return literal;
    }
    const char16_t unit = rest[0];
    if (isPlace(unit) && !exponentWritten_) {
      if (pointWritten_) {
        writeDecimal(unit == u'0');
      } else {
        writeWhole(unit == u'0');
      }
    } else if (unit == u'.' && !pointWritten_) {
      writePoint();
    } else if (layout_.scientific && !exponentWritten_ && place_ + decimal_ > 0 && isExponent(rest)) {
      return writeExponent(rest);
    } else if (unit != u',' || pointWritten_) {
      out_.push_back(unit);
    }
    return 1;
  }

  void writeWhole(bool zero) {
    // The first place takes all digits that have none of their own.
    const int places = layout_.wholePlaces - place_;  // from here on
    if (place_ == 0)
      for (int left = wholeDigits_; left > places; --left)
        writeWholeDigit(number_.digit(wholeDigits_ - left), left);
    ++place_;
    zeroes_ = zeroes_ || zero;
    if (places <= wholeDigits_) {
      writeWholeDigit(number_.digit(wholeDigits_ - places), places);
    } else if (zeroes_) {
      writeWholeDigit('0', places);
    }
  }

  // `left` counts the digits from this one to the point.
  void writeWholeDigit(char digit, int left) {
    out_.push_back(static_cast<char16_t>(digit));
    if (layout_.thousands && left > 1 && left % 3 == 1) out_.append(locale_.thousandsSeparator);
  }

  void writePoint() {
    if (layout_.wholePlaces == 0)
      for (int left = wholeDigits_; left > 0; --left)
        writeWholeDigit(number_.digit(wholeDigits_ - left), left);
    out_.append(locale_.decimalSeparator);
    pointWritten_ = true;
  }

  void writeDecimal(bool zero) {
    if (zero || decimal_ < std::max(number_.decimals(), layout_.fixedDecimals))
      out_.push_back(static_cast<char16_t>(number_.digit(number_.point() + decimal_)));
    ++decimal_;
  }

  std::size_t writeExponent(StringView rest) {
    std::size_t places = 0;
    std::size_t zeroes = 0;
    for (; places + 2 < rest.size() && isPlace(rest[places + 2]); ++places)
      if (rest[places + 2] == u'0') ++zeroes;
    out_.push_back(rest[0]);
    if (exponent_ < 0) {
      out_.append(locale_.negativeSign);
    } else if (rest[1] == u'+') {
      out_.push_back(u'+');
    }
    const NumberText digits = textOf(std::int64_t{std::abs(exponent_)});
    for (std::size_t i = digits.view().size(); i < zeroes; ++i) out_.push_back(u'0');
    out_.append(digits.view());
    exponentWritten_ = true;
    return places + 2;
  }

  DecimalNumber number_;
  StringView section_;
  Layout layout_;
  const Locale& locale_;
  String& out_;
  int exponent_ = 0;
  int wholeDigits_ = 0;
  int place_ = 0;    // places before the point written so far
  int decimal_ = 0;  // places behind it
  bool zeroes_ = false;
  bool pointWritten_ = false;
  bool exponentWritten_ = false;
};

}  // namespace

String formatNumber(const DecimalNumber& number, StringView pattern, const Locale& locale) {
  StringView section;
  if (number.isZero()) {
    section = patternSection(pattern, 2);
  } else if (number.negative()) {
    section = patternSection(pattern, 1);
  }
  String out;
  if (section.empty()) {
    section = patternSection(pattern, 0);
    if (number.negative() && !number.isZero() && !section.empty()) out.append(locale.negativeSign);
  }
  NumberWriter(number, section, locale, out).write();
  return out;
}

String formatCurrency(const DecimalNumber& number, const Locale& locale) {
  // n is the amount, $ the currency sign.
  static constexpr StringView positive[] = {u"$n", u"n$", u"$ n", u"n $"};
  static constexpr StringView negative[] = {u"($n)", u"-$n",  u"$-n",   u"$n-",  u"(n$)", u"-n$",
                                            u"n-$",  u"n$-",  u"-n $",  u"-$ n", u"n $-", u"$ n-",
                                            u"$ -n", u"n- $", u"($ n)", u"(n $)"};
  String amount;
  DecimalNumber magnitude = number;
  magnitude.setNegative(false);
  const String pattern = locale.currencyDigits > 0
                             ? u"#,##0." + String(static_cast<std::size_t>(locale.currencyDigits), u'0')
                             : u"#,##0";
  NumberWriter(magnitude, pattern, locale, amount).write();
  const bool isNegative = number.negative() && !number.isZero();
  const auto order =
      static_cast<std::size_t>(isNegative ? locale.negativeCurrencyOrder : locale.positiveCurrencyOrder);
  const StringView layout = isNegative ? negative[std::min(order, std::size(negative) - 1)]
                                       : positive[std::min(order, std::size(positive) - 1)];
  String out;
  for (const char16_t unit : layout) {
    switch (unit) {
      case u'n':
        out.append(amount);
        break;
      case u'$':
        out.append(locale.currencySymbol);
        break;
      case u'-':
        out.append(locale.negativeSign);
        break;
      default:
        out.push_back(unit);
    }
  }
  return out;
}

}  // namespace zelUtilities
