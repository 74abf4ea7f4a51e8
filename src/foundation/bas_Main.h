// The objects that the whole library shares, and objects by name.
#pragma once

#include "automation/Object.h"
#include "automation/String.h"

namespace zelUtilities {

// The file-system object ("Scripting.FileSystemObject") of this thread, made on first use and kept for the
// thread's life. Nothing, without a report to the caller, when it cannot be created: the log has it then
// under "bas_Main.FSO".
Ref<Object> FSO();
// Its answer to "FileExists" or "FolderExists"; a failure is a no. So is a path with a NUL, of which the
// system's object would take the part before.
bool FSOSays(StringView question, StringView path);

// A new object by programmatic identifier: of this library ("zelUtilities.zelNodeList"), of the program's or
// the system's, or a stand-in, among which is the default logger "zelLog.zelHandler". Nothing when it cannot
// be created; then, unless the title is blank, a message box "Object Descriptor: <name>" says so under the
// title. Never raises.
Ref<Object> CreateNamedObject(StringView name, StringView title);

}  // namespace zelUtilities
