// What a command-line program asks of the system.
#pragma once

#include <vector>

#include "automation/String.h"

namespace zelUtilities {

// The program's arguments, without its own name. count and values are those of main.
std::vector<String> programArguments(int count, char** values);

// Lets standard output and error pass UTF-8 as it is written, line ends included, also to a console.
void useUtf8Streams();

}  // namespace zelUtilities
