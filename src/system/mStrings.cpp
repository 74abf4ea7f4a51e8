#include "system/mStrings.h"

#include <vector>

#include "foundation/Handled.h"

namespace zelUtilities::mStrings {

namespace {

// For every prefix of the pattern the longest shorter one that it ends with.
std::vector<std::size_t> bordersOf(StringView pattern) {
  std::vector<std::size_t> borders(pattern.size() + 1);
  std::size_t border = 0;
  for (std::size_t i = 1; i < pattern.size(); ++i) {
    while (border > 0 && pattern[i] != pattern[border]) border = borders[border];
    if (pattern[i] == pattern[border]) ++border;
    borders[i + 1] = border;
  }
  return borders;
}

// One pass gives what replacing the doubled text over and over would: behind a replaced pair the result ends
// with the text itself, which may be the first half of the next pair.
String withoutRepeats(StringView source, StringView text) {
  const String pair = String(text) + String(text);
  const std::vector<std::size_t> borders = bordersOf(pair);
  String result;
  result.reserve(source.size());
  std::size_t matched = 0;  // units of the pair that the result ends with
  for (const char16_t unit : source) {
    while (matched > 0 && unit != pair[matched]) matched = borders[matched];
    if (unit == pair[matched]) ++matched;
    result += unit;
    if (matched < pair.size()) continue;
    matched = text.size();
    result.resize(result.size() - text.size());
  }
  return result;
}

}  // namespace

String NullTrim(StringView sText) {
  String trimmed;
  handled(u"mStrings.NullTrim", [&] { trimmed = trimBlanks(sText.substr(0, sText.find(u'\0'))); });
  return trimmed;
}

String RemoveDups(StringView sSource, StringView sDup) {
  String text;
  handled(u"mStrings.RemoveDups", [&] {
    const bool mayRepeat = !sDup.empty() && sDup.size() <= sSource.size() / 2;
    text = mayRepeat ? withoutRepeats(sSource, sDup) : String(sSource);
  });
  return text;
}

}  // namespace zelUtilities::mStrings
