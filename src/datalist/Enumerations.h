// The enumerations of the data list, as clients see them; CellTypes.h has the kinds of columns.
#pragma once

#include "automation/ClassInfo.h"
#include "text/CellTypes.h"

namespace zelUtilities {

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
const EnumInfo& enumInfo<ZEL_Utilities_CellBoolean>();
template <>
const EnumInfo& enumInfo<ZEL_Utilities_ColumnAlignments>();
template <>
const EnumInfo& enumInfo<ZEL_Utilities_ColumnErrors>();

}  // namespace zelUtilities
