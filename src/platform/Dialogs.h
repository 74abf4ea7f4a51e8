// Dialogs: what the library shows to the user and asks of the user.
//
// Where the system has no user interface of its own, title and text of a box go to standard error and the box
// is answered with OK; files and folders are asked for by the desktop's chooser, the program zenity or
// kdialog. A program with an interface of its own puts its Dialogs in force with Service<Dialogs>::replace.
#pragma once

#include <cstdint>
#include <vector>

#include "automation/String.h"
#include "platform/Service.h"

namespace zelUtilities {

namespace MessageBoxStyle {
inline constexpr std::int32_t Exclamation = 48;  // with an OK button
}
namespace MessageBoxAnswer {
inline constexpr std::int32_t Ok = 1;
}

struct FileKind {
  String name;      // as the user reads it
  String patterns;  // "*.txt", or several parted by ";"
};

// What the user is asked when files are to be named. Empty texts leave the choice to the system.
struct FileQuestion {
  String title;
  String folder;                // to begin in
  String name;                  // suggested, with or without a folder
  std::vector<FileKind> kinds;  // to choose among; none shows all files
  std::int32_t kind = 1;        // the one to begin with, from 1
  String extension;             // that a name typed without one gets, without the dot
  bool several = false;         // whether several files may be chosen
};

struct Dialogs {
  virtual ~Dialogs() = default;

  // Shows a modal box and returns the number of the button that closed it. Never raises.
  virtual std::int32_t messageBox(StringView text, StringView title, std::int32_t style) = 0;

  // Ask for files to open, a file to save to, a folder, and give whole Windows paths; none or "" when the
  // user cancels. Files to open and folders exist. Before a file that exists is chosen to save to, the user
  // has agreed to replace it. Raise where nobody can be asked, 52 for a suggested name that can be no file's.
  // Substitutes that show only boxes answer as a user who cancels.
  virtual std::vector<String> openFiles(const FileQuestion&) { return {}; }
  virtual String saveFile(const FileQuestion&) { return {}; }
  virtual String selectFolder(StringView /*title*/, StringView /*folder*/) { return {}; }

  static Dialogs& system();
};

inline Dialogs& dialogs() { return Service<Dialogs>::inForce(); }

inline std::int32_t messageBox(StringView text, StringView title,
                               std::int32_t style = MessageBoxStyle::Exclamation) {
  return dialogs().messageBox(text, title, style);
}

}  // namespace zelUtilities
