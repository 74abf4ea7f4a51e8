// A moment of the system's as a client's date.
#pragma once

#include <ctime>

#include "automation/Date.h"

namespace zelUtilities {

// Local time as it was then and there.
Date localDate(std::time_t seconds);

}  // namespace zelUtilities
