// What nearly every test speaks in: the errors that are raised and reported, values as one text, and a folder
// of the test's own.
#pragma once

#include <gmock/gmock.h>

#include "support/RaisedError.h"
#include "support/Reports.h"
#include "support/ScratchFolder.h"
#include "support/Spelled.h"

namespace zelUtilities {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

}  // namespace zelUtilities
