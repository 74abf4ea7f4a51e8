#include "server/TypeLibrary.h"

#include <mutex>

#include "platform/windows/WideText.h"
#include "server/ServerLife.h"

namespace zelUtilities {

namespace {

// Loaded at the first question and kept: it must not be let go of while the module is being unloaded.
HRESULT ownTypeLibrary(ITypeLib*& library) {
  static std::mutex guard;
  static ITypeLib* loaded = nullptr;
  const std::lock_guard lock(guard);
  const HRESULT result = loaded ? S_OK : LoadTypeLibEx(wide(modulePath()), REGKIND_NONE, &loaded);
  library = loaded;
  return result;
}

}  // namespace

String modulePath() {
  String path(MAX_PATH, u'\0');
  DWORD length = GetModuleFileNameW(ServerLife::module(), wideBuffer(path), static_cast<DWORD>(path.size()));
  while (length == path.size()) {  // it did not fit
    path.resize(2 * path.size());
    length = GetModuleFileNameW(ServerLife::module(), wideBuffer(path), static_cast<DWORD>(path.size()));
  }
  path.resize(length);
  return path;
}

HRESULT typeInformation(const GUID& id, ITypeInfo** information) {
  ITypeLib* library = nullptr;
  const HRESULT result = ownTypeLibrary(library);
  return result < 0 ? result : library->GetTypeInfoOfGuid(id, information);
}

}  // namespace zelUtilities
