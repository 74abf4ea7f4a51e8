// Escaping of XML text, handed on piece by piece, so that long texts are copied once.
#pragma once

#include <cstddef>

#include "automation/String.h"

namespace zelUtilities {

// How a reserved character is written: one of & < > ' and ".
StringView entityOf(char16_t reserved);

// Where the first unit at or after `at` stands that may be written otherwise; the size when there is none.
std::size_t plainEnd(StringView text, std::size_t at);

// Whether the reserved characters of a text are escaped: not in one that is numeric in the user's locale.
// `firstSpecial` is where its plain beginning ends.
bool escapesReserved(StringView text, std::size_t firstSpecial);

// A unit that is not plain as it is written, until the next one is made.
class EscapedUnit {
 public:
  StringView of(char16_t unit, bool escapesReserved);

 private:
  char16_t reference_[6];
};

// Calls append(StringView) for the pieces of the text escaped as mXML::ToXML does. `firstSpecial` is where
// its plain beginning ends, but not the text.
template <class Append>
void escapeTo(StringView text, std::size_t firstSpecial, const Append& append) {
  const bool escapes = escapesReserved(text, firstSpecial);
  EscapedUnit escaped;
  std::size_t done = 0;
  for (std::size_t at = firstSpecial; at < text.size(); at = plainEnd(text, done)) {
    append(text.substr(done, at - done));
    append(escaped.of(text[at], escapes));
    done = at + 1;
  }
  append(text.substr(done));
}

}  // namespace zelUtilities
