// Nodes of XML documents, as far as the column set needs them beyond text/mXMLDocument.h.
#pragma once

#include "automation/Object.h"
#include "automation/Variant.h"

namespace zelUtilities {

// An object-valued property of a foreign object; nothing where it has none.
Ref<Object> objectProperty(Object& object, StringView name);

}  // namespace zelUtilities
