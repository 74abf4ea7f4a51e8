// Paths as clients ask for them.
#include <algorithm>

#include "automation/LetterCase.h"
#include "files/zelFiles.h"
#include "foundation/Handled.h"

namespace zelUtilities {

namespace {

constexpr StringView desktopWord = u"Desktop";

String inLowerCase(StringView text) {
  String lower(text);
  for (char16_t& unit : lower) unit = lowerCase(unit);
  return lower;
}

}  // namespace

String zel_GetFolderName(StringView fName) { return mFiles::GetFolderName(fName); }
String zel_GetFileName(StringView fName) { return mFiles::GetFileName(fName); }
String zel_GetBaseName(StringView fName) { return mFiles::GetBaseName(fName); }
String zel_GetFileExtension(StringView fName) { return mFiles::GetFileExtension(fName); }
ZEL_PathTypes zel_TypeOfPath(StringView fName) { return mFiles::TypeOfPath(fName); }
bool zel_IsFile(StringView fName) { return mFiles::isFile(fName); }
bool zel_IsFolder(StringView fName) { return mFiles::isFolder(fName); }

bool zel_IsURL(String& sReference) {
  const String start = inLowerCase(StringView(sReference).substr(0, 5));
  if (start == u"http:" || start.starts_with(u"ftp:")) return true;
  std::replace(sReference.begin(), sReference.end(), u'/', u'\\');
  return false;
}

String zel_FileFromURL(StringView sReference) {
  return String(sReference.substr(sReference.rfind(u'/') + 1));  // npos + 1 is the beginning
}

String zel_FilterFromDesktop(StringView sPath) {
  return sPath.empty() || sPath == desktopWord ? zel_GetDesktopDir() : String(sPath);
}

String zel_FilterToDesktop(StringView sPath) {
  return String(inLowerCase(sPath) == inLowerCase(zel_GetDesktopDir()) ? desktopWord : sPath);
}

String zel_ReplaceFilenameCharacters(StringView sName) {
  String name;
  // Sic: an earlier name of the operation, which clients know as its source.
  handled(u"zelFiles.zel_ReplaceFilenameSpecialCharacters", [&] {
    name = sName;
    for (char16_t& unit : name)
      if (StringView(u":/\\?*'#\" ").find(unit) != StringView::npos) unit = u'_';
  });
  return name;
}

}  // namespace zelUtilities
