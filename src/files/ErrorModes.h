// How an operation on file contents reports a failure, chosen per call.
#pragma once

#include "automation/ClassInfo.h"

namespace zelUtilities {

// Read as bits: 1 asks for a message box, 2 for raising the error; any other bit is ignored.
enum ZEL_ErrorModes : std::int32_t {
  ZEL_ErrorMode_None = 0,
  ZEL_ErrorMode_Show = 1,
  ZEL_ErrorMode_Raise = 2,
  ZEL_ErrorMode_ShowAndRaise = 3  // the box first
};

template <>
const EnumInfo& enumInfo<ZEL_ErrorModes>();

}  // namespace zelUtilities
