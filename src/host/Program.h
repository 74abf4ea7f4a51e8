// The program zel over a class registry.
#pragma once

#include <ostream>
#include <span>

#include "automation/String.h"
#include "foundation/ClassRegistry.h"

namespace zelUtilities::host {

// Runs one command and returns the program's exit code: 0; 1 when the command failed, reported an error or
// its output did not arrive; 2 when it was not understood. Results go to out, everything else to err, both as
// UTF-8. Message boxes of the library become messages on err. Raises nothing.
int runProgram(std::span<const String> arguments, const ClassRegistry& registry, std::ostream& out,
               std::ostream& err);

}  // namespace zelUtilities::host
