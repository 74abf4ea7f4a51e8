// What a failed call of the system is to a client.
#pragma once

namespace zelUtilities {

// Raises the Error for an errno of the system.
[[noreturn]] void raiseFileError(int code);

}  // namespace zelUtilities
