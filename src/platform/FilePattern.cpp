#include "platform/FilePattern.h"

#include <vector>

#include "automation/CaseFolding.h"

namespace zelUtilities {

namespace {

// What a pattern's characters become, by what stands beside them. No name holds these characters.
constexpr char16_t upToLastDot = u'<';   // any characters, but not past the last dot
constexpr char16_t atMostOne = u'>';     // one character, but none before a dot or at the end
constexpr char16_t dotOrNothing = u'"';  // a dot, or nothing at the end

String asMatched(StringView pattern) {
  if (pattern == u"*.*") return u"*";
  const bool endsInDot = pattern.ends_with(u'.');
  String units(pattern.substr(0, pattern.find_last_not_of(u'.') + 1));
  for (std::size_t i = 0; i < units.size(); ++i) {
    if (i > 0 && units[i] == u'.' && units[i - 1] == u'*') units[i - 1] = upToLastDot;
    if (units[i] != u'?' && units[i] != u'*') continue;
    if (units[i] == u'?') units[i] = atMostOne;
    if (i > 0 && units[i - 1] == u'.') units[i - 1] = dotOrNothing;
  }
  if (endsInDot && units.ends_with(u'*')) units.back() = upToLastDot;
  return units;
}

// Walks over the name with all positions in the pattern that the characters so far may have led to.
class Matcher {
 public:
  Matcher(StringView name, StringView pattern)
      : name_(name),
        lastDot_(name.rfind(u'.')),
        pattern_(asMatched(pattern)),
        here_(pattern_.size() + 1),
        next_(pattern_.size() + 1) {}

  bool matches() {
    here_[0] = true;
    for (std::size_t at = 0; at < name_.size(); ++at) {
      next_.assign(next_.size(), false);
      for (std::size_t p = 0; p < pattern_.size(); ++p)
        if (here_[p]) step(at, p);
      here_.swap(next_);
    }
    for (std::size_t p = 0; p < pattern_.size(); ++p)
      if (here_[p] && mayStandForNothing(name_.size(), pattern_[p])) here_[p + 1] = true;
    return here_[pattern_.size()];
  }

 private:
  bool mayStandForNothing(std::size_t at, char16_t unit) const {
    const bool atEnd = at == name_.size();
    if (unit == u'*' || unit == upToLastDot) return true;
    return unit == atMostOne ? atEnd || name_[at] == u'.' : unit == dotOrNothing && atEnd;
  }
  void step(std::size_t at, std::size_t p) {
    const char16_t unit = pattern_[p];
    if (mayStandForNothing(at, unit)) here_[p + 1] = true;
    if (unit == u'*' || (unit == upToLastDot && at != lastDot_)) {
      next_[p] = true;
    } else if (takes(unit, name_[at])) {
      next_[p + 1] = true;
    }
  }
  static bool takes(char16_t unit, char16_t character) {
    if (unit == atMostOne) return character != u'.';
    if (unit == dotOrNothing) return character == u'.';
    return foldCase(unit) == foldCase(character);
  }

  StringView name_;
  std::size_t lastDot_;
  String pattern_;
  std::vector<bool> here_;
  std::vector<bool> next_;
};

}  // namespace

bool hasWildcard(StringView name) { return name.find_first_of(u"*?") != StringView::npos; }

bool matchesPattern(StringView name, StringView pattern) {
  if (pattern == u"*" || pattern == u"*.*") return true;
  if (!hasWildcard(pattern)) return equalFolded(name, pattern);
  return Matcher(name, pattern).matches();
}

}  // namespace zelUtilities
