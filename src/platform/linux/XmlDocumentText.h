// The text of nodes, and the white space in it.
#pragma once

#include <string>

#include "platform/linux/XmlDocumentTree.h"

namespace zelUtilities {

// Takes the texts out that are nothing but white space, where no attribute xml:space preserves them. They
// still part the words on either side.
void dropWhiteSpace(_xmlDoc* document);

// The texts and CDATA sections of a node and all below it; what an attribute, a comment or a processing
// instruction holds. Trimmed: without white space at the ends, but for that of CDATA sections, of attributes
// and under xml:space.
std::string textOf(_xmlNode* node, bool trimmed);

}  // namespace zelUtilities
