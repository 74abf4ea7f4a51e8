// Values for the differential test, the same in every run.
#pragma once

#include <bit>
#include <cmath>
#include <random>

#include "automation/Conversions.h"
#include "automation/Locale.h"
#include "automation/Results.h"

namespace zelUtilities::oracle {

class Generator {
 public:
  // From 0 to below the limit. The standard distributions differ between libraries.
  template <class Whole>
  Whole below(Whole limit) {
    return static_cast<Whole>(bits_() % static_cast<std::uint64_t>(limit));
  }
  // From 0 to below 1.
  double fraction() { return static_cast<double>(bits_() >> 11) * 0x1p-53; }
  bool chance(int percent) { return below(100) < percent; }
  // One of the texts divided by "|", with digits for "?", always or in so many cases of a hundred.
  String any(StringView texts) {
    const std::vector<StringView> parts = partsOf(texts);
    String text(parts[below(parts.size())]);
    for (char16_t& unit : text)
      if (unit == u'?') unit = static_cast<char16_t>(u'0' + below(10));
    return text;
  }
  String maybe(int percent, StringView texts) { return chance(percent) ? any(texts) : String(); }

  // A number with few decimals, a half, a bound of some kind, or any bits at all.
  double number() {
    static constexpr StringView bounds =
        u"0|127|128|255|256|32767|32768|65535|2147483647|2147483648|922337203685477|922337203685478|"
        u"2958465|2958466|657434|657435|1e14|1e15|999999999999999|34028234663852886e22|35e37";
    const double sign = chance(40) ? -1 : 1;
    const int choice = below(6);
    if (choice == 0) return sign * below(1000);
    if (choice == 1) return sign * (below(100000) + 0.5);
    if (choice == 2) return sign * std::floor(std::pow(10, below(11)) * fraction()) / std::pow(10, below(12));
    if (choice == 3) return sign * (toDouble(any(bounds)) + 0.25 * (below(5) - 2));
    if (choice == 4) return sign * std::ldexp(fraction(), below(160) - 67);
    const auto random = std::bit_cast<double>(std::uint64_t{bits_()});
    return std::isfinite(random) ? random : 1 / 3.0;
  }
  // A number, Boolean or Empty of any kind.
  Variant numberValue() {
    const int choice = below(9);
    if (choice == 0) return static_cast<std::uint8_t>(bits_());
    if (choice == 1) return static_cast<std::int16_t>(bits_());
    if (choice == 2) return static_cast<std::int32_t>(bits_()) >> below(32);
    if (choice == 3) {
      const auto narrow = static_cast<float>(number());
      return std::isfinite(narrow) ? narrow : 0.5F;
    }
    if (choice == 4) return Variant::currency(static_cast<std::int64_t>(bits_()) >> below(64));
    if (choice == 5) return chance(50);
    return choice == 6 && chance(20) ? Variant() : Variant(number());
  }
  Variant date() {
    const int day = chance(20) ? below(5) - 2 : below(2958465 + 657434) - 657434;
    double time = fraction();
    if (chance(70)) time = std::floor(time * 86400) / 86400;
    if (chance(20)) time = chance(90) ? 0 : 1 - 0x1p-20;
    return Variant::date(day < 0 ? day - time : day + time);
  }

  // Mostly a number in one of the forms that conversions know, by the locale; sometimes damaged.
  String numberText() {
    const Locale& locale = currentLocale();
    String text =
        maybe(40, u" |\t") + maybe(5, u"(") + maybe(30, u"-|-|+|- ") + maybe(10, locale.currencySymbol) +
        any(u"0|0??|?|??|???|????|?????|??????|??????????????????") + maybe(10, locale.thousandsSeparator) +
        maybe(50, u"?|???") + maybe(50, locale.decimalSeparator) +
        maybe(80, u"?|??|???|????|?????|?????????????????????") + maybe(10, u"e?|E?|E+?|e-?|E???") +
        maybe(3, u"-|+| -") + maybe(5, locale.currencySymbol);
    if (text.find(u'(') != String::npos) text += u")";
    if (chance(2)) text = any(u"&H|&h|&O") + any(u"?|??|????|??????|????????");
    return damaged(15, text + maybe(10, u" "));
  }
  // Mostly a date, a time or both; sometimes damaged.
  String dateText(const String& monthNames) {
    const String numbers = u"?|?|?|?|10|11|12|??|1???|20??";
    const auto part = [&] { return any(chance(10) ? monthNames : numbers); };
    const String divider = any(u"/|/|-| |, |.| / ");
    const String date = part() + divider + part() + (chance(80) ? divider + part() : String());
    const String time = any(u"?|1?|2?") + maybe(70, u":??|:1?|:2?|.3?") + maybe(40, u":??|:0?|.5?") +
                        maybe(40, u" AM| PM|am|p| a");
    const String both[] = {date, time, date + u" " + time, time + u" " + date};
    return damaged(10, chance(50) ? date : both[below(4)]);
  }

  String numberPattern() {
    if (chance(10))
      return any(u"General Number|Currency|Fixed|Standard|Percent|Scientific|Yes/No|True/False|On/Off");
    const auto section = [this] {
      return maybe(70, u"$|(|\"a0\"|\\#|+ ") + any(u"0|#|#0|####0|000|#,##0|#,#|0,000|0-00|##00##") +
             maybe(60, u".|.0|.00|.#|.0#|.000##|.#0#|.00000000") + maybe(15, u"E+0|E-00|e+00|e-0|E+###") +
             maybe(60, u" x|)|\" 0\"|\\0") + maybe(10, u"%");
    };
    String text = section();
    if (chance(25)) text += u";" + section();
    return text + maybe(10, u";|;\"zero\"|;0.0");
  }
  String datePattern() {
    if (chance(10))
      return any(u"General Date|Long Date|Medium Date|Short Date|Long Time|Medium Time|Short Time|c");
    String text;
    for (int i = below(6) + 1; i > 0; --i)
      text +=
          any(u"d|dd|ddd|dddd|m|mm|mmm|mmmm|yy|yyyy|y|h|hh|n|nn|s|ss|w|q|ddddd|dddddd|YYYY|MM|Hh|DDD|Nn") +
          any(u"/|-|:| |\\x|\"d\"|, ");
    return text + maybe(10, u"AM/PM|am/pm|A/P|a/p|AMPM|ww|ttttt|c");
  }
  String textPattern() {
    String text = any(u"||!|<|>");
    for (int i = below(8) + 1; i > 0; --i) text += any(u"@|@|&|-|\\@|\"x\"");
    if (text.find_first_of(u"@&<>!") == String::npos) text += u"@";
    return text + maybe(10, u";none");
  }

 private:
  String damaged(int percent, String text) {
    static constexpr StringView units = u"0123456789.,-+$()eE :/ x%&Hd";
    while (chance(percent))
      text.replace(below(text.size() + 1), chance(50) ? 1 : 0, chance(50) ? 1 : 0,
                   units[below(units.size())]);
    return text;
  }

  std::mt19937_64 bits_;
};

}  // namespace zelUtilities::oracle
