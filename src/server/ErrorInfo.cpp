#include "server/ErrorInfo.h"

#include "automation/Error.h"
#include "platform/windows/WideText.h"
#include "server/ComObject.h"

namespace zelUtilities {

namespace {

constexpr std::int32_t largestRunTimeNumber = 0xFFFF;

// Nothing where memory is short: the number still arrives.
BSTR newText(StringView text) {
  return SysAllocStringLen(reinterpret_cast<const wchar_t*>(text.data()), static_cast<UINT>(text.size()));
}

void setErrorInfo(const Error& error, StringView source) {
  ComRef<ICreateErrorInfo> record;
  ComRef<IErrorInfo> finished;
  if (CreateErrorInfo(record.receive()) < 0) return;
  String from(error.source().empty() ? source : StringView(error.source()));
  String what = error.description();
  record->SetGUID(IID_NULL);
  record->SetSource(wideBuffer(from));
  record->SetDescription(wideBuffer(what));
  if (record->QueryInterface(IID_IErrorInfo, finished.receiveAny()) >= 0) SetErrorInfo(0, finished.get());
}

}  // namespace

HRESULT resultCode(std::int32_t number) {
  if (number < 0) return number;
  if (number == 0 || number > largestRunTimeNumber) return E_FAIL;
  return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, number);
}

HRESULT reportException(EXCEPINFO* exception, StringView source) noexcept {
  try {
    const Error error = currentError();
    if (!exception) return DISP_E_EXCEPTION;
    *exception = {};
    exception->scode = resultCode(error.number());
    exception->bstrSource = newText(error.source().empty() ? source : StringView(error.source()));
    exception->bstrDescription = newText(error.description());
    return DISP_E_EXCEPTION;
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

HRESULT reportErrorInfo(StringView source) noexcept {
  try {
    const Error error = currentError();
    setErrorInfo(error, source);
    return error.number() == ErrorNumber::OutOfMemory ? E_OUTOFMEMORY : resultCode(error.number());
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace zelUtilities
