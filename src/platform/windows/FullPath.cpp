#include "platform/windows/FullPath.h"

#include <windows.h>

#include "automation/Error.h"
#include "platform/FilePattern.h"
#include "platform/windows/FileErrors.h"
#include "platform/windows/WideText.h"

namespace zelUtilities {

namespace {

constexpr StringView unparsedPrefix = u"\\\\?\\";
constexpr std::size_t rootLength = 3;  // "C:\"

}  // namespace

void requireFileName(StringView path) {
  const StringView name = path.starts_with(unparsedPrefix) ? path.substr(unparsedPrefix.size()) : path;
  if (name.empty() || name.find(u'\0') != StringView::npos || hasWildcard(name))
    throw Error(ErrorNumber::BadFileName);
}

String fullPathOf(StringView path) {
  requireFileName(path);
  const String name(path);
  const DWORD room = GetFullPathNameW(wide(name), 0, nullptr, nullptr);  // with the terminator
  if (room == 0) raiseLastFileError();
  String whole(room, u'\0');
  whole.resize(GetFullPathNameW(wide(name), room, wideBuffer(whole), nullptr));
  if (whole.size() > rootLength && whole.back() == u'\\') whole.pop_back();
  return whole;
}

}  // namespace zelUtilities
