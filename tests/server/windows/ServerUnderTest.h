// The library as the tests reach it: the file beside the test program, used without being registered.
#pragma once

#include <windows.h>

#include <objbase.h>
#include <ocidl.h>
#include <oleauto.h>

#include <string>

#include "platform/LateBound.h"
#include "server/ComObject.h"

namespace zelUtilities {

// A file beside the test program.
std::wstring besideProgram(const std::wstring& name);

// COM for this thread, with the classes of the manifest beside the library, for as long as this lives.
class ServerUnderTest {
 public:
  explicit ServerUnderTest(DWORD apartment = COINIT_APARTMENTTHREADED);
  ~ServerUnderTest();
  ServerUnderTest(const ServerUnderTest&) = delete;
  ServerUnderTest& operator=(const ServerUnderTest&) = delete;

 private:
  HANDLE context_ = INVALID_HANDLE_VALUE;
  ULONG_PTR cookie_ = 0;
};

// Runs a program to its end; its exit code.
DWORD runProgram(std::wstring commandLine);

// Another interface of an object; nothing where it has none.
template <class Interface>
ComRef<Interface> query(IUnknown* object) {
  ComRef<Interface> found;
  if (object) object->QueryInterface(__uuidof(Interface), found.receiveAny());
  return found;
}

// What the system sees of one of the library's objects, and where its events are connected.
ComRef<IDispatch> dispatchOf(const LateBound& object);
ComRef<IConnectionPoint> eventsOf(IDispatch* object);

std::string utf8(const wchar_t* text);
// The text of a value as the system converts it; "(object)" and the like where it does not.
std::string textOf(const VARIANT& value);

}  // namespace zelUtilities
