#include "automation/windows/Generator.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "automation/Conversions.h"

namespace zelUtilities::oracle {

constexpr StringView bounds =
    u"0|127|128|255|256|32767|32768|65535|2147483647|2147483648|922337203685477|922337203685478|"
    u"2958465|2958466|657434|657435|1e14|1e15|999999999999999|34028234663852886e22|35e37";

std::uint64_t Generator::bits() {
  // The splitmix64 sequence: the standard distributions differ between libraries.
  std::uint64_t mixed = state_ += 0x9E3779B97F4A7C15ULL;
  mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9ULL;
  mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBULL;
  return mixed ^ (mixed >> 31);
}

String Generator::oneOf(StringView texts) {
  auto place = below(std::count(texts.begin(), texts.end(), u'|') + 1);
  while (place-- > 0) texts.remove_prefix(texts.find(u'|') + 1);
  return String(texts.substr(0, texts.find(u'|')));
}

double Generator::fraction() { return static_cast<double>(bits() >> 11) * 0x1p-53; }

double Generator::number() {
  const double sign = chance(40) ? -1 : 1;
  const int choice = below(6);
  if (choice == 0) return sign * below(1000);
  if (choice == 1) return sign * (below(100000) + 0.5);
  if (choice == 2) return sign * std::floor(std::pow(10, below(11)) * fraction()) / std::pow(10, below(12));
  if (choice == 3) return sign * (toDouble(oneOf(bounds)) + 0.25 * (below(5) - 2));
  if (choice == 4) return sign * std::ldexp(static_cast<double>(bits() >> 11), below(160) - 120);
  const auto any = std::bit_cast<double>(bits());
  return std::isfinite(any) ? any : 1 / 3.0;
}

Variant Generator::numberValue() {
  const int choice = below(9);
  if (choice == 0) return static_cast<std::uint8_t>(bits());
  if (choice == 1) return static_cast<std::int16_t>(bits());
  if (choice == 2) return static_cast<std::int32_t>(bits()) >> below(32);
  if (choice == 3) {
    const auto narrow = static_cast<float>(number());
    return std::isfinite(narrow) ? narrow : 0.5F;
  }
  if (choice == 4) return Variant::currency(static_cast<std::int64_t>(bits()) >> below(64));
  if (choice == 5) return chance(50);
  return choice == 6 && chance(20) ? Variant() : Variant(number());
}

Variant Generator::date() {
  const int day = chance(20) ? below(5) - 2 : below(2958465 + 657434) - 657434;
  double time = fraction();
  if (chance(70)) time = std::floor(time * 86400) / 86400;
  if (chance(20)) time = chance(90) ? 0 : 1 - 0x1p-20;
  return Variant::date(day < 0 ? day - time : day + time);
}

String Generator::digits(int most) {
  String text;
  for (int i = below(most) + 1; i > 0; --i) text.push_back(static_cast<char16_t>(u'0' + below(10)));
  return text;
}

void Generator::damage(String& text) {
  static constexpr StringView units = u"0123456789.,-+$()eE :/ x%&Hd";
  for (int i = below(2) + 1; i > 0; --i) {
    const std::size_t at = below(text.size() + 1);
    if (chance(50) || at == text.size())
      text.insert(at, 1, units[below(units.size())]);
    else
      text.erase(at, 1);
  }
}

String Generator::numberText(StringView decimalSeparator, StringView thousandsSeparator,
                             StringView currencySign) {
  String text = oneOf(u"||| |\t");
  const bool parentheses = chance(5);
  if (parentheses) text += u"(";
  const bool sign = chance(30);
  if (sign) text += oneOf(u"-|-|+|- ");
  const bool currency = chance(10);
  if (currency) text += currencySign;
  text += digits(chance(90) ? 6 : 25);
  if (chance(10)) text += String(thousandsSeparator) + digits(3);
  if (chance(50)) text += String(decimalSeparator) + digits(chance(80) ? 5 : 25);
  if (chance(10)) text += oneOf(u"e|E|E+|e-") + digits(chance(80) ? 1 : 3);
  if (!sign && chance(5)) text += oneOf(u"-|+| -");
  if (!currency && chance(5)) text += currencySign;
  if (parentheses) text += u")";
  if (chance(10)) text += u" ";
  if (chance(2)) text = oneOf(u"&H|&h|&O") + digits(8);
  if (chance(15)) damage(text);
  return text;
}

String Generator::dateText(StringView monthNames) {
  const auto part = [this] {
    return chance(15)   ? decimalText(below(4000))
           : chance(80) ? decimalText(1 + below(12))
                        : decimalText(below(100));
  };
  String date;
  const String separator = oneOf(u"/|/|-| |, |.| / ");
  const int parts = chance(80) ? 3 : 2;
  const int named = chance(30) ? below(parts) : -1;
  for (int i = 0; i < parts; ++i) {
    if (i > 0) date += separator;
    date += i == named ? oneOf(monthNames) : part();
  }
  String time = decimalText(below(26));
  for (int i = below(3); i > 0; --i) time += oneOf(u":|:|:|.") + decimalText(below(62));
  if (chance(40)) time += oneOf(u" AM| PM|am|p| a");
  String text = chance(50) ? date : chance(30) ? time : chance(70) ? date + u" " + time : time + u" " + date;
  if (chance(10)) damage(text);
  return text;
}

String Generator::numberPattern() {
  if (chance(10))
    return oneOf(u"General Number|Currency|Fixed|Standard|Percent|Scientific|Yes/No|True/False|On/Off");
  const auto section = [this] {
    String text = oneOf(u"||$|(|\"a0\"|\\#|+ ");
    text += oneOf(u"0|#|#0|####0|000|#,##0|#,#|0,000|0-00|##00##");
    if (chance(60)) text += u".";
    if (text.back() == u'.') text += oneOf(u"0|00|#|0#|000##|#0#0|00000000");
    if (chance(15)) text += oneOf(u"E+0|E-00|e+00|e-0|E+###");
    text += oneOf(u"||| x|)|\" 0\"|\\0");
    if (chance(10)) text += u"%";
    return text;
  };
  String text = section();
  if (chance(25)) text += u";" + section();
  if (chance(10)) text += u";" + oneOf(u"|\"zero\"|0.0");
  return text;
}

String Generator::datePattern() {
  if (chance(10))
    return oneOf(u"General Date|Long Date|Medium Date|Short Date|Long Time|Medium Time|Short Time|c");
  String text;
  for (int i = below(6) + 1; i > 0; --i) {
    text += oneOf(u"d|dd|ddd|dddd|m|mm|mmm|mmmm|yy|yyyy|y|h|hh|n|nn|s|ss|w|q|ddddd|dddddd|YYYY|MM|Hh|DDD|Nn");
    text += oneOf(u"/|-|:| |\\x|\"d\"|, ");
  }
  if (chance(10)) text += oneOf(u"AM/PM|am/pm|A/P|a/p|AMPM|ww|ttttt|c");
  return text;
}

String Generator::textPattern() {
  String text = oneOf(u"||!|<|>");
  for (int i = below(8) + 1; i > 0; --i) text += oneOf(u"@|@|&|-|\\@|\"x\"");
  if (text.find_first_of(u"@&<>!") == String::npos) text += u"@";
  if (chance(10)) text += u";none";
  return text;
}

}  // namespace zelUtilities::oracle
