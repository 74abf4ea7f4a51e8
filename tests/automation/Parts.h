// The texts that "|" divides.
//
//   for (const StringView text : partsOf(u"1|2|")) ...        // "1", "2" and ""
#pragma once

#include <vector>

#include "automation/String.h"

namespace zelUtilities {

inline std::vector<StringView> partsOf(StringView texts) {
  std::vector<StringView> parts;
  std::size_t end;
  while ((end = texts.find(u'|')) != StringView::npos) {
    parts.push_back(texts.substr(0, end));
    texts.remove_prefix(end + 1);
  }
  parts.push_back(texts);
  return parts;
}

}  // namespace zelUtilities
