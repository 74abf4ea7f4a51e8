// What a failed call of the system is to a client.
#pragma once

#include <cstdint>

namespace zelUtilities {

// The number of the Error for a code of the system's files; 0 for a code that means nothing in particular.
std::int32_t fileErrorNumber(unsigned long code);

// Raises the Error for a code of the system, or for its last one.
[[noreturn]] void raiseFileError(unsigned long code);
[[noreturn]] void raiseLastFileError();

}  // namespace zelUtilities
