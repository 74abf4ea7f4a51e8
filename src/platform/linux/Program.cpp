#include "platform/Program.h"

namespace zelUtilities {

std::vector<String> programArguments(int count, char** values) {
  std::vector<String> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(fromUtf8(values[i]));
  return arguments;
}

void useUtf8Streams() {}  // they do

}  // namespace zelUtilities
