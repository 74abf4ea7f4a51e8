#include "text/TextSearch.h"

#include "automation/CaseFolding.h"

namespace zelUtilities {

namespace {

std::vector<std::uint32_t> restarts(StringView pattern) {
  std::vector<std::uint32_t> restart(pattern.size());
  std::uint32_t matched = 0;
  for (std::size_t at = 1; at < pattern.size(); ++at) {
    while (matched > 0 && pattern[at] != pattern[matched]) matched = restart[matched - 1];
    if (pattern[at] == pattern[matched]) ++matched;
    restart[at] = matched;
  }
  return restart;
}

// The first position at or after `at` that may begin a match.
struct AsWritten {
  static char16_t unit(char16_t written) { return written; }
  static std::size_t skip(StringView text, std::size_t at, char16_t first) {
    constexpr std::size_t block = 16;  // compared together by vector instructions
    for (; at + block <= text.size(); at += block) {
      std::uint16_t hits = 0;
      for (std::size_t i = 0; i < block; ++i) hits |= static_cast<std::uint16_t>(-(text[at + i] == first));
      if (hits != 0) break;
    }
    while (at < text.size() && text[at] != first) ++at;
    return at;
  }
};
struct AnyCase {
  static char16_t unit(char16_t written) { return foldCase(written); }
  static std::size_t skip(StringView text, std::size_t at, char16_t first) {
    while (at < text.size() && foldCase(text[at]) != first) ++at;
    return at;
  }
};

}  // namespace

TextSearch::TextSearch(StringView pattern, Letters letters)
    : folded_(letters == Letters::AnyCase ? foldCase(pattern) : String()),
      pattern_(letters == Letters::AnyCase ? StringView(folded_) : pattern),
      letters_(letters),
      restart_(restarts(pattern_)) {}

std::size_t TextSearch::find(StringView text, std::size_t from) const {
  if (pattern_.empty()) return StringView::npos;
  return letters_ == Letters::AnyCase ? findBy<AnyCase>(text, from) : findBy<AsWritten>(text, from);
}

template <class Comparison>
std::size_t TextSearch::findBy(StringView text, std::size_t from) const {
  std::size_t matched = 0;
  for (std::size_t at = from; at < text.size(); ++at) {
    if (matched == 0) {
      at = Comparison::skip(text, at, pattern_.front());
      if (at == text.size()) break;
    }
    const char16_t unit = Comparison::unit(text[at]);
    while (matched > 0 && unit != pattern_[matched]) matched = restart_[matched - 1];
    if (unit == pattern_[matched]) ++matched;
    if (matched == pattern_.size()) return at + 1 - matched;
  }
  return StringView::npos;
}

String replaceEach(StringView text, StringView pattern, StringView replacement) {
  String out;
  if (pattern.empty()) return out.append(text);
  std::size_t done = 0;
  for (std::size_t at = text.find(pattern); at != StringView::npos; at = text.find(pattern, done)) {
    out.append(text, done, at - done).append(replacement);
    done = at + pattern.size();
  }
  return out.append(text.substr(done));
}

}  // namespace zelUtilities
