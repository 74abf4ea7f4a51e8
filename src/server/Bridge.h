// Bridge: an object of the library as the system's clients see it.
//
// There is one bridge for an object as long as a client holds it, so that a client that is given the object
// twice sees that it is the same. The bridge keeps the object; everything else an object is belongs to the
// core. Calls come in on the thread that the object belongs to; the system sees to that.
#pragma once

#include <windows.h>

#include <ocidl.h>

#include "automation/Object.h"
#include "server/ComObject.h"
#include "server/OwnObject.h"
#include "server/ServedClass.h"

namespace zelUtilities {

// The system's interfaces have no virtual destructor; nobody deletes through them.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

class Bridge final : public ComObject<IDispatch, ISupportErrorInfo, IProvideClassInfo2,
                                      IConnectionPointContainer, OwnObject> {
 public:
  // The object's bridge, with a reference for the caller. Raises 13 for an object without a description,
  // which none of the library's is: those that have none are enumerators and foreign objects, and are known
  // as such.
  static Bridge* of(Object& object);

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override;
  ULONG STDMETHODCALLTYPE Release() override;

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** information) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) override;

  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override;

  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** information) override;
  HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* id) override;

  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override;
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) override;

  Object& core() override { return *object_; }

 private:
  Bridge(Object& object, const ServedClass& served) : object_(&object), served_(served) {}
  ~Bridge() override = default;

  bool raisesEvents() const { return !served_.info().events().empty(); }

  const Ref<Object> object_;
  const ServedClass& served_;
};

#pragma GCC diagnostic pop

// Makes the library's objects known to the system, and recognises them when they come back.
void installBridge();

}  // namespace zelUtilities
