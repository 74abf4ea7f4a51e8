#include "system/zelStrings.h"

#include "automation/Binder.h"
#include "foundation/Handled.h"
#include "system/mStrings.h"

namespace zelUtilities {

String zel_JoinStrings(StringView sValue1, StringView sValue2, StringView sJoinString) {
  String joined;
  handled(u"zelStrings.zel_JoinStrings", [&] {
    joined = sValue1;
    if (!sValue1.empty() && !sValue2.empty()) joined += sJoinString;
    joined += sValue2;
  });
  return joined;
}

String zel_NullTrim(StringView sText) { return mStrings::NullTrim(sText); }

String zel_RemoveDups(StringView sSource, StringView sDup) { return mStrings::RemoveDups(sSource, sDup); }

const ClassInfo& zelStrings::describeClass() {
  static const ClassInfo info =
      describeFunctions("zelStrings", "Functions that work on strings.")
          .function("zel_JoinStrings", &zel_JoinStrings, {"sValue1", "sValue2", arg("sJoinString") = u" "},
                    "Joins two strings, with a third between them where neither is empty.")
          .function("zel_NullTrim", &zel_NullTrim, {"sText"}, "Strips any nulls, Chr(0), off of a string.")
          .function("zel_RemoveDups", &zel_RemoveDups, {"sSource", "sDup"},
                    "Removes duplicate occurrances of a character string from another string.");
  return info;
}

}  // namespace zelUtilities
