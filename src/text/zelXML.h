// zelXML: the global operations on XML text, each one a routine of mXML.
//
//   zel_ToXML(u"a<b & 'c'");        // a&lt;b &amp; &apos;c&apos;
//   zel_FromXML(u"a&lt;b");         // a<b
//
// What they do and raise stands in mXML.h. They keep no state; any thread may call them.
#pragma once

#include "automation/ClassInfo.h"
#include "text/mXML.h"

namespace zelUtilities {

// Text as the content of an element or attribute, and back.
inline String zel_ToXML(StringView sSource) { return mXML::ToXML(sSource); }
inline String zel_FromXML(StringView sSource) { return mXML::FromXML(sSource); }

namespace zelXML {
const ClassInfo& describeClass();
}

}  // namespace zelUtilities
