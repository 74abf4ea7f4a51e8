#include "platform/windows/ForeignObject.h"

#include <windows.h>

#include <dispex.h>
#include <oleauto.h>

#include <vector>

#include "automation/CaseFolding.h"
#include "platform/windows/ComErrors.h"
#include "platform/windows/OwnedVariant.h"
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
        passed_(arguments.size()),
        places_(arguments.size() - (isPut && !arguments.empty() ? 1 : 0)) {
    for (std::size_t i = 0; i < arguments.size(); ++i) toSystem(arguments[i], values_[i]);
    passByValue();
    for (std::size_t i = 0; i < places_; ++i) {
      if (!isPlace(i)) continue;
      passed(i).vt = VT_BYREF | VT_VARIANT;
      passed(i).pvarVal = &values_[i];
    }
  }

  DISPPARAMS parameters() { return {passed_.data(), nullptr, static_cast<UINT>(passed_.size()), 0}; }

  void passByValue() {
    for (std::size_t i = 0; i < values_.size(); ++i) passed(i) = values_[i];
  }

  void writeBack() {
    for (std::size_t i = 0; i < places_; ++i)
      if (isPlace(i)) arguments_[i] = fromSystem(values_[i]);
  }

 private:
  VARIANT& passed(std::size_t i) { return passed_[passed_.size() - 1 - i]; }

  bool isPlace(std::size_t i) const { return arguments_[i].isEmpty() || arguments_[i].isArray(); }

  std::span<Variant> arguments_;
  std::vector<OwnedVariant> values_;
  std::vector<VARIANT> passed_;  // owns nothing
  std::size_t places_;           // so many arguments, from the first, may be written to
};

bool isMismatch(HRESULT result) { return result == DISP_E_TYPEMISMATCH || result == DISP_E_BADVARTYPE; }

// Objects whose members come and go, those of scripts among them; nothing for others.
IDispatchEx* changingObject(IUnknown& object) {
  IDispatchEx* changing = nullptr;
  object.QueryInterface(__uuidof(IDispatchEx), reinterpret_cast<void**>(&changing));
  return changing;
}

bool isChanging(IUnknown& object) {
  IDispatchEx* changing = changingObject(object);
  if (changing) changing->Release();
  return changing != nullptr;
}

HRESULT findName(IDispatch& object, const String& name, DISPID& id) {
  auto* units = const_cast<wchar_t*>(wide(name));  // read only, whatever the declaration says
  const HRESULT result = object.GetIDsOfNames(IID_NULL, &units, 1, LOCALE_USER_DEFAULT, &id);
  IDispatchEx* changing = result < 0 ? changingObject(object) : nullptr;
  if (!changing) return result;
  // Only so are names found in any letter case, and those that came late.
  const BSTR text = SysAllocString(units);
  const HRESULT late = changing->GetDispID(text, fdexNameCaseInsensitive, &id);
  SysFreeString(text);
  changing->Release();
  return late;
}

// What a script gives for a method that is read as if it were a property.
bool isFunction(const VARIANT& value) {
  DISPID id = DISPID_UNKNOWN;
  return value.vt == VT_DISPATCH && value.pdispVal && isChanging(*value.pdispVal) &&
         findName(*value.pdispVal, u"apply", id) >= 0;
}

}  // namespace

ForeignObject::ForeignObject(IDispatch* dispatch) : dispatch_(dispatch) { dispatch_->AddRef(); }

ForeignObject::~ForeignObject() { dispatch_->Release(); }

long ForeignObject::idOf(StringView name) const {
  if (name.empty()) return DISPID_VALUE;
  if (equalFolded(name, u"NewEnum") || equalFolded(name, u"_NewEnum")) return DISPID_NEWENUM;
  DISPID id = DISPID_UNKNOWN;
  requireSuccess(findName(*dispatch_, String(name), id));
  return id;
}

bool ForeignObject::knows(StringView name) const {
  DISPID id = DISPID_UNKNOWN;
  return findName(*dispatch_, String(name), id) >= 0;
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
  const auto flags = static_cast<WORD>(id == DISPID_NEWENUM ? InvokeKind::MethodOrGet : kind);
  PassedArguments passed(arguments, isPut);
  DISPPARAMS parameters = passed.parameters();
  DISPID putValue = DISPID_PROPERTYPUT;
  if (isPut) {
    parameters.rgdispidNamedArgs = &putValue;
    parameters.cNamedArgs = 1;
  }
  OwnedVariant result;
  EXCEPINFO exception{};
  const auto call = [&](WORD asked) {
    UINT wrong = 0;
    return dispatch_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, asked, &parameters, isPut ? nullptr : &result,
                             &exception, &wrong);
  };
  HRESULT code = S_OK;
  if (kind == InvokeKind::MethodOrGet && arguments.empty() && isChanging(*dispatch_)) {
    // A script's object answers a read only where nothing else is asked for.
    code = call(DISPATCH_PROPERTYGET);
    if (code == DISP_E_MEMBERNOTFOUND || isFunction(result)) {
      VariantClear(&result);
      code = call(DISPATCH_METHOD);
    }
  } else {
    code = call(flags);
  }
  if (isMismatch(code)) {  // not every object takes references
    passed.passByValue();
    code = call(flags);
  }
  if (code < 0) raiseComError(code, &exception);
  passed.writeBack();
  return id == DISPID_NEWENUM ? enumeratorIn(result) : fromSystem(result);
}

ForeignEnumerator::ForeignEnumerator(IEnumVARIANT* items) : items_(items) { items_->AddRef(); }

ForeignEnumerator::~ForeignEnumerator() { items_->Release(); }

bool ForeignEnumerator::next(Variant& item) {
  OwnedVariant found;
  ULONG count = 0;
  const HRESULT result = items_->Next(1, &found, &count);
  requireSuccess(result);
  if (result != S_OK) return false;
  item = fromSystem(found);
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

ForeignStream::ForeignStream(ISequentialStream* stream) : stream_(stream) { stream_->AddRef(); }

ForeignStream::~ForeignStream() { stream_->Release(); }

// Wrapped by what the object is asked for; nothing where it is none.
template <class Wrapper, class Interface>
static Ref<Object> wrappedAs(IUnknown& object, HRESULT& result) {
  Interface* asked = nullptr;
  result = object.QueryInterface(__uuidof(Interface), reinterpret_cast<void**>(&asked));
  if (result < 0) return {};
  Ref<Object> wrapped = make<Wrapper>(asked);
  asked->Release();
  return wrapped;
}

Ref<Object> wrapForeign(IUnknown* object) {
  HRESULT result = S_OK;
  Ref<Object> wrapped = wrappedAs<ForeignObject, IDispatch>(*object, result);
  if (!wrapped) wrapped = wrappedAs<ForeignEnumerator, IEnumVARIANT>(*object, result);
  if (!wrapped) wrapped = wrappedAs<ForeignStream, ISequentialStream>(*object, result);
  requireSuccess(result);
  return wrapped;
}

}  // namespace zelUtilities
