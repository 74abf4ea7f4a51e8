// Reading XML through the platform's document object, as far as the column set needs it.
#pragma once

#include "automation/Object.h"
#include "automation/Variant.h"

namespace zelUtilities {

// The loaded document, or nothing when the text is not well-formed or there is no parser.
Ref<Object> parsedDocument(StringView sXML);

// An object-valued property of a foreign object; nothing where it has none.
Ref<Object> objectProperty(Object& object, StringView name);

// The first node that the path selects below the document, or nothing.
Ref<Object> selectedNode(Object& document, StringView path);

}  // namespace zelUtilities
