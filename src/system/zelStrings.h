// zelStrings: the global operations on texts.
//
//   zel_JoinStrings(u"a", u"b", u", ")      "a, b";  "a" where either is empty
//   zel_RemoveDups(u"a--b---c", u"-")       "a-b-c"
//
// They keep no state. Failures are logged and leave "".
#pragma once

#include "automation/ClassInfo.h"
#include "automation/String.h"

namespace zelUtilities {

// Both values with the text between them; where either is empty just the other one.
String zel_JoinStrings(StringView sValue1, StringView sValue2, StringView sJoinString = u" ");

// As in mStrings.h.
String zel_NullTrim(StringView sText);
String zel_RemoveDups(StringView sSource, StringView sDup);

namespace zelStrings {
const ClassInfo& describeClass();
}

}  // namespace zelUtilities
