#include "platform/windows/ComErrors.h"

#include <windows.h>

#include <oleauto.h>

#include "automation/Error.h"
#include "platform/windows/FileErrors.h"
#include "platform/windows/WideText.h"

namespace zelUtilities {

namespace {

constexpr int controlFacility = 0xA;  // 0x800A0000 plus a number of the automation run time

std::int32_t numberOf(HRESULT result) {
  switch (result) {
    case DISP_E_UNKNOWNNAME:
    case DISP_E_MEMBERNOTFOUND:
    case DISP_E_UNKNOWNINTERFACE:
      return ErrorNumber::ObjectDoesNotSupport;
    case DISP_E_TYPEMISMATCH:
    case DISP_E_BADVARTYPE:
      return ErrorNumber::TypeMismatch;
    case DISP_E_OVERFLOW:
      return ErrorNumber::Overflow;
    case DISP_E_BADINDEX:
      return ErrorNumber::SubscriptOutOfRange;
    case DISP_E_DIVBYZERO:
      return ErrorNumber::DivisionByZero;
    case DISP_E_BADPARAMCOUNT:
      return ErrorNumber::WrongNumberOfArguments;
    case DISP_E_PARAMNOTOPTIONAL:
      return ErrorNumber::ArgumentNotOptional;
    case DISP_E_PARAMNOTFOUND:
    case DISP_E_NONAMEDARGS:
      return ErrorNumber::NamedArgumentNotFound;
    case E_OUTOFMEMORY:
      return ErrorNumber::OutOfMemory;
    case E_INVALIDARG:
      return ErrorNumber::InvalidProcedureCall;
    case E_ACCESSDENIED:
      return ErrorNumber::PermissionDenied;
    case E_NOTIMPL:
      return 445;
    case E_NOINTERFACE:
      return 430;
    default:
      break;
  }
  if (HRESULT_FACILITY(result) == controlFacility) return HRESULT_CODE(result);
  const std::int32_t number =
      HRESULT_FACILITY(result) == FACILITY_WIN32 ? fileErrorNumber(HRESULT_CODE(result)) : 0;
  return number != 0 ? number : static_cast<std::int32_t>(result);
}

String systemText(HRESULT result) {
  wchar_t text[512];
  const DWORD size = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                    static_cast<DWORD>(result), 0, text, 512, nullptr);
  String message = fromWide(text, size);
  message.erase(message.find_last_not_of(u"\r\n .") + 1);
  return message;
}

String descriptionOf(HRESULT result, std::int32_t number) {
  if (number > 0 && number < 0x10000) return String(errorText(number));
  String message = systemText(result);
  return message.empty() ? String(errorText(number)) : message;
}

String takeText(BSTR& text) {
  String taken = text ? fromWide(text, SysStringLen(text)) : String();
  SysFreeString(text);
  text = nullptr;
  return taken;
}

}  // namespace

void raiseComError(long result, tagEXCEPINFO* exception) {
  if (!exception || result != DISP_E_EXCEPTION)
    throw Error(numberOf(result), {}, descriptionOf(result, numberOf(result)));
  if (exception->pfnDeferredFillIn) exception->pfnDeferredFillIn(exception);
  const String source = takeText(exception->bstrSource);
  String description = takeText(exception->bstrDescription);
  takeText(exception->bstrHelpFile);
  const HRESULT code = exception->scode != 0 ? exception->scode : DISP_E_EXCEPTION;
  const std::int32_t number = exception->wCode != 0 ? exception->wCode : numberOf(code);
  if (description.empty()) description = descriptionOf(code, number);
  throw Error(number, source, description);
}

}  // namespace zelUtilities
