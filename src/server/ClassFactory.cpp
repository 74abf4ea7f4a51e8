#include "server/ClassFactory.h"

#include "library/Library.h"
#include "server/Bridge.h"
#include "server/ErrorInfo.h"
#include "server/SystemGuid.h"

namespace zelUtilities {

const ClassInfo* findCreatableClass(REFCLSID id) {
  for (const ClassInfo* info : library().classes())
    if (isPublishedCreatable(*info) && systemGuid(classUuid(*info)) == id) return info;
  return nullptr;
}

HRESULT ClassFactory::QueryInterface(REFIID id, void** out) {
  if (!out) return E_POINTER;
  const bool known = id == IID_IUnknown || id == IID_IClassFactory;
  return answer(known ? static_cast<IClassFactory*>(this) : nullptr, out);
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID id, void** out) {
  if (!out) return E_POINTER;
  *out = nullptr;
  if (outer) return CLASS_E_NOAGGREGATION;
  return guarded(u"", [&] {
    const Ref<Object> object = info_.isGlobal() ? ClassRegistry::instance(info_) : info_.create();
    Bridge* bridge = Bridge::of(*object);
    const HRESULT result = bridge->QueryInterface(id, out);
    bridge->Release();
    return result;
  });
}

HRESULT ClassFactory::LockServer(BOOL lock) {
  if (lock) {
    ServerLife::add();
  } else {
    ServerLife::remove();
  }
  return S_OK;
}

}  // namespace zelUtilities
