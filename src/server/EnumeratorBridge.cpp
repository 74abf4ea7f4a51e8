#include "server/EnumeratorBridge.h"

#include "platform/windows/VariantConversion.h"
#include "server/ErrorInfo.h"

namespace zelUtilities {

HRESULT EnumeratorBridge::QueryInterface(REFIID id, void** out) {
  if (!out) return E_POINTER;
  if (id == IID_IUnknown || id == IID_IDispatch) return answer(static_cast<IDispatch*>(this), out);
  if (id == IID_IEnumVARIANT) return answer(static_cast<IEnumVARIANT*>(this), out);
  if (id == ownObjectId()) return answer(static_cast<OwnObject*>(this), out);
  *out = nullptr;
  return E_NOINTERFACE;
}

HRESULT EnumeratorBridge::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT EnumeratorBridge::Next(ULONG count, VARIANT* items, ULONG* fetched) {
  if (fetched) *fetched = 0;
  if (!items || (count != 1 && !fetched)) return E_POINTER;
  ULONG done = 0;
  const HRESULT result = guarded({}, [&] {
    for (Variant item; done < count && items_->next(item); ++done) {
      VariantInit(&items[done]);
      toSystem(item, items[done]);
    }
    return done == count ? S_OK : S_FALSE;
  });
  if (result < 0) {  // nothing, or all that was asked for
    while (done > 0) VariantClear(&items[--done]);
  }
  if (fetched) *fetched = done;
  return result;
}

HRESULT EnumeratorBridge::Skip(ULONG count) {
  return guarded({}, [&] {
    Variant item;
    for (ULONG done = 0; done < count; ++done)
      if (!items_->next(item)) return S_FALSE;
    return S_OK;
  });
}

HRESULT EnumeratorBridge::Reset() {
  return guarded({}, [&] {
    items_->reset();
    return S_OK;
  });
}

HRESULT EnumeratorBridge::Clone(IEnumVARIANT** copy) {
  if (!copy) return E_POINTER;
  *copy = nullptr;
  return guarded({}, [&] {
    *copy = new EnumeratorBridge(*items_->clone());
    return S_OK;
  });
}

}  // namespace zelUtilities
