#include "platform/windows/SystemLibrary.h"

#include <windows.h>

#include "automation/Error.h"
#include "platform/windows/WideText.h"

namespace zelUtilities {

void* systemAddress(StringView library, const char* function) {
  String path(MAX_PATH, u'\0');
  path.resize(GetSystemDirectoryW(wideBuffer(path), MAX_PATH));
  path.append(u"\\").append(library);
  const HMODULE module = LoadLibraryW(wide(path));
  void* address = module ? reinterpret_cast<void*>(GetProcAddress(module, function)) : nullptr;
  if (!address)
    throw Error(ErrorNumber::FileNotFound, {},
                String(library) + u" with " + fromUtf8(function) + u" is not on this system.");
  return address;
}

}  // namespace zelUtilities
