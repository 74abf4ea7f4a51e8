// ProbeDispatch: an automation object that answers as a test tells it to.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace zelUtilities {

// The system's interfaces have no virtual destructor; nobody deletes through them.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// Lives on the stack of its test; references are counted only to be compared. Members are numbered from 1 as
// they are asked for.
class ProbeDispatch : public IDispatch {
 public:
  struct Call {
    DISPID id;
    std::wstring name;  // where the member was asked for by name
    WORD flags;
    DISPPARAMS* parameters;
    VARIANT* result;  // may be none
    EXCEPINFO* exception;

    // The argument at a position from the left.
    VARIANT& argument(UINT at) const { return parameters->rgvarg[parameters->cArgs - 1 - at]; }
  };
  using Answer = std::function<HRESULT(const Call&)>;

  // Knows the names given, or, where there are none, any.
  explicit ProbeDispatch(Answer answer, std::vector<std::wstring> names = {})
      : answer_(std::move(answer)), names_(std::move(names)), isOpen_(names_.empty()) {}
  virtual ~ProbeDispatch() = default;

  long references() const { return references_; }
  // From now on it has type information, by which its interface is called so.
  ProbeDispatch& called(const std::wstring& interfaceName) {
    interfaceName_ = interfaceName;
    return *this;
  }

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
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** type) override {
    if (interfaceName_.empty()) return E_NOTIMPL;
    ICreateTypeLib2* library = nullptr;
    ICreateTypeInfo* made = nullptr;
    CreateTypeLib2(SYS_WIN32, L"probe.tlb", &library);
    library->CreateTypeInfo(interfaceName_.data(), TKIND_DISPATCH, &made);
    const HRESULT result = made->QueryInterface(IID_ITypeInfo, reinterpret_cast<void**>(type));
    made->Release();
    library->Release();
    return result;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
    auto found = std::find_if(names_.begin(), names_.end(), [&](const std::wstring& name) {
      return CompareStringW(LOCALE_INVARIANT, NORM_IGNORECASE, name.c_str(), -1, names[0], -1) == CSTR_EQUAL;
    });
    if (found == names_.end() && isOpen_) found = names_.insert(found, names[0]);
    *ids = found == names_.end() ? DISPID_UNKNOWN : static_cast<DISPID>(found - names_.begin()) + 1;
    return found == names_.end() ? DISP_E_UNKNOWNNAME : S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* exception, UINT*) override {
    const bool isNamed = id > 0 && static_cast<std::size_t>(id) <= names_.size();
    return answer_(
        {id, isNamed ? names_[static_cast<std::size_t>(id) - 1] : L"", flags, parameters, result, exception});
  }

 private:
  Answer answer_;
  std::vector<std::wstring> names_;
  bool isOpen_;
  std::wstring interfaceName_;
  long references_ = 1;
};

#pragma GCC diagnostic pop

}  // namespace zelUtilities
