// XML text laid out by lines, without understanding it: tags are found by their angle brackets alone.
#pragma once

#include "automation/String.h"

namespace zelUtilities::mXML {

// One tag a line, four blanks for each level. Line ends, and blanks beside tags, are dropped first. Text
// stays behind its opening tag and is followed by the closing tag. A declaration, a comment or a processing
// instruction counts as an opening tag, so that all behind it stands one level deeper; the level does not go
// below 0. A "<" without ">" ends the work there. Positions are 16-bit numbers: a tag that would stand beyond
// 32767 in the result raises 6.
String FormatXML(StringView sXML);

}  // namespace zelUtilities::mXML
