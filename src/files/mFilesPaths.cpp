// Paths as text, and what is there.
#include <string_view>

#include "automation/Error.h"
#include "automation/LetterCase.h"
#include "files/mFiles.h"
#include "foundation/Handled.h"
#include "foundation/bas_Main.h"
#include "platform/Files.h"

namespace zelUtilities::mFiles {

namespace {

// The position, from 1, of the last such character; 0 when there is none.
std::size_t lastPosition(StringView text, char16_t unit) {
  const std::size_t at = text.rfind(unit);
  if (at == StringView::npos) return 0;
  return static_cast<std::size_t>(checkedShort(static_cast<std::int64_t>(at) + 1));
}

StringView behindFolder(StringView fName) { return fName.substr(lastPosition(fName, u'\\')); }

// Runs the body for its text; a failure is logged and gives "".
template <class Body>
String textOf(StringView source, const Body& body) {
  String text;
  handled(source, [&] { text = body(); });
  return text;
}

}  // namespace

String GetFolderName(StringView fName) {
  return textOf(u"mFiles.GetFolderName", [&] {
    const std::size_t at = lastPosition(fName, u'\\');
    return at > 0 ? fName.substr(0, at - 1) : StringView();
  });
}

String GetFileName(StringView fName) {
  return textOf(u"mFiles.GetFileName", [&] { return behindFolder(fName); });
}

String GetBaseName(StringView fName) {
  return textOf(u"mFiles.GetBaseName", [&] {
    const StringView name = behindFolder(fName);
    const std::size_t dot = lastPosition(name, u'.');
    return dot > 0 ? name.substr(0, dot - 1) : name;
  });
}

String GetFileExtension(StringView fName) {
  return textOf(u"mFiles.GetFileExtension", [&] {
    const StringView name = behindFolder(fName);
    const std::size_t dot = lastPosition(name, u'.');
    String extension(dot > 0 ? name.substr(dot) : StringView());
    for (char16_t& unit : extension) unit = lowerCase(unit);
    return extension;
  });
}

ZEL_PathTypes TypeOfPath(StringView fName) {
  try {
    if (files().findFirst(fName).empty()) return ZEL_PathType_None;
    const bool folder = (files().attributes(fName) & FileAttribute::Folder) != 0;
    return folder ? ZEL_PathType_Folder : ZEL_PathType_File;
  } catch (...) {
    return ZEL_PathType_None;
  }
}

bool isFile(StringView path) { return FSOSays(u"FileExists", path); }
bool isFolder(StringView path) { return FSOSays(u"FolderExists", path); }

}  // namespace zelUtilities::mFiles
