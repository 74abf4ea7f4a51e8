#include "server/windows/ServerUnderTest.h"

#include <objbase.h>

#include <stdexcept>

#include "automation/String.h"

namespace zelUtilities {

std::wstring besideProgram(const std::wstring& name) {
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  const std::wstring program = path;
  return program.substr(0, program.rfind(L'\\') + 1) + name;
}

ServerUnderTest::ServerUnderTest() {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
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

std::string utf8(const wchar_t* text) {
  return text ? toUtf8(reinterpret_cast<const char16_t*>(text)) : std::string();
}

std::string textOf(const VARIANT& value) {
  VARIANT text;
  VariantInit(&text);
  if (value.vt == VT_NULL) return "(null)";
  if (value.vt == VT_EMPTY) return "(empty)";
  if (value.vt == VT_DISPATCH) return value.pdispVal ? "(object)" : "(nothing)";
  if (VariantChangeType(&text, const_cast<VARIANT*>(&value), VARIANT_ALPHABOOL, VT_BSTR) < 0)
    return "(type " + std::to_string(value.vt) + ")";
  std::string shown = utf8(text.bstrVal);
  VariantClear(&text);
  return shown;
}

}  // namespace zelUtilities
