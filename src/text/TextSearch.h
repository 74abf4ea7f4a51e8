// TextSearch: finds one pattern again and again, each text in linear time whatever the pattern.
//
//   const TextSearch search(u"ab", TextSearch::Letters::AnyCase);
//   search.find(u"xAB", 0);                        // 1
//
// Letter case is disregarded by simple folding of UTF-16 units, the same in every locale.
// Positions here count from 0. The pattern must outlive the search.
#pragma once

#include <cstdint>
#include <vector>

#include "automation/String.h"

namespace zelUtilities {

class TextSearch {
 public:
  enum class Letters : bool { AsWritten, AnyCase };

  TextSearch(StringView pattern, Letters letters);
  TextSearch(const TextSearch&) = delete;
  TextSearch& operator=(const TextSearch&) = delete;

  // Where the pattern first stands at or after `from`; npos when nowhere, or when it is empty.
  std::size_t find(StringView text, std::size_t from) const;

 private:
  template <class Comparison>
  std::size_t findBy(StringView text, std::size_t from) const;

  String folded_;
  StringView pattern_;
  Letters letters_;
  // With n + 1 units matched and the next one different, how many of the last ones may still begin
  // a match.
  std::vector<std::uint32_t> restart_;
};

// The text with each occurrence of a pattern, as written, replaced, from left to right in one pass.
String replaceEach(StringView text, StringView pattern, StringView replacement);

}  // namespace zelUtilities
