// What one command does, as "exit code|output|complaints". Words with blanks and empty ones stand in quotes.
#pragma once

#include <iomanip>
#include <sstream>

#include "host/Program.h"

namespace zelUtilities {

inline std::string run(const ClassRegistry& registry, const std::string& line) {
  std::istringstream input(line);
  std::vector<String> words;
  for (std::string word; input >> std::quoted(word);) words.push_back(fromUtf8(word));
  std::ostringstream out, err;
  const int code = host::runProgram(words, registry, out, err);
  return std::to_string(code) + "|" + out.str() + "|" + err.str();
}

}  // namespace zelUtilities
