// ProbeDispatch: an automation object that answers as a test tells it to.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <functional>
#include <string>

namespace zelUtilities {

// The system's interfaces have no virtual destructor; nobody deletes through them.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// Lives on the stack of its test; references are counted only to be compared.
class ProbeDispatch : public IDispatch {
 public:
  struct Call {
    std::wstring name;
    WORD flags;
    DISPPARAMS* parameters;
    VARIANT* result;  // may be none
    EXCEPINFO* exception;

    // The argument at a position from the left.
    VARIANT& argument(UINT at) const { return parameters->rgvarg[parameters->cArgs - 1 - at]; }
  };
  using Answer = std::function<HRESULT(const Call&)>;

  explicit ProbeDispatch(Answer answer) : answer_(std::move(answer)) {}

  long references() const { return references_; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    const bool known = id == IID_IUnknown || id == IID_IDispatch;
    *object = known ? static_cast<IDispatch*>(this) : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references_); }
  ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--references_); }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
    name_ = names[0];
    *ids = name_ == L"Unknown" ? DISPID_UNKNOWN : 7;
    return name_ == L"Unknown" ? DISP_E_UNKNOWNNAME : S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* exception, UINT*) override {
    return answer_({id == DISPID_VALUE ? L"" : name_, flags, parameters, result, exception});
  }

 private:
  Answer answer_;
  std::wstring name_;
  long references_ = 1;
};

#pragma GCC diagnostic pop

}  // namespace zelUtilities
