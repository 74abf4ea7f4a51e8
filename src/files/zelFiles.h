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

// Paths; mFiles.h tells more.
String zel_GetFolderName(StringView fName);
String zel_GetFileName(StringView fName);
String zel_GetBaseName(StringView fName);
String zel_GetFileExtension(StringView fName);
ZEL_PathTypes zel_TypeOfPath(StringView fName);
// Whether there is such a file or folder, hidden ones included; False on any failure.
bool zel_IsFile(StringView fName);
bool zel_IsFolder(StringView fName);
// True for "http:" and "ftp:" in any letter case, and for nothing else: in any other text, "https:" included,
// "/" becomes "\" in the caller's own variable.
bool zel_IsURL(String& sReference);
// What stands behind the last "/".
String zel_FileFromURL(StringView sReference);
// "Desktop", in just this letter case, and "" become the user's desktop folder; and back, in any letter case.
String zel_FilterFromDesktop(StringView sPath);
String zel_FilterToDesktop(StringView sPath);
// Each of : / \ ? * ' # " and blank becomes "_".
String zel_ReplaceFilenameCharacters(StringView sName);

// Copies a file with its attributes and its date of modification. Into a folder that is there it goes under
// its own name, as a bare name into its own folder. No folder is created. A file that is there is replaced, a
// read-only one too. Any failure is its error's number: 76 for a missing folder, 70 for a copy onto itself.
ZEL_Utilities_CopyErrors zel_FileCopy(StringView sSource, StringView sDestination,
                                      ZEL_Utilities_CopyFlags eCopyFlags = {});
// Copies the files that a pattern finds, hidden and system ones not, or a folder into one of its own name
// below the destination, which is created as zel_MakeFullDir does. With ZEL_CopyFlags_Recurse also the
// folders found, each with all below it, but neither the copy itself nor links that lead back. What becomes
// of single files does not show in the result. A failure is logged under "zelFiles.zel_FilesCopy".
ZEL_Utilities_CopyErrors zel_FilesCopy(StringView sSourcePattern, StringView sDestination,
                                       ZEL_Utilities_CopyFlags eCopyFlags = {});
// As the routines of the same names in mFiles.h; False for "".
bool zel_FileDelete(StringView sFilename);
bool zel_FileRename(StringView sOldFileName, StringView sNewFileName, bool bMarkReadOnly = false);
// Creates a folder with all above it; True when it is there. A path that is not absolute (that has no ":" and
// does not begin with "\\") and one that cannot be created are shown in a message box "Path Error".
bool zel_MakeFullDir(StringView sPath);

// The folder of temporary files, and a name in it that is free; "" where none can be made. A failure to find
// the folder is raised.
String zel_GetTempDir();
String zel_GetTempFile(StringView sPrefix);
// With the extension in place of "tmp" ("dat") or ".tmp" (".dat"). An extension with its first dot further in
// cuts as much more of the name; 5 where that is too short.
String zel_GetTempFileEx(StringView sPrefix, StringView sExtension);

std::int32_t zel_GetFileLength(StringView fName);
String zel_GetFileDate(StringView fName);
std::int32_t zel_GetFileAttr(const Variant& sFilename);

String zel_GetWindowsDir();
// From the registry, with fixed defaults. A failure, such as a value that is no text, is logged under
// "zelFiles.<operation>" and gives "".
String zel_GetCommonFilesDir();
String zel_GetProgramFilesDir();
String zel_GetDesktopDir();
String zel_GetPersonalDir();

namespace zelFiles {
const ClassInfo& describeClass();
}

}  // namespace zelUtilities
