// FilePaths: the native path behind a name that a client gives, Windows paths included (see Files.h).
#pragma once

#include <string>

#include "automation/String.h"

struct stat;

namespace zelUtilities {

// The native path. Names that are not there in that spelling are taken from the folder without regard to
// letter case; what is not there at all is left as spelled. Raises 52 for a name that can be no file's and
// 76 for a drive that does not exist.
std::string nativePath(StringView path);

// The native path in the client's own spelling, whatever is there. Raises as nativePath does.
std::string asSpelled(StringView path);

// What the system knows of an entry, following links; False where there is none. Raises as nativePath does.
bool statusOf(StringView path, struct stat& status);

// The native path of an entry that is to be made: its last part stays as it is spelled.
std::string targetPath(StringView path);

// The folder that a native path lies in.
std::string folderOf(const std::string& path);

// A native path as a Windows path, on the drive that stands for most of it.
String windowsPath(const std::string& path);

// Where the last part of a path begins.
std::size_t lastPartOf(StringView path);

// The root of a drive without a separator at its end ("" is the whole tree's); raises 76 when there is none.
std::string driveRoot(char16_t letter);

}  // namespace zelUtilities
