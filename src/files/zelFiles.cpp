#include "files/zelFiles.h"

#include "automation/Binder.h"

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
                    "Rewrites a file with bare line feeds so that its lines end in CR LF.");
  return info;
}

}  // namespace zelUtilities
