#include "platform/FilePattern.h"

#include "automation/CaseFolding.h"

namespace zelUtilities {

bool hasWildcard(StringView name) { return name.find_first_of(u"*?") != StringView::npos; }

bool matchesPattern(StringView name, StringView pattern) {
  if (pattern == u"*.*") return true;
  std::size_t n = 0;
  std::size_t p = 0;
  std::size_t star = StringView::npos;  // the last * seen, and how much of the name it has taken
  std::size_t taken = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == u'*') {
      star = p++;
      taken = n;
    } else if (p < pattern.size() && (pattern[p] == u'?' || foldCase(pattern[p]) == foldCase(name[n]))) {
      ++p;
      ++n;
    } else if (star != StringView::npos) {
      p = star + 1;
      n = ++taken;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of(u'*', p) == StringView::npos;
}

}  // namespace zelUtilities
