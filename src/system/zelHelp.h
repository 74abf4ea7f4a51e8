// zelHelp: "Functions to aid in handling Help requests."
//
//   zel_HelpFromContext(u"C:\\App\\manual.chm", 120);     // the topic of that number
//
// A failure of the system's help viewer raises to the caller, but for ShowWinHelp. Where the system has no
// help viewer of its own, files are opened by the program that the user's desktop has for them, at their
// beginning, and no window is known.
#pragma once

#include <cstdint>

#include "automation/ClassInfo.h"
#include "automation/String.h"

namespace zelUtilities {

// By the file's extension, as it is written: "chm" takes ShowHTMLHelp, anything else, "CHM" too, ShowWinHelp,
// whose result is then -1 or 0.
std::int32_t zel_HelpFromContext(const String& sHelpFile, std::int32_t lContextID);

// Opens a compiled help file: at its index for a negative number, at its default topic for 0 and for a number
// that it does not know. The viewer's window; 0 for a missing file or where none is known.
std::int32_t ShowHTMLHelp(const String& sHelpFile, std::int32_t lContextID);
// The same under a name that clients have come to call.
std::int32_t ShowHTLMHelp(const String& sHelpFile, std::int32_t lContextID);

// Opens a help file of the older kind. False for a missing file alone, whatever becomes of the help; a
// failure is skipped.
bool ShowWinHelp(const String& sHelpFile, std::int32_t lContextID);

namespace zelHelp {
const ClassInfo& describeClass();
}

}  // namespace zelUtilities
