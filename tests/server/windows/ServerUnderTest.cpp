#include "server/windows/ServerUnderTest.h"

#include <stdexcept>

#include "platform/windows/ForeignObject.h"
#include "platform/windows/OwnedVariant.h"

namespace zelUtilities {

std::wstring besideProgram(const std::wstring& name) {
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  const std::wstring program = path;
  return program.substr(0, program.rfind(L'\\') + 1) + name;
}

ServerUnderTest::ServerUnderTest(DWORD apartment) {
  CoInitializeEx(nullptr, apartment);
  const std::wstring manifest = besideProgram(L"zelUtilities.manifest");
  ACTCTXW wanted{};
  wanted.cbSize = sizeof wanted;
  wanted.lpSource = manifest.c_str();
  context_ = CreateActCtxW(&wanted);
  if (context_ == INVALID_HANDLE_VALUE || !ActivateActCtx(context_, &cookie_))
    throw std::runtime_error("the manifest is not accepted");
}

ServerUnderTest::~ServerUnderTest() {
  DeactivateActCtx(0, cookie_);
  ReleaseActCtx(context_);
  CoUninitialize();
}

DWORD runProgram(std::wstring commandLine) {
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                      &process))
    return DWORD(-1);
  WaitForSingleObject(process.hProcess, 60000);
  DWORD code = DWORD(-1);
  GetExitCodeProcess(process.hProcess, &code);
  CloseHandle(process.hProcess);
  CloseHandle(process.hThread);
  return code;
}

ComRef<IDispatch> dispatchOf(const LateBound& object) {
  return ComRef<IDispatch>(objectCast<ForeignObject>(object.get().get())->dispatch());
}

ComRef<IConnectionPoint> eventsOf(IDispatch* object) {
  ComRef<IConnectionPoint> point;
  const auto provider = query<IProvideClassInfo2>(object);
  const auto container = query<IConnectionPointContainer>(object);
  GUID events;
  if (provider && container && provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events) >= 0)
    container->FindConnectionPoint(events, point.receive());
  return point;
}

std::string utf8(const wchar_t* text) {
  return text ? toUtf8(reinterpret_cast<const char16_t*>(text)) : std::string();
}

std::string textOf(const VARIANT& value) {
  if (value.vt == VT_NULL) return "(null)";
  if (value.vt == VT_EMPTY) return "(empty)";
  if (value.vt == VT_DISPATCH) return value.pdispVal ? "(object)" : "(nothing)";
  OwnedVariant text;
  if (VariantChangeType(&text, const_cast<VARIANT*>(&value), VARIANT_ALPHABOOL, VT_BSTR) < 0)
    return "(type " + std::to_string(value.vt) + ")";
  return utf8(text.bstrVal);
}

}  // namespace zelUtilities
