// The Error that the body raises, as "number|source|description"; "nothing" when it raises none.
#pragma once

#include "automation/Error.h"

namespace zelUtilities {

template <class Body>
std::string raisedError(const Body& body) {
  try {
    body();
    return "nothing";
  } catch (const Error& error) {
    return std::to_string(error.number()) + "|" + toUtf8(error.source()) + "|" + error.what();
  }
}

}  // namespace zelUtilities
