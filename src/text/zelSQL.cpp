#include "text/zelSQL.h"

#include "automation/Binder.h"

namespace zelUtilities {

const ClassInfo& zelSQL::describeClass() {
  static const ClassInfo info =
      describeFunctions("zelSQL", "Functions that write literals of SQL.")
          .function("zel_SQLBoolean", &zel_SQLBoolean, {"vValue"},
                    "Formats a boolean value to be used in an SQL statement.")
          .function("zel_SQLDate", &zel_SQLDate, {"vValue"}, "Formats a date for use in an SQL statement.")
          .function("zel_SQLNumber", &zel_SQLNumber, {"vValue", arg("bUseNull") = false},
                    "Formats a number for use in a SQL statement.")
          .function("zel_SQLString", &zel_SQLString,
                    {"vValue", arg("bUseNull") = false, arg("bTrimString") = true,
                     arg("bPreserveDupSpaces") = true},
                    "Formats a string for use in an SQL statement.")
          // Sic: the help text ends there.
          .function("zel_SQLWhere", &zel_SQLWhere, {"sWhere"},
                    "Formats a WHERE clause for use in an SQL statment."
                    "This function will truncate extra ")
          .function("zel_SQLBinary", &zel_SQLBinary, {"sValue"},
                    "Formats a string value for insertion into SQL, escaping binary data.");
  return info;
}

}  // namespace zelUtilities
