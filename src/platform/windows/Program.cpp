#include "platform/Program.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h>

#include <cstdio>

namespace zelUtilities {

std::vector<String> programArguments(int, char**) {
  // main's own arguments are in the ANSI code page, which cannot carry every name.
  int count = 0;
  wchar_t** values = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<String> arguments;
  for (int i = 1; i < count; ++i) arguments.emplace_back(reinterpret_cast<const char16_t*>(values[i]));
  LocalFree(values);
  return arguments;
}

void useUtf8Streams() {
  SetConsoleOutputCP(CP_UTF8);
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
}

}  // namespace zelUtilities
