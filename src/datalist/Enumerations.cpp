#include "datalist/Enumerations.h"

namespace zelUtilities {

template <>
const EnumInfo& enumInfo<ZEL_Utilities_CellBoolean>() {
  static const EnumInfo info{u"ZEL_Utilities_CellBoolean",
                             {{u"ZEL_CellBoolean_UseColumn", ZEL_CellBoolean_UseColumn},
                              {u"ZEL_CellBoolean_True", ZEL_CellBoolean_True},
                              {u"ZEL_CellBoolean_False", ZEL_CellBoolean_False}}};
  return info;
}

template <>
const EnumInfo& enumInfo<ZEL_Utilities_ColumnAlignments>() {
  static const EnumInfo info{u"ZEL_Utilities_ColumnAlignments",
                             {{u"ZEL_ColumnAlignment_Left", ZEL_ColumnAlignment_Left},
                              {u"ZEL_ColumnAlignment_Right", ZEL_ColumnAlignment_Right},
                              {u"ZEL_ColumnAlignment_Center", ZEL_ColumnAlignment_Center}}};
  return info;
}

template <>
const EnumInfo& enumInfo<ZEL_Utilities_ColumnErrors>() {
  static const EnumInfo info{u"ZEL_Utilities_ColumnErrors",
                             {{u"ZEL_ColumnError_None", ZEL_ColumnError_None},
                              {u"ZEL_ColumnError_UnknownError", ZEL_ColumnError_UnknownError},
                              {u"ZEL_ColumnError_StringTooLong", ZEL_ColumnError_StringTooLong},
                              {u"ZEL_ColumnError_NotANumber", ZEL_ColumnError_NotANumber},
                              {u"ZEL_ColumnError_NotBoolean", ZEL_ColumnError_NotBoolean},
                              {u"ZEL_ColumnError_NotDate", ZEL_ColumnError_NotDate},
                              {u"ZEL_ColumnError_Overflow", ZEL_ColumnError_Overflow}}};
  return info;
}

}  // namespace zelUtilities
