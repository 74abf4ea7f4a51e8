#include "automation/LeadingNumber.h"

#include <algorithm>
#include <optional>

#include "automation/DecimalNumber.h"
#include "automation/Error.h"
#include "automation/UnitKinds.h"

namespace zelUtilities {

namespace {

constexpr char16_t atEnd = 0;  // a NUL ends a number as well

class LeadingNumberReader {
 public:
  explicit LeadingNumberReader(StringView text) : rest_(text) { skip(); }

  std::optional<double> read() {
    number_.setNegative(takeSign());
    bool any = readDigits(false);
    if (unit() == u'.') {
      advance();
      any = readDigits(true) || any;
    }
    if (any) readExponent();
    number_.trim();
    return number_.toDouble();
  }

 private:
  char16_t unit() const { return rest_.empty() ? atEnd : rest_[0]; }
  void skip() { rest_.remove_prefix(std::min(rest_.find_first_not_of(u" \t\r\n"), rest_.size())); }
  void advance() {
    rest_.remove_prefix(1);
    skip();
  }

  // Whether it is a minus.
  bool takeSign() {
    const bool minus = unit() == u'-';
    if (minus || unit() == u'+') advance();
    return minus;
  }

  bool readDigits(bool behindPoint) {
    const bool any = isDigit(unit());
    for (; isDigit(unit()); advance()) number_.append(static_cast<char>(unit()), behindPoint);
    return any;
  }

  void readExponent() {
    constexpr int farExponent = 100000;  // exponents beyond this say enough
    const char16_t letter = unit() | 0x20;
    if (letter != u'e' && letter != u'd') return;
    advance();
    const bool negative = takeSign();
    int exponent = 0;
    for (; isDigit(unit()); advance())
      if (exponent < farExponent) exponent = exponent * 10 + (unit() - u'0');
    number_.scale(negative ? -exponent : exponent);
  }

  StringView rest_;
  DecimalNumber number_;
};

}  // namespace

double leadingNumber(StringView text) {
  const std::optional<double> value = LeadingNumberReader(text).read();
  if (!value) throw Error(ErrorNumber::Overflow);
  return *value;
}

}  // namespace zelUtilities
