// FileDialogs: the system's dialogs for files and folders; see Dialogs.h. Their owner is the calling thread's
// active window.
#pragma once

#include "platform/Dialogs.h"

namespace zelUtilities::fileDialogs {

std::vector<String> openFiles(const FileQuestion& question);
String saveFile(const FileQuestion& question);
String selectFolder(StringView title, StringView folder);

}  // namespace zelUtilities::fileDialogs
