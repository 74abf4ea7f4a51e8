// Text as the library keeps it: UTF-16 throughout; an unset string and "" are the same.
#pragma once

#include <string>
#include <string_view>

namespace zelUtilities {

using String = std::u16string;
using StringView = std::u16string_view;

// UTF-8 is spoken only at the edges (command line, file names on Linux, test output).
// An ill-formed sequence becomes U+FFFD; a lone surrogate is written as U+FFFD.
String fromUtf8(std::string_view utf8);
std::string toUtf8(StringView text);

// Removes blanks (U+0020 only) from both ends.
StringView trimBlanks(StringView text);

// The decimal digits of a whole number.
String decimalText(long long value);

}  // namespace zelUtilities
