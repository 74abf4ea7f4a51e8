// zelFiles: the global operations on files.
//
//   String text = zel_GetFileContentsAsString(u"C:\\Data\\a.txt");      // "" where it cannot be read
//   zel_PutFileContentsFromString(text, u"C:\\Data\\b.txt");            // a message box where it cannot
//
// What they do stands in mFiles.h. They keep no state; any thread may call them. The defaults differ on
// purpose: reading as a text is silent, everything else shows a message.
#pragma once

#include "automation/ArrayData.h"
#include "files/mFiles.h"

namespace zelUtilities {

Variant zel_GetFileContents(StringView sFilename);
Variant zel_GetFileContentsEx(StringView sFilename, ZEL_ErrorModes eErrMode = ZEL_ErrorMode_Show);
String zel_GetFileContentsAsString(StringView sFilename);
String zel_GetFileContentsAsStringEx(StringView sFilename, ZEL_ErrorModes eErrMode = ZEL_ErrorMode_None);

// The contents are an array of bytes; any other array raises 13, whatever the mode.
void zel_PutFileContents(const Ref<ArrayData>& cContents, StringView sFilename);
void zel_PutFileContentsEx(const Ref<ArrayData>& cContents, StringView sFilename,
                           ZEL_ErrorModes eErrMode = ZEL_ErrorMode_Show);
void zel_PutFileContentsFromString(StringView sContents, StringView sFilename);
void zel_PutFileContentsFromStringEx(StringView sContents, StringView sFilename,
                                     ZEL_ErrorModes eErrMode = ZEL_ErrorMode_Show);

std::int16_t zel_RewriteFileLFtoCRLF(StringView sPath, StringView sNewPath = {});

namespace zelFiles {
const ClassInfo& describeClass();
}

}  // namespace zelUtilities
