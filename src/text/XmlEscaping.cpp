#include "text/XmlEscaping.h"

#include <algorithm>
#include <array>
#include <cstdint>
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

// So many units are looked at together; the compiler makes that a few instructions.
constexpr std::size_t block = 16;
constexpr std::size_t halfBlock = block / 2;
constexpr std::size_t quarterBlock = block / 4;

template <std::size_t count>
bool isPlainBlock(const char16_t* units) {
  std::uint16_t special = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const std::uint16_t unit = units[i];
    special |= static_cast<std::uint16_t>(((unit | 1) == u'\'') | ((unit | 2) == u'>') | (unit == u'"') |
                                          (unit >= firstNumeric));
  }
  return special == 0;
}

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

// Whether numbers of the user's locale may hold the character: some part thousands by an apostrophe.
bool occursInNumbers(char16_t reserved) {
  const Locale& locale = currentLocale();
  const auto symbols = {&locale.decimalSeparator, &locale.thousandsSeparator, &locale.currencySymbol,
                        &locale.positiveSign, &locale.negativeSign};
  return std::any_of(symbols.begin(), symbols.end(),
                     [reserved](const String* symbol) { return symbol->find(reserved) != String::npos; });
}

}  // namespace

std::size_t plainEnd(StringView text, std::size_t at) {
  const char16_t* const units = text.data();
  const char16_t* const end = units + text.size();
  while (text.size() - at >= block && isPlainBlock<block>(units + at)) at += block;
  if (text.size() - at >= halfBlock && isPlainBlock<halfBlock>(units + at)) at += halfBlock;
  // Most texts are short, or end within a block: what is left is looked at in blocks that overlap.
  const std::size_t left = text.size() - at;
  if (left == 0) return at;
  if (left < halfBlock && text.size() >= halfBlock && isPlainBlock<halfBlock>(end - halfBlock))
    return text.size();
  if (text.size() < halfBlock && left >= quarterBlock && isPlainBlock<quarterBlock>(units + at) &&
      isPlainBlock<quarterBlock>(end - quarterBlock))
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
  // A code below that is none, or that of an ASCII look-alike.
  const std::uint8_t code = unit < firstNumeric ? std::uint8_t{0} : narrowUnit(unit);
  if (code < firstNumeric) return {reference_, 1};
  // From 128 to 255: three digits.
  const auto digit = [code](int place) { return static_cast<char16_t>(u'0' + code / place % 10); };
  const char16_t reference[] = {u'&', u'#', digit(100), digit(10), digit(1), u';'};
  std::copy(std::begin(reference), std::end(reference), reference_);
  return {reference_, std::size(reference)};
}

}  // namespace zelUtilities
