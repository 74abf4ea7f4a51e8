// The kinds of value that columns have: those of the data list, and of the tables that a schema describes.
#pragma once

#include "automation/ClassInfo.h"

namespace zelUtilities {

// The kind of value of a column or cell. The numbers are those of the Automation variant types
// where one exists; 6, 9 and 10 are not used.
enum ZEL_Utilities_CellTypes : std::int32_t {
  ZEL_CellType_UseColumn = 0,  // of a cell: what its column says
  ZEL_CellType_Byte = 1,
  ZEL_CellType_Short = 2,
  ZEL_CellType_Long = 3,
  ZEL_CellType_Single = 4,
  ZEL_CellType_Double = 5,
  ZEL_CellType_Date = 7,
  ZEL_CellType_String = 8,
  ZEL_CellType_Boolean = 11,
  ZEL_CellType_Color = 12,
  ZEL_CellType_UOM = 13,
  ZEL_CellType_PickList = 14,
  ZEL_CellType_ColorList = 15
};

template <>
const EnumInfo& enumInfo<ZEL_Utilities_CellTypes>();

}  // namespace zelUtilities
