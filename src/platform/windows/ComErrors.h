// What a failed call of an automation object is to a client.
#pragma once

struct tagEXCEPINFO;

namespace zelUtilities {

// Raises the Error for a result code, with the object's own exception record where there is one (it is
// emptied). Codes that stand for a number of the automation run time become that number.
[[noreturn]] void raiseComError(long result, tagEXCEPINFO* exception = nullptr);

// Does nothing for a success.
inline void requireSuccess(long result) {
  if (result < 0) raiseComError(result);
}

}  // namespace zelUtilities
