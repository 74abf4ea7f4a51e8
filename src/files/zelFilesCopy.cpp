// Copying, and the folders that it needs.
#include <algorithm>
#include <iterator>
#include <unordered_set>
#include <vector>

#include "automation/CaseFolding.h"
#include "automation/Error.h"
#include "files/LiftedReadOnly.h"
#include "files/zelFiles.h"
#include "foundation/Handled.h"
#include "platform/Dialogs.h"
#include "platform/Files.h"

namespace zelUtilities {

namespace {

constexpr StringView copySource = u"zelFiles.zel_FilesCopy";

bool has(ZEL_Utilities_CopyFlags flags, ZEL_Utilities_CopyFlags flag) { return (flags & flag) != 0; }

void copyOver(const String& source, const String& destination) {
  LiftedReadOnly lifted(destination);
  files().copy(source, destination);
  lifted.keep();
}

ZEL_Utilities_CopyErrors copyOne(const String& source, String destination, ZEL_Utilities_CopyFlags flags) {
  if (!zel_IsFile(source)) return ZEL_CopyErrors_NoSourceFile;
  if (zel_IsFolder(destination)) destination += u"\\" + zel_GetFileName(source);
  String folder = zel_GetFolderName(destination);
  if (folder.empty()) {
    folder = zel_GetFolderName(source);
    destination = folder + u"\\" + destination;
  }
  if (has(flags, ZEL_CopyFlags_NoMakePath) && !folder.empty() && !zel_IsFolder(folder))
    return ZEL_CopyErrors_NoPath;
  const bool isThere = zel_IsFile(destination);
  if (isThere && has(flags, ZEL_CopyFlags_NoOverwrite)) return ZEL_CopyErrors_Overwrite;
  if (isThere) {
    copyOver(source, destination);
  } else {
    files().copy(source, destination);
  }
  return ZEL_CopyErrors_Success;
}

// A folder with what is in it, level by level without recursion. Folders inside are gone into before the
// files that follow them, as the listing has them. It never goes into the folder that it makes, nor through a
// link into a folder that it is in already.
class TreeCopy {
 public:
  explicit TreeCopy(ZEL_Utilities_CopyFlags flags) : flags_(flags) {}

  ZEL_Utilities_CopyErrors run(StringView pattern, StringView destination) {
    if (zel_IsFile(destination)) return ZEL_CopyErrors_SingleFileDestination;
    const bool wholeFolder = zel_IsFolder(pattern);
    const bool begun = wholeFolder ? enterFolder(withoutClosingSeparators(pattern), destination)
                                   : enter(zel_GetFolderName(pattern), pattern, String(destination));
    if (!begun) return ZEL_CopyErrors_NoPath;
    while (!levels_.empty()) {
      if (levels_.back().next == levels_.back().found.size()) {
        levels_.pop_back();
      } else {
        handled(copySource, [&] { copyNext(levels_.back()); });  // what fails is left out
      }
    }
    return ZEL_CopyErrors_Success;
  }

 private:
  struct Level {
    String source;
    String destination;
    std::vector<FileEntry> found;
    std::size_t next = 0;
    std::unordered_set<String> taken;  // names in the destination, see namesIn
  };

  static String withoutClosingSeparators(StringView path) {
    while (path.ends_with(u'\\')) path.remove_suffix(1);
    return String(path);
  }

  bool enterFolder(const String& folder, StringView destination) {
    const bool isDrive = folder.size() == 2 && folder[1] == u':';  // whose root has no name of its own
    const String below = isDrive ? String() : u"\\" + zel_GetFileName(folder);
    return enter(folder, folder + u"\\*.*", String(destination) + below);
  }

  bool enter(const String& source, StringView pattern, const String& destination) {
    Level level{source, destination, {}, 0, {}};
    if (zel_IsFolder(destination)) {
      level.taken = namesIn(destination);
    } else if (!zel_MakeFullDir(destination)) {
      return false;
    }
    const bool recurse = has(flags_, ZEL_CopyFlags_Recurse);
    level.found = files().findAll(pattern, recurse ? FileAttribute::Folder : FileAttribute::Normal);
    levels_.push_back(std::move(level));
    return true;
  }

  // Folded; none where they may not be listed: files are written there all the same.
  static std::unordered_set<String> namesIn(const String& folder) {
    constexpr std::uint32_t everything =
        FileAttribute::Hidden | FileAttribute::System | FileAttribute::Folder;
    std::unordered_set<String> names;
    try {
      for (const FileEntry& entry : files().findAll(folder + u"\\*", everything))
        names.insert(foldCase(entry.name));
    } catch (const Error&) {
      // A name that is taken shows when a file is to be written under it.
    }
    return names;
  }

  void copyNext(Level& level) {
    const FileEntry& entry = level.found[level.next++];
    const String path = level.source + u"\\" + entry.name;
    if (!entry.isFolder) return copyFile(level, entry.name, path);
    if (!isEndless(entry, path)) enterFolder(path, String(level.destination));
  }

  bool isEndless(const FileEntry& entry, const String& path) const {
    if (files().isSame(path, levels_.front().destination)) return true;
    return entry.isLink && std::any_of(levels_.begin(), levels_.end(), [&](const Level& level) {
             return files().isSame(path, level.source);
           });
  }

  // A name that nothing has in the destination needs no further questions there.
  void copyFile(const Level& level, const String& name, const String& path) {
    if (!level.taken.contains(foldCase(name))) {
      try {
        return files().copy(path, level.destination + u"\\" + name, false);
      } catch (const Error& error) {
        if (error.number() != ErrorNumber::FileAlreadyExists) return;  // as any result of one file's copy
      }
    }
    zel_FileCopy(path, level.destination, flags_);
  }

  ZEL_Utilities_CopyFlags flags_;
  std::vector<Level> levels_;
};

void showPathError(StringView header, StringView path, const Error* error = nullptr) {
  String text = String(header) + u"\r\nPath:\t" + String(path) + u"      ";
  if (error) text += u"\r\nError:\t" + error->description() + u"    ";
  messageBox(text, u"Path Error", MessageBoxStyle::Exclamation);
}

// Creates the folders that are missing on the way to the last one. Mostly that is the last one alone, so what
// is there is looked for from the end.
void createFolders(StringView path) {
  // A machine and its first shared folder are nothing that can be created.
  std::size_t at = path.starts_with(u"\\\\") ? path.find(u'\\', 2) : path.find(u'\\');
  String whole(path.substr(0, at));
  std::vector<std::size_t> ends;  // in it, of each folder
  while (at < path.size()) {
    const std::size_t begin = at + 1;
    at = std::min(path.find(u'\\', begin), path.size());
    if (at == begin) continue;
    whole += u"\\";
    whole += path.substr(begin, at - begin);
    ends.push_back(whole.size());
  }
  const auto isThere = [&](std::size_t end) { return zel_IsFolder(StringView(whole).substr(0, end)); };
  auto missing = ends.end();
  while (missing != ends.begin() && !isThere(*std::prev(missing))) --missing;
  for (; missing != ends.end(); ++missing)
    if (!isThere(*missing)) files().createFolder(StringView(whole).substr(0, *missing));
}

}  // namespace

ZEL_Utilities_CopyErrors zel_FileCopy(StringView sSource, StringView sDestination,
                                      ZEL_Utilities_CopyFlags eCopyFlags) {
  try {
    return copyOne(String(sSource), String(sDestination), eCopyFlags);
  } catch (...) {
    return static_cast<ZEL_Utilities_CopyErrors>(currentError().number());
  }
}

ZEL_Utilities_CopyErrors zel_FilesCopy(StringView sSourcePattern, StringView sDestination,
                                       ZEL_Utilities_CopyFlags eCopyFlags) {
  ZEL_Utilities_CopyErrors result = ZEL_CopyErrors_Success;
  handled(copySource, [&] { result = TreeCopy(eCopyFlags).run(sSourcePattern, sDestination); });
  return result;
}

bool zel_MakeFullDir(StringView sPath) {
  bool made = false;
  handled(u"zelFiles.zel_MakeFullDir", [&] {
    if (zel_IsFolder(sPath)) {
      made = true;
    } else if (!sPath.empty() && sPath.find(u':') == StringView::npos && !sPath.starts_with(u"\\\\")) {
      showPathError(u"The requested path is not an absolute reference:     ", sPath);
    } else if (!sPath.empty()) {
      try {
        createFolders(sPath);
        made = true;
      } catch (const Error& error) {
        showPathError(u"The requested path could not be created:  ", sPath, &error);
      }
    }
  });
  return made;
}

}  // namespace zelUtilities
