// The number of the Error that the body raises; 0 when it raises none.
#pragma once

#include "automation/Error.h"

namespace zelUtilities {

template <class Body>
std::int32_t raised(const Body& body) {
  try {
    body();
  } catch (const Error& error) {
    return error.number();
  }
  return 0;
}

}  // namespace zelUtilities
