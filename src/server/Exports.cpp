// The entry points that the system calls. Nothing that the library raises leaves them.
#include <windows.h>

#include <objbase.h>

#include "automation/CaseFolding.h"
#include "library/Library.h"
#include "platform/windows/WideText.h"
#include "server/Bridge.h"
#include "server/ClassFactory.h"
#include "server/ErrorInfo.h"
#include "server/Registration.h"
#include "server/ServerLife.h"

using namespace zelUtilities;

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
  if (reason == DLL_PROCESS_ATTACH) ServerLife::setModule(instance);
  return TRUE;
}

extern "C" HRESULT WINAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** out) {
  if (!out) return E_POINTER;
  *out = nullptr;
  return guarded({}, [&]() -> HRESULT {
    installBridge();
    const ClassInfo* info = findCreatableClass(classId);
    if (!info) return CLASS_E_CLASSNOTAVAILABLE;
    auto* factory = new ClassFactory(*info);
    const HRESULT result = factory->QueryInterface(interfaceId, out);
    factory->Release();
    return result;
  });
}

extern "C" HRESULT WINAPI DllCanUnloadNow() { return ServerLife::canUnload() ? S_OK : S_FALSE; }

extern "C" HRESULT WINAPI DllRegisterServer() {
  return guarded({}, [] { return registerServer(RegistrationScope::Machine); });
}

extern "C" HRESULT WINAPI DllUnregisterServer() {
  return guarded({}, [] { return unregisterServer(RegistrationScope::Machine); });
}

// "user" registers for the current user alone, which needs no administrator.
extern "C" HRESULT WINAPI DllInstall(BOOL install, LPCWSTR commandLine) {
  return guarded({}, [&]() -> HRESULT {
    const String words = commandLine ? fromWide(commandLine) : String();
    if (!words.empty() && !equalFolded(words, u"user")) return E_INVALIDARG;
    const auto scope = words.empty() ? RegistrationScope::Machine : RegistrationScope::User;
    return install ? registerServer(scope) : unregisterServer(scope);
  });
}
