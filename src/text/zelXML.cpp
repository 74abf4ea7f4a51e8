#include "text/zelXML.h"

#include "automation/Binder.h"

namespace zelUtilities {

const ClassInfo& zelXML::describeClass() {
  static const ClassInfo info =
      describeFunctions("zelXML", "Functions that write and read XML text.")
          .function("zel_ToXML", &zel_ToXML, {"sSource"}, "Text with XML's reserved characters escaped.")
          .function("zel_FromXML", &zel_FromXML, {"sSource"}, "Text with XML's entities read.");
  return info;
}

}  // namespace zelUtilities
