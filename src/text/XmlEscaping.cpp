#include "text/XmlEscaping.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <iterator>

#include "automation/Conversions.h"
#include "automation/Locale.h"
#include "platform/Locale.h"

namespace zelUtilities {

namespace {

constexpr char16_t firstNumeric = 128;  // codes from here on become numeric references

// & and ', < and > differ in one bit each.
constexpr bool isSpecial(char16_t unit) {
  return (unit | 1) == u'\'' || (unit | 2) == u'>' || unit == u'"' || unit >= firstNumeric;
}

constexpr auto isSpecialAscii = [] {
  std::array<bool, firstNumeric> special{};
  for (char16_t unit = 0; unit < firstNumeric; ++unit) special[unit] = isSpecial(unit);
  return special;
}();

// So many units are looked at together, in vectors of the compiler's.
constexpr std::size_t block = 8;
constexpr std::size_t halfBlock = block / 2;
using Units = std::uint16_t __attribute__((vector_size(block * 2)));

constexpr Units vectorOf(std::uint16_t unit) { return Units{unit, unit, unit, unit, unit, unit, unit, unit}; }

bool isPlain(Units units) {
  const auto reserved = ((units | vectorOf(1)) == vectorOf(u'\'')) |
                        ((units | vectorOf(2)) == vectorOf(u'>')) | (units == vectorOf(u'"'));
  std::uint64_t words[4];
  const Units notAscii = units & vectorOf(0xFFFF - (firstNumeric - 1));
  static_assert(sizeof words == sizeof reserved + sizeof notAscii);
  std::memcpy(words, &reserved, sizeof reserved);
  std::memcpy(words + 2, &notAscii, sizeof notAscii);
  return (words[0] | words[1] | words[2] | words[3]) == 0;
}

bool isPlainBlock(const char16_t* from) {
  Units units;
  std::memcpy(&units, from, sizeof units);
  return isPlain(units);
}

// Two half blocks, which may overlap.
bool arePlainHalves(const char16_t* first, const char16_t* second) {
  std::uint64_t words[2];
  std::memcpy(&words[0], first, sizeof words[0]);
  std::memcpy(&words[1], second, sizeof words[1]);
  Units units;
  std::memcpy(&units, words, sizeof units);
  return isPlain(units);
}

// The unit's code in the system's code page; 0 where it has none. There a look-alike's code may be had (that
// of a sharp s for a beta), which would be read back as the look-alike.
std::uint8_t codeOf(char16_t unit) {
  const std::uint8_t code = narrowUnit(unit);
  const char byte = static_cast<char>(code);
  return widen({&byte, 1}) == StringView(&unit, 1) ? code : std::uint8_t{0};
}

// Whether numbers of the user's locale may hold the character: some part thousands by an apostrophe.
bool occursInNumbers(char16_t reserved) {
  const Locale& locale = currentLocale();
  const auto symbols = {&locale.decimalSeparator, &locale.thousandsSeparator, &locale.currencySymbol,
                        &locale.positiveSign, &locale.negativeSign};
  return std::any_of(symbols.begin(), symbols.end(),
                     [reserved](const String* symbol) { return symbol->find(reserved) != String::npos; });
}

}  // namespace

StringView entityOf(char16_t reserved) {
  switch (reserved) {
    case u'&':
      return u"&amp;";
    case u'<':
      return u"&lt;";
    case u'>':
      return u"&gt;";
    case u'\'':
      return u"&apos;";
    default:
      return u"&quot;";
  }
}

std::size_t plainEnd(StringView text, std::size_t at) {
  const char16_t* const units = text.data();
  const char16_t* const end = units + text.size();
  while (text.size() - at >= block && isPlainBlock(units + at)) at += block;
  // Most texts are short, or end within a block: what is left is looked at in blocks that overlap.
  const std::size_t left = text.size() - at;
  if (left == 0) return at;
  if (left < block && text.size() >= block && isPlainBlock(end - block)) return text.size();
  if (text.size() < block && left >= halfBlock && arePlainHalves(units + at, end - halfBlock))
    return text.size();
  while (at < text.size() && text[at] < firstNumeric && !isSpecialAscii[text[at]]) ++at;
  return at;
}

bool escapesReserved(StringView text, std::size_t firstSpecial) {
  if (text.size() == 1) return true;  // no digit
  const char16_t unit = text[firstSpecial];
  if (unit < firstNumeric && !occursInNumbers(unit)) return true;
  return !isNumeric(text);
}

StringView EscapedUnit::of(char16_t unit, bool escapesReserved) {
  if (unit < firstNumeric && escapesReserved) return entityOf(unit);
  reference_[0] = unit;
  const std::uint8_t code = unit < firstNumeric ? std::uint8_t{0} : codeOf(unit);
  if (code < firstNumeric) return {reference_, 1};
  // From 128 to 255: three digits.
  const auto digit = [code](int place) { return static_cast<char16_t>(u'0' + code / place % 10); };
  const char16_t reference[] = {u'&', u'#', digit(100), digit(10), digit(1), u';'};
  std::copy(std::begin(reference), std::end(reference), reference_);
  return {reference_, std::size(reference)};
}

}  // namespace zelUtilities
