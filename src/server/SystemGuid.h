// Published identifiers as the system takes them.
#pragma once

#include <windows.h>

#include "server/PublishedNames.h"

namespace zelUtilities {

GUID systemGuid(const Uuid& uuid);

// "{FBD36A25-...}", as the system's registry writes it.
String guidText(const Uuid& uuid);

}  // namespace zelUtilities
