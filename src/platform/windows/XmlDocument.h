// The system's XML document, held back from documents that it would be busy with for ever.
#pragma once

#include "automation/Object.h"

struct IDispatch;

namespace zelUtilities {

// Whether an identifier names the document or one of its versions.
bool isXmlDocument(StringView progId);

// The document as a ForeignObject that does not load what is refused ahead of it (see XmlScreening.h);
// parseError then has that reason. Clients who are given it call the system's own object.
Ref<Object> boundedXmlDocument(IDispatch* document);

}  // namespace zelUtilities
