// The library as the tests reach it: the file beside the test program, used without being registered.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string>

namespace zelUtilities {

// A file beside the test program.
std::wstring besideProgram(const std::wstring& name);

// COM for this thread, with the classes of the manifest beside the library, for as long as this lives.
class ServerUnderTest {
 public:
  ServerUnderTest();
  ~ServerUnderTest();
  ServerUnderTest(const ServerUnderTest&) = delete;
  ServerUnderTest& operator=(const ServerUnderTest&) = delete;

 private:
  HANDLE context_ = INVALID_HANDLE_VALUE;
  ULONG_PTR cookie_ = 0;
};

std::string utf8(const wchar_t* text);
// The text of a value as the system converts it; "(object)" and the like where it does not.
std::string textOf(const VARIANT& value);

}  // namespace zelUtilities
