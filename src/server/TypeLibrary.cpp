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
  const HRESULT result = loaded ? S_OK : LoadTypeLibEx(wide(ServerLife::modulePath()), REGKIND_NONE, &loaded);
  library = loaded;
  return result;
}

}  // namespace

HRESULT typeInformation(const GUID& id, ITypeInfo** information) {
  ITypeLib* library = nullptr;
  const HRESULT result = ownTypeLibrary(library);
  return result < 0 ? result : library->GetTypeInfoOfGuid(id, information);
}

}  // namespace zelUtilities
