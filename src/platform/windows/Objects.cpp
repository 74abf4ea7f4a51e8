#include "platform/Objects.h"

#include <windows.h>

#include <objbase.h>
#include <oleauto.h>

#include "platform/ObjectTable.h"
#include "platform/windows/ForeignObject.h"
#include "platform/windows/WideText.h"
#include "platform/windows/XmlDocument.h"

namespace zelUtilities {

namespace {

String hexadecimal(HRESULT result) {
  static constexpr char16_t digits[] = u"0123456789ABCDEF";
  String text;
  for (int shift = 28; shift >= 0; shift -= 4)
    text.push_back(digits[static_cast<unsigned long>(result) >> shift & 15]);
  return text;
}

HRESULT createInstance(const CLSID& id, IDispatch*& dispatch) {
  return CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IDispatch,
                          reinterpret_cast<void**>(&dispatch));
}

// What the class store makes; nothing where it has no such class.
Ref<Object> createFromStore(StringView progId) {
  CLSID id;
  if (CLSIDFromProgID(wide(String(progId)), &id) < 0) return {};
  IDispatch* dispatch = nullptr;
  HRESULT result = createInstance(id, dispatch);
  // The client has not made its thread ready for COM, which is its business; without it nothing works.
  if (result == CO_E_NOTINITIALIZED && CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED) >= 0)
    result = createInstance(id, dispatch);
  if (result < 0) raiseCannotCreate(progId, u"the system reports " + hexadecimal(result));
  Ref<Object> object = isXmlDocument(progId) ? boundedXmlDocument(dispatch) : make<ForeignObject>(dispatch);
  dispatch->Release();
  return object;
}

class WindowsObjects : public Objects {
 public:
  Ref<Object> create(StringView progId) override {
    Ref<Object> object = createRegistered(progId);
    if (!object) object = createFromStore(progId);
    if (!object) object = createStandIn(progId);
    if (!object) raiseCannotCreate(progId, u"no such class is registered");
    return object;
  }
};

}  // namespace

Objects& Objects::system() {
  static auto& service = *new WindowsObjects;
  return service;
}

}  // namespace zelUtilities
