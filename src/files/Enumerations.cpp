#include "files/Enumerations.h"

namespace zelUtilities {

template <>
const EnumInfo& enumInfo<ZEL_PathTypes>() {
  static const EnumInfo info{u"ZEL_PathTypes",
                             {{u"ZEL_PathType_None", ZEL_PathType_None},
                              {u"ZEL_PathType_File", ZEL_PathType_File},
                              {u"ZEL_PathType_Folder", ZEL_PathType_Folder}}};
  return info;
}

template <>
const EnumInfo& enumInfo<ZEL_Utilities_CopyFlags>() {
  static const EnumInfo info{u"ZEL_Utilities_CopyFlags",
                             {{u"ZEL_CopyFlags_NoOverwrite", ZEL_CopyFlags_NoOverwrite},
                              {u"ZEL_CopyFlags_NoMakePath", ZEL_CopyFlags_NoMakePath},
                              {u"ZEL_CopyFlags_Recurse", ZEL_CopyFlags_Recurse}}};
  return info;
}

template <>
const EnumInfo& enumInfo<ZEL_Utilities_CopyErrors>() {
  static const EnumInfo info{
      u"ZEL_Utilities_CopyErrors",
      {{u"ZEL_CopyErrors_Success", ZEL_CopyErrors_Success},
       {u"ZEL_CopyErrors_NoSourceFile", ZEL_CopyErrors_NoSourceFile},
       {u"ZEL_CopyErrors_NoPath", ZEL_CopyErrors_NoPath},
       {u"ZEL_CopyErrors_Overwrite", ZEL_CopyErrors_Overwrite},
       {u"ZEL_CopyErrors_SingleFileDestination", ZEL_CopyErrors_SingleFileDestination}}};
  return info;
}

}  // namespace zelUtilities
