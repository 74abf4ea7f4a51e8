#include "automation/PatternText.h"

namespace zelUtilities {

std::size_t literalLength(StringView pattern) {
  if (pattern.empty()) return 0;
  if (pattern[0] == u'\\') return pattern.size() > 1 ? 2 : 1;
  if (pattern[0] != u'"') return 0;
  const std::size_t end = pattern.find(u'"', 1);
  return end == StringView::npos ? pattern.size() : end + 1;
}

StringView literalText(StringView literal) {
  const bool closed = literal.size() > 1 && literal[0] == u'"' && literal.back() == u'"';
  return literal.substr(1, literal.size() - (closed ? 2 : 1));
}

StringView patternSection(StringView pattern, int index) {
  std::size_t start = 0;
  for (std::size_t at = 0; at <= pattern.size();) {
    if (at == pattern.size() || pattern[at] == u';') {
      if (index-- == 0) return pattern.substr(start, at - start);
      start = ++at;
    } else {
      const std::size_t literal = literalLength(pattern.substr(at));
      at += literal != 0 ? literal : 1;
    }
  }
  return {};
}

bool startsWithWord(StringView text, StringView lowerCase) {
  if (text.size() < lowerCase.size()) return false;
  for (std::size_t i = 0; i < lowerCase.size(); ++i)
    if (lowerLetter(text[i]) != lowerCase[i]) return false;
  return true;
}

char16_t lowerLetter(char16_t unit) { return unit >= u'A' && unit <= u'Z' ? unit + (u'a' - u'A') : unit; }

}  // namespace zelUtilities
