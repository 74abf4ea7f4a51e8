// zelObjects: objects by name, and what a collection holds.
#pragma once

#include "automation/ClassInfo.h"
#include "automation/Object.h"
#include "automation/Variant.h"

namespace zelUtilities {

// A new object by programmatic identifier. Nothing when it cannot be created; a message box tells the user
// then, unless the title is blank.
Ref<Object> zel_CreateObject(StringView sName, StringView sTitle = u"Missing Component");

// Whether the collection's "Item" has an object under the key. False for a missing key, also where Item
// answers one with nothing, and for an item that is no object: a collection of plain values has none. Clients
// rely on that. Never raises.
bool zel_IsInCollection(const Ref<Object>& col, const Variant& vKey);

namespace zelObjects {
const ClassInfo& describeClass();
}

}  // namespace zelUtilities
