// FileChooser: the desktop's own dialogs for files and folders, shown by the program zenity or kdialog; see
// Dialogs.h. On KDE's desktop kdialog goes first.
#pragma once

#include "platform/Dialogs.h"

namespace zelUtilities::fileChooser {

// Raise 429 where there is no display or neither program is on PATH.
std::vector<String> openFiles(const FileQuestion& question);
String saveFile(const FileQuestion& question);
String selectFolder(StringView title, StringView folder);

}  // namespace zelUtilities::fileChooser
