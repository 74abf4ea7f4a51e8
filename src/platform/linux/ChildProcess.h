// Other programs, started by name from PATH without a shell: what an argument holds is never read as a
// command.
#pragma once

#include <string>
#include <vector>

namespace zelUtilities {

// Where PATH finds a program; "" where it does not.
std::string findProgram(const std::string& name);

// Starts a program, its path and its arguments, that lives on by itself, with nothing on its standard input
// and output. Raises where the system starts no more processes.
void startDetached(const std::vector<std::string>& command);

struct ProgramOutput {
  int exitCode = 0;  // -1 where it is unknown
  std::string text;
};

// Runs a program to its end and gives what it wrote to its standard output; its complaints go nowhere. Raises
// likewise.
ProgramOutput outputOf(const std::vector<std::string>& command);

}  // namespace zelUtilities
