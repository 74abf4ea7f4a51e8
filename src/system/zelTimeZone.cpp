#include "system/zelTimeZone.h"

#include "automation/Binder.h"

namespace zelUtilities {

String zel_TZGetLocalName(const Variant& vCompareDateTime) {
  return mTimeZone::TZGetLocalName(vCompareDateTime);
}

double zel_TZGetLocalOffset(const Variant& vCompareDateTime) {
  return mTimeZone::TZGetLocalOffset(vCompareDateTime);
}

const ClassInfo& zelTimeZone::describeClass() {
  static const ClassInfo info =
      describeFunctions("zelTimeZone", "Functions that tell of the local time zone.")
          .function("zel_TZGetLocalName", &zel_TZGetLocalName, {optional("vCompareDateTime")},
                    "The local time zone's name, now or on a date.")
          .function("zel_TZGetLocalOffset", &zel_TZGetLocalOffset, {optional("vCompareDateTime")},
                    "Hours from universal time to local time, now or on a date.");
  return info;
}

}  // namespace zelUtilities
