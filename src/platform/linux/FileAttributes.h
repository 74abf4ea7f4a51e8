// FileAttributes: the attributes of a file or folder. Hidden, system and archive lie in the extended
// attribute that Samba and Wine use; read-only is the missing right of the owner to write.
#pragma once

#include <cstdint>
#include <string>

namespace zelUtilities {

// Follows links. Raises where there is nothing.
std::uint32_t fileAttributes(const std::string& path);
void setFileAttributes(const std::string& path, std::uint32_t attributes);

// Those that are kept beside the file or folder alone: hidden, system, archive.
std::uint32_t keptAttributes(const std::string& path);
// The same of an entry of an open folder, asked for in a listing: the usual answer, none, is found sooner.
std::uint32_t keptAttributes(const std::string& path, int folder, const char* name);

// Read-only for its owner, and so for everybody: the mode counts, since a superuser may write to anything.
bool isReadOnly(const std::string& path);

// Gives an open file the rights, the owner and the extended attributes of another one, as far as allowed.
void copyAttributes(const std::string& from, int toFile);

// Gives an open file the attributes of another open one, as far as its file system keeps them.
void copyKeptAttributes(int from, int to);

}  // namespace zelUtilities
