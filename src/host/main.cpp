#include <iostream>

#include "host/Program.h"
#include "library/Library.h"
#include "platform/Program.h"

int main(int count, char** values) {
  using namespace zelUtilities;
  useUtf8Streams();
  const std::vector<String> arguments = programArguments(count, values);
  return host::runProgram(arguments, library(), std::cout, std::cerr);
}
