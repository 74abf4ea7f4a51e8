// EnumeratorBridge: an enumerator of the library as the system's clients walk it (For Each).
#pragma once

#include <windows.h>

#include <oleauto.h>

#include "automation/Enumerator.h"
#include "server/ComObject.h"
#include "server/OwnObject.h"

namespace zelUtilities {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// Has a dispatch interface only because every object has one; it offers nothing there.
class EnumeratorBridge final : public ComObject<IDispatch, IEnumVARIANT, OwnObject> {
 public:
  // With a reference for the caller.
  static IDispatch* create(Enumerator& items) { return new EnumeratorBridge(items); }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override;

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    return DISP_E_MEMBERNOTFOUND;
  }

  HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* items, ULONG* fetched) override;
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override;
  HRESULT STDMETHODCALLTYPE Reset() override;
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** copy) override;

  Object& core() override { return *items_; }

 private:
  explicit EnumeratorBridge(Enumerator& items) : items_(&items) {}
  ~EnumeratorBridge() override = default;

  const Ref<Enumerator> items_;
};

#pragma GCC diagnostic pop

}  // namespace zelUtilities
