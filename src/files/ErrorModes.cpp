#include "files/ErrorModes.h"

namespace zelUtilities {

template <>
const EnumInfo& enumInfo<ZEL_ErrorModes>() {
  static const EnumInfo info{u"ZEL_ErrorModes",
                             {{u"ZEL_ErrorMode_None", ZEL_ErrorMode_None},
                              {u"ZEL_ErrorMode_Show", ZEL_ErrorMode_Show},
                              {u"ZEL_ErrorMode_Raise", ZEL_ErrorMode_Raise},
                              {u"ZEL_ErrorMode_ShowAndRaise", ZEL_ErrorMode_ShowAndRaise}}};
  return info;
}

}  // namespace zelUtilities
