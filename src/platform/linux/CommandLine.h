// CommandLine: a command line taken apart the way Windows programs take theirs.
#pragma once

#include <vector>

#include "automation/String.h"

namespace zelUtilities {

// The program as the line may name it, and what follows.
struct ProgramName {
  StringView name;
  StringView arguments;
};

// In the order in which they are tried: the text in quotation marks that the line begins with, or else what
// stands before its first blank, before the second one and so on, as far as a name may reach.
std::vector<ProgramName> programNames(StringView line);

// The arguments: divided by blanks and tabs; those within quotation marks belong to the argument. Before a
// quotation mark two backslashes stand for one, an odd one makes the mark part of the argument, as does a
// second mark within marks.
std::vector<String> argumentsIn(StringView text);

}  // namespace zelUtilities
