#include "files/zelFiles.h"

#include "automation/Binder.h"
#include "files/FileDialogs.h"

namespace zelUtilities {

namespace {

std::span<const std::uint8_t> bytesOf(const ArrayData& contents) {
  if (contents.elementKind() != VariantKind::Byte) throw Error(ErrorNumber::TypeMismatch);
  return contents.bytes();
}

}  // namespace

Variant zel_GetFileContents(StringView sFilename) {
  return mFiles::GetFileContents(sFilename, ZEL_ErrorMode_Show);
}

Variant zel_GetFileContentsEx(StringView sFilename, ZEL_ErrorModes eErrMode) {
  return mFiles::GetFileContents(sFilename, eErrMode);
}

String zel_GetFileContentsAsString(StringView sFilename) {
  return mFiles::GetFileContentsAsString(sFilename, ZEL_ErrorMode_None);
}

String zel_GetFileContentsAsStringEx(StringView sFilename, ZEL_ErrorModes eErrMode) {
  return mFiles::GetFileContentsAsString(sFilename, eErrMode);
}

void zel_PutFileContents(const Ref<ArrayData>& cContents, StringView sFilename) {
  mFiles::PutFileContents(bytesOf(*cContents), sFilename, ZEL_ErrorMode_Show);
}

void zel_PutFileContentsEx(const Ref<ArrayData>& cContents, StringView sFilename, ZEL_ErrorModes eErrMode) {
  mFiles::PutFileContents(bytesOf(*cContents), sFilename, eErrMode);
}

void zel_PutFileContentsFromString(StringView sContents, StringView sFilename) {
  mFiles::PutFileContentsFromString(sContents, sFilename, ZEL_ErrorMode_Show);
}

void zel_PutFileContentsFromStringEx(StringView sContents, StringView sFilename, ZEL_ErrorModes eErrMode) {
  mFiles::PutFileContentsFromString(sContents, sFilename, eErrMode);
}

std::int16_t zel_RewriteFileLFtoCRLF(StringView sPath, StringView sNewPath) {
  return mFiles::RewriteFileLFtoCRLF(sPath, sNewPath);
}

bool zel_FileDelete(StringView sFilename) { return !sFilename.empty() && mFiles::FileDelete(sFilename); }

bool zel_FileRename(StringView sOldFileName, StringView sNewFileName, bool bMarkReadOnly) {
  return mFiles::FileRename(sOldFileName, sNewFileName, bMarkReadOnly);
}

std::int32_t zel_GetFileLength(StringView fName) { return mFiles::GetFileLength(fName); }
String zel_GetFileDate(StringView fName) { return mFiles::GetFileDate(fName); }
std::int32_t zel_GetFileAttr(const Variant& sFilename) { return mFiles::GetFileAttr(sFilename); }

const ClassInfo& zelFiles::describeClass() {
  static const ClassInfo info =
      describeFunctions("zelFiles", "Functions that work on files.")
          .function("zel_GetFileContents", &zel_GetFileContents, {"sFilename"}, "A file's bytes.")
          .function("zel_GetFileContentsEx", &zel_GetFileContentsEx,
                    {"sFilename", arg("eErrMode") = ZEL_ErrorMode_Show},
                    "A file's bytes, with failures reported as told.")
          .function("zel_GetFileContentsAsString", &zel_GetFileContentsAsString, {"sFilename"},
                    "A file's text.")
          .function("zel_GetFileContentsAsStringEx", &zel_GetFileContentsAsStringEx,
                    {"sFilename", arg("eErrMode") = ZEL_ErrorMode_None},
                    "A file's text, with failures reported as told.")
          .function("zel_PutFileContents", &zel_PutFileContents, {reference("cContents"), "sFilename"},
                    "Writes bytes as a file.")
          .function("zel_PutFileContentsEx", &zel_PutFileContentsEx,
                    {reference("cContents"), "sFilename", arg("eErrMode") = ZEL_ErrorMode_Show},
                    "Writes bytes as a file, with failures reported as told.")
          .function("zel_PutFileContentsFromString", &zel_PutFileContentsFromString,
                    {"sContents", "sFilename"}, "Writes a text as a file.")
          .function("zel_PutFileContentsFromStringEx", &zel_PutFileContentsFromStringEx,
                    {"sContents", "sFilename", arg("eErrMode") = ZEL_ErrorMode_Show},
                    "Writes a text as a file, with failures reported as told.")
          .function("zel_RewriteFileLFtoCRLF", &zel_RewriteFileLFtoCRLF, {"sPath", arg("sNewPath") = u""},
                    "Rewrites a file with bare line feeds so that its lines end in CR LF.")
          .function("zel_GetFolderName", &zel_GetFolderName, {"fName"}, "The folder in a path.")
          .function("zel_GetFileName", &zel_GetFileName, {"fName"}, "The file's name in a path.")
          .function("zel_GetBaseName", &zel_GetBaseName, {"fName"}, "The file's name without its extension.")
          .function("zel_GetFileExtension", &zel_GetFileExtension, {"fName"},
                    "The extension in a path, in lower case and without its dot.")
          .function("zel_TypeOfPath", &zel_TypeOfPath, {"fName"}, "What a path finds: file, folder, nothing.")
          .function("zel_IsFile", &zel_IsFile, {"fName"}, "Whether there is such a file.")
          .function("zel_IsFolder", &zel_IsFolder, {"fName"}, "Whether there is such a folder.")
          .function("zel_IsURL", &zel_IsURL, {"sReference"},
                    "Whether a text is a URL; in any other, slashes become backslashes.")
          .function("zel_FileFromURL", &zel_FileFromURL, {"sReference"}, "What stands behind the last slash.")
          .function("zel_FilterFromDesktop", &zel_FilterFromDesktop, {"sPath"},
                    "The desktop folder for the word \"Desktop\".")
          .function("zel_FilterToDesktop", &zel_FilterToDesktop, {"sPath"},
                    "The word \"Desktop\" for the desktop folder.")
          .function("zel_ReplaceFilenameCharacters", &zel_ReplaceFilenameCharacters, {"sName"},
                    "A text made safe as a file's name.")
          .function("zel_FileCopy", &zel_FileCopy,
                    {"sSource", "sDestination", arg("eCopyFlags") = ZEL_Utilities_CopyFlags{}},
                    "Copies a file.")
          .function("zel_FilesCopy", &zel_FilesCopy,
                    {"sSourcePattern", "sDestination", arg("eCopyFlags") = ZEL_Utilities_CopyFlags{}},
                    "Copies the files of a pattern, or a folder.")
          .function("zel_FileDelete", &zel_FileDelete, {"sFilename"},
                    "Deletes the files of a pattern, or a folder.")
          .function("zel_FileRename", &zel_FileRename,
                    {"sOldFileName", "sNewFileName", arg("bMarkReadOnly") = false},
                    "Renames a file or folder and marks it for archiving.")
          .function("zel_MakeFullDir", &zel_MakeFullDir, {"sPath"}, "Creates a folder with all above it.")
          .function("zel_GetTempDir", &zel_GetTempDir, "The folder of temporary files.")
          .function("zel_GetTempFile", &zel_GetTempFile, {"sPrefix"}, "A name for a temporary file.")
          .function("zel_GetTempFileEx", &zel_GetTempFileEx, {"sPrefix", "sExtension"},
                    "A name for a temporary file with an extension.")
          .function("zel_GetFileLength", &zel_GetFileLength, {"fName"}, "A file's length in bytes.")
          .function("zel_GetFileDate", &zel_GetFileDate, {"fName"}, "When a file was last modified, as text.")
          .function("zel_GetFileAttr", &zel_GetFileAttr, {"sFilename"}, "A file's attributes.")
          .function("zel_GetWindowsDir", &zel_GetWindowsDir, "The Windows folder.")
          .function("zel_GetCommonFilesDir", &zel_GetCommonFilesDir, "The folder of common program files.")
          .function("zel_GetProgramFilesDir", &zel_GetProgramFilesDir, "The folder of programs.")
          .function("zel_GetDesktopDir", &zel_GetDesktopDir, "The user's desktop folder.")
          .function("zel_GetPersonalDir", &zel_GetPersonalDir, "The user's folder of documents.")
          .function("zel_GetOpenFilename", &zel_GetOpenFilename,
                    {optional("oFilters"), arg("sInitialFolder") = u"", arg("sTitle") = u"",
                     arg("sDefaultExtension") = u"", arg("lFilterIndex") = std::int32_t{1},
                     arg("bMultiSelect") = false},
                    "Asks the user for files to open.")
          .function(
              "zel_GetSaveAsFilename", &zel_GetSaveAsFilename,
              {optional("oFilters"), arg("sInitialFolder") = u"", arg("sTitle") = u"",
               arg("sDefaultExtension") = u"", arg("lFilterIndex") = std::int32_t{1}, arg("sFilename") = u""},
              "Asks the user for a file to save to.")
          .function("zel_SelectFolder", &zel_SelectFolder, {arg("sTitle") = u"", arg("sInitialFolder") = u""},
                    "Asks the user for a folder.");
  return info;
}

}  // namespace zelUtilities
