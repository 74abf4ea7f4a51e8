// What the parser finds wrong, in the terms of the system's own reader of XML.
#pragma once

#include <cstdint>

#include "automation/String.h"

namespace zelUtilities {

// The number that the system's reader has for an error of the parser's; a general one where it has none.
std::int32_t xmlErrorNumber(int theirs);
// The parser's message without its line end; a general one for nothing.
String xmlErrorSentence(const char* message);

}  // namespace zelUtilities
