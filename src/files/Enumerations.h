// What the operations on files take and answer.
#pragma once

#include "automation/ClassInfo.h"

namespace zelUtilities {

enum ZEL_PathTypes : std::int32_t { ZEL_PathType_None = 0, ZEL_PathType_File = 1, ZEL_PathType_Folder = 2 };

// Read as bits.
enum ZEL_Utilities_CopyFlags : std::int32_t {
  ZEL_CopyFlags_NoOverwrite = 1,
  ZEL_CopyFlags_NoMakePath = 2,
  ZEL_CopyFlags_Recurse = 4
};

// zel_FileCopy may also answer with the number of an error, such as 76.
enum ZEL_Utilities_CopyErrors : std::int32_t {
  ZEL_CopyErrors_Success = 0,
  ZEL_CopyErrors_NoSourceFile = 1,
  ZEL_CopyErrors_NoPath = 2,
  ZEL_CopyErrors_Overwrite = 3,
  ZEL_CopyErrors_SingleFileDestination = 4
};

template <>
const EnumInfo& enumInfo<ZEL_PathTypes>();
template <>
const EnumInfo& enumInfo<ZEL_Utilities_CopyFlags>();
template <>
const EnumInfo& enumInfo<ZEL_Utilities_CopyErrors>();

}  // namespace zelUtilities
