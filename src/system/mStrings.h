// mStrings: operations on texts that several subsystems share.
//
// Failures are logged, under "mStrings." and the routine's name, and leave "".
#pragma once

#include "automation/String.h"

namespace zelUtilities::mStrings {

// The text before its first NUL, without the blanks around it.
String NullTrim(StringView sText);

// The text with every run of sDup brought down to one: "a    b" with " " gives "a b". An empty sDup leaves
// the text as it is.
String RemoveDups(StringView sSource, StringView sDup);

}  // namespace zelUtilities::mStrings
