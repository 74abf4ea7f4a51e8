// Writing a tree as XML text.
#pragma once

#include <string>

#include "platform/linux/XmlDocumentTree.h"

namespace zelUtilities {

// A node and all below it, or a whole document with a line end behind each of its nodes. Lines end in CR LF
// outside attributes; nothing is indented. UTF-8. Raises 7 for want of memory.
std::string markupOf(_xmlNode* node);

// The same of a document, in the encoding that its declaration names, or else in UTF-8; characters that the
// encoding lacks are written by number. Raises E_FAIL for an encoding that is not known.
std::string encodedMarkupOf(_xmlNode* document);

}  // namespace zelUtilities
