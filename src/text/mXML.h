// mXML: XML text for the library's own use. Clients reach these routines through zelXML.h.
//
// A failure is raised under "mXML.<routine>::<its own source>" and not logged.
#pragma once

#include "automation/String.h"

namespace zelUtilities::mXML {

// Escapes & < > ' and " unless the text is numeric in the user's locale, and writes each character
// whose code in the system's code page is 128 or more as "&#code;". The code is the code page's, not
// Unicode's: the euro sign is "&#128;" in the Western one. A character without a code there stays.
String ToXML(StringView sSource);

// True where ToXML is known to change nothing: only ASCII and nothing to escape.
bool isPlain(StringView text);

// Reads &lt; &gt; &apos; &quot; and &amp;, each once ("&amp;lt;" is "&lt;"). Numeric references stay.
String FromXML(StringView sSource);

}  // namespace zelUtilities::mXML
