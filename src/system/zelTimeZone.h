// zelTimeZone: the global operations on the local time zone. What they do stands in mTimeZone.h.
#pragma once

#include "automation/ClassInfo.h"
#include "system/mTimeZone.h"

namespace zelUtilities {

String zel_TZGetLocalName(const Variant& vCompareDateTime = Variant::missing());
double zel_TZGetLocalOffset(const Variant& vCompareDateTime = Variant::missing());

namespace zelTimeZone {
const ClassInfo& describeClass();
}

}  // namespace zelUtilities
