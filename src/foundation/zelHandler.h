// zelHandler: the logger that comes with the library, under the name "zelLog.zelHandler".
//
// It appends to two UTF-8 text files in the library's home: errors.log and trace.log. A report is one line,
// its fields separated by tabs: local time (2024-03-09 14:05:59), library, library version, procedure source,
// then of an error number, the error's own source, description and more information, of a trace line tag and
// message. Within a field, a backslash, tab, carriage return and line feed are written \\ \t \r \n and any
// other control character \x and two hexadecimal digits. A separator asked for by "SkipLine" is an empty
// line. Several processes and threads may write at once; their lines do not mix. The files grow until
// somebody removes them, which is safe at any time.
#pragma once

#include <cstdint>

#include "automation/ClassInfo.h"

namespace zelUtilities {

class zelHandler : public Object {
 public:
  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  // Raise the file error where the line cannot be written.
  void errorMessage(StringView sLibrary, StringView sVersion, StringView sProcedure, std::int32_t lNumber,
                    StringView sSource, StringView sDescription, StringView sMoreInfo);
  void TraceMessage(StringView sLibrary, StringView sVersion, StringView sSource, StringView sTag,
                    StringView sMessage);
};

}  // namespace zelUtilities
