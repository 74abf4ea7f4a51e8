#include "text/CellTypes.h"

namespace zelUtilities {

template <>
const EnumInfo& enumInfo<ZEL_Utilities_CellTypes>() {
  static const EnumInfo info{u"ZEL_Utilities_CellTypes",
                             {{u"ZEL_CellType_UseColumn", ZEL_CellType_UseColumn},
                              {u"ZEL_CellType_Byte", ZEL_CellType_Byte},
                              {u"ZEL_CellType_Short", ZEL_CellType_Short},
                              {u"ZEL_CellType_Long", ZEL_CellType_Long},
                              {u"ZEL_CellType_Single", ZEL_CellType_Single},
                              {u"ZEL_CellType_Double", ZEL_CellType_Double},
                              {u"ZEL_CellType_Date", ZEL_CellType_Date},
                              {u"ZEL_CellType_String", ZEL_CellType_String},
                              {u"ZEL_CellType_Boolean", ZEL_CellType_Boolean},
                              {u"ZEL_CellType_Color", ZEL_CellType_Color},
                              {u"ZEL_CellType_UOM", ZEL_CellType_UOM},
                              {u"ZEL_CellType_PickList", ZEL_CellType_PickList},
                              {u"ZEL_CellType_ColorList", ZEL_CellType_ColorList}}};
  return info;
}

}  // namespace zelUtilities
