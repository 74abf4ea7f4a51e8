// Values for the differential test, the same in every run.
#pragma once

#include <cstdint>

#include "automation/Variant.h"

namespace zelUtilities::oracle {

class Generator {
 public:
  explicit Generator(std::uint64_t seed) : state_(seed) {}

  std::uint64_t bits();
  // From 0 to below the limit.
  template <class Whole>
  Whole below(Whole limit) {
    return static_cast<Whole>(bits() % static_cast<std::uint64_t>(limit));
  }
  // From 0 to below 1.
  double fraction();
  bool chance(int percent) { return below(100) < percent; }
  // Of texts divided by "|".
  String oneOf(StringView texts);

  // A number with few decimals, a half, a bound of some kind, or any bits at all.
  double number();
  // A number, Boolean or Empty of any kind.
  Variant numberValue();
  Variant date();

  // Mostly a number in one of the forms that conversions know; sometimes damaged.
  String numberText(StringView decimalSeparator, StringView thousandsSeparator, StringView currencySign);
  // Mostly a date, a time or both; sometimes damaged.
  String dateText(StringView monthNames);
  String numberPattern();
  String datePattern();
  String textPattern();

 private:
  String digits(int most);
  void damage(String& text);

  std::uint64_t state_;
};

}  // namespace zelUtilities::oracle
