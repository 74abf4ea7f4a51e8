// Texts on their way into the parser, which speaks UTF-8, and out of it.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "automation/String.h"

namespace zelUtilities {

// A text as UTF-8, piece by piece; a pair of surrogates may be parted by the end of a piece. What is no
// character of XML's becomes a control character, which the parser refuses: a NUL, which it would take for an
// end, and a lone surrogate.
class XmlSaxEncoder {
 public:
  // Good until the next call.
  std::string_view encode(StringView piece);
  // What is left when no more comes.
  std::string_view finish();

 private:
  char* encodeSlowly(char16_t unit, char* out);

  std::string buffer_;
  char16_t high_ = 0;  // the first half of a pair whose second has not come yet
};

// A text of the parser's as UTF-16.
class XmlSaxDecoder {
 public:
  // Good until the next call.
  StringView decode(std::string_view utf8);

 private:
  std::unique_ptr<char16_t[]> buffer_;
  std::size_t size_ = 0;
};

}  // namespace zelUtilities
