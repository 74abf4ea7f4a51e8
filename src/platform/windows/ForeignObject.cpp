#include "platform/windows/ForeignObject.h"

#include <windows.h>

#include <dispex.h>
#include <oleauto.h>

#include <cstring>
#include <vector>

#include "automation/CaseFolding.h"
#include "platform/windows/ComErrors.h"
#include "platform/windows/VariantConversion.h"
#include "platform/windows/WideText.h"

namespace zelUtilities {

namespace {

// A call's arguments as the system takes them: last one first.
class PassedArguments {
 public:
  PassedArguments(std::span<Variant> arguments, bool isPut)
      : arguments_(arguments),
        values_(arguments.size()),
        before_(arguments.size()),
        passed_(arguments.size()) {
    for (VARIANT& value : values_) VariantInit(&value);
    try {
      for (std::size_t i = 0; i < arguments.size(); ++i) {
        toSystem(arguments[i], values_[i]);
        before_[i] = values_[i];
      }
    } catch (...) {
      clear();
      throw;
    }
    passByReference(isPut);
  }
  ~PassedArguments() { clear(); }
  PassedArguments(const PassedArguments&) = delete;
  PassedArguments& operator=(const PassedArguments&) = delete;

  VARIANT* first() { return passed_.data(); }
  UINT count() const { return static_cast<UINT>(passed_.size()); }

  void passByValue() {
    for (std::size_t i = 0; i < values_.size(); ++i) place(i) = values_[i];
  }

  void writeBack() {
    for (std::size_t i = 0; i < values_.size(); ++i)
      if (place(i).vt == (VT_BYREF | VT_VARIANT) && hasChanged(i)) arguments_[i] = fromSystem(values_[i]);
  }

 private:
  VARIANT& place(std::size_t i) { return passed_[passed_.size() - 1 - i]; }

  void passByReference(bool isPut) {
    passByValue();
    for (std::size_t i = 0; i < values_.size(); ++i) {
      if (arguments_[i].isMissing() || (isPut && i + 1 == values_.size())) continue;
      place(i).vt = VT_BYREF | VT_VARIANT;
      place(i).pvarVal = &values_[i];
    }
  }

  // An array may have been written into where it lies.
  bool hasChanged(std::size_t i) const {
    return (values_[i].vt & VT_ARRAY) != 0 || std::memcmp(&values_[i], &before_[i], sizeof(VARIANT)) != 0;
  }

  void clear() {
    for (VARIANT& value : values_) VariantClear(&value);
  }

  std::span<Variant> arguments_;
  std::vector<VARIANT> values_;
  std::vector<VARIANT> before_;  // bit by bit; owns nothing
  std::vector<VARIANT> passed_;  // owns nothing
};

bool isMismatch(HRESULT result) { return result == DISP_E_TYPEMISMATCH || result == DISP_E_BADVARTYPE; }

}  // namespace

ForeignObject::ForeignObject(IDispatch* dispatch) : dispatch_(dispatch) { dispatch_->AddRef(); }

ForeignObject::~ForeignObject() { dispatch_->Release(); }

long ForeignObject::idOf(StringView name) const {
  if (name.empty()) return DISPID_VALUE;
  if (equalFolded(name, u"NewEnum") || equalFolded(name, u"_NewEnum")) return DISPID_NEWENUM;
  const String ended(name);
  auto* units = const_cast<wchar_t*>(wide(ended));  // read only, whatever the declaration says
  DISPID id = DISPID_UNKNOWN;
  HRESULT result = dispatch_->GetIDsOfNames(IID_NULL, &units, 1, LOCALE_USER_DEFAULT, &id);
  if (result >= 0) return id;
  // Objects whose members come and go may only tell in this way.
  IDispatchEx* changing = nullptr;
  if (dispatch_->QueryInterface(__uuidof(IDispatchEx), reinterpret_cast<void**>(&changing)) < 0)
    raiseComError(result);
  const BSTR text = SysAllocString(units);
  result = changing->GetDispID(text, fdexNameCaseInsensitive, &id);
  SysFreeString(text);
  changing->Release();
  requireSuccess(result);
  return id;
}

// An enumerator may have members too and be a ForeignObject elsewhere; here it is asked for as what it is.
static Variant enumeratorIn(const VARIANT& result) {
  const bool isObject = (result.vt == VT_UNKNOWN || result.vt == VT_DISPATCH) && result.punkVal;
  IEnumVARIANT* items = nullptr;
  if (!isObject || result.punkVal->QueryInterface(IID_IEnumVARIANT, reinterpret_cast<void**>(&items)) < 0)
    return fromSystem(result);
  const Ref<Object> enumerator = make<ForeignEnumerator>(items);
  items->Release();
  return enumerator;
}

Variant ForeignObject::Invoke(StringView name, InvokeKind kind, std::span<Variant> arguments) {
  const Ref<Object> alive(this);  // the call may let go of us
  const bool isPut = kind == InvokeKind::Put || kind == InvokeKind::PutRef;
  const DISPID id = idOf(name);
  const WORD flags = id == DISPID_NEWENUM ? DISPATCH_METHOD | DISPATCH_PROPERTYGET : static_cast<WORD>(kind);
  PassedArguments passed(arguments, isPut);
  DISPID putValue = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{passed.first(), isPut ? &putValue : nullptr, passed.count(), isPut ? 1U : 0U};
  VARIANT result;
  VariantInit(&result);
  EXCEPINFO exception{};
  HRESULT code = S_OK;
  const auto call = [&] {
    UINT wrong = 0;
    code = dispatch_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, isPut ? nullptr : &result,
                             &exception, &wrong);
  };
  call();
  if (isMismatch(code)) {  // not every object takes references
    passed.passByValue();
    call();
  }
  if (code < 0) raiseComError(code, &exception);
  try {
    passed.writeBack();
    Variant answer = id == DISPID_NEWENUM ? enumeratorIn(result) : fromSystem(result);
    VariantClear(&result);
    return answer;
  } catch (...) {
    VariantClear(&result);
    throw;
  }
}

ForeignEnumerator::ForeignEnumerator(IEnumVARIANT* items) : items_(items) { items_->AddRef(); }

ForeignEnumerator::~ForeignEnumerator() { items_->Release(); }

bool ForeignEnumerator::next(Variant& item) {
  VARIANT found;
  VariantInit(&found);
  ULONG count = 0;
  const HRESULT result = items_->Next(1, &found, &count);
  requireSuccess(result);
  if (result != S_OK) return false;
  try {
    item = fromSystem(found);
  } catch (...) {
    VariantClear(&found);
    throw;
  }
  VariantClear(&found);
  return true;
}

void ForeignEnumerator::reset() { requireSuccess(items_->Reset()); }

Ref<Enumerator> ForeignEnumerator::clone() const {
  IEnumVARIANT* copy = nullptr;
  requireSuccess(items_->Clone(&copy));
  Ref<Enumerator> wrapped = make<ForeignEnumerator>(copy);
  copy->Release();
  return wrapped;
}

Ref<Object> wrapForeign(IUnknown* object) {
  IDispatch* dispatch = nullptr;
  if (object->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&dispatch)) >= 0) {
    Ref<Object> wrapped = make<ForeignObject>(dispatch);
    dispatch->Release();
    return wrapped;
  }
  IEnumVARIANT* items = nullptr;
  requireSuccess(object->QueryInterface(IID_IEnumVARIANT, reinterpret_cast<void**>(&items)));
  Ref<Object> wrapped = make<ForeignEnumerator>(items);
  items->Release();
  return wrapped;
}

}  // namespace zelUtilities
