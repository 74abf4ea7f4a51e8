// The enumerations of the data list, as clients see them.
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

// A setting of a cell that may be left to its column.
enum ZEL_Utilities_CellBoolean : std::int32_t {
  ZEL_CellBoolean_UseColumn = 0,
  ZEL_CellBoolean_True = 1,
  ZEL_CellBoolean_False = 2
};

enum ZEL_Utilities_ColumnAlignments : std::int32_t {
  ZEL_ColumnAlignment_Left = 0,
  ZEL_ColumnAlignment_Right = 1,
  ZEL_ColumnAlignment_Center = 2
};

// What zelNodeListColumn.Validate finds.
enum ZEL_Utilities_ColumnErrors : std::int32_t {
  ZEL_ColumnError_None = 0,
  ZEL_ColumnError_UnknownError = 1,
  ZEL_ColumnError_StringTooLong = 2,
  ZEL_ColumnError_NotANumber = 3,
  ZEL_ColumnError_NotBoolean = 4,
  ZEL_ColumnError_NotDate = 5,
  ZEL_ColumnError_Overflow = 6  // for callers; Validate never finds it
};

template <>
const EnumInfo& enumInfo<ZEL_Utilities_CellTypes>();
template <>
const EnumInfo& enumInfo<ZEL_Utilities_CellBoolean>();
template <>
const EnumInfo& enumInfo<ZEL_Utilities_ColumnAlignments>();
template <>
const EnumInfo& enumInfo<ZEL_Utilities_ColumnErrors>();

}  // namespace zelUtilities
