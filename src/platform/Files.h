// Files: what the library asks of a file system.
//
//   if (files().findFirst(u"C:\\Data\\a.ini") != u"") text = widen(files().readWhole(u"C:\\Data\\a.ini"));
//   files().replaceWhole(u"C:\\Data\\a.ini", narrow(text));
//
// Paths may be relative to the current folder; folders are parted by "\" or "/". On a system with one tree of
// its own, Windows paths go over a table of drives ("Z:" is the whole tree, "C:" a folder of the user's, more
// drives are folders or links named after their letter in the folder "drives" of the library's home), names
// are matched without regard to letter case where the exact one is missing, and hidden, system and archive
// are attributes that are kept beside the file.
//
// Contents are bytes. Every failure raises an Error without a source: 52 for a name that can be no file's
// (empty, with a NUL or a wildcard), 53 file not found, 57 device, 58 exists already, 61 disk full,
// 70 permission denied (in use by somebody else), 75 path/file access (read-only, a folder, no right),
// 76 path not found.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "automation/String.h"
#include "platform/Service.h"

namespace zelUtilities {

namespace FileAttribute {
inline constexpr std::uint32_t Normal = 0;
inline constexpr std::uint32_t ReadOnly = 1;
inline constexpr std::uint32_t Hidden = 2;
inline constexpr std::uint32_t System = 4;
inline constexpr std::uint32_t Folder = 16;
inline constexpr std::uint32_t Archive = 32;
}  // namespace FileAttribute

struct Files {
  virtual ~Files() = default;

  // The name, without its folder, of the first entry, in the order of names, that matches a path whose last
  // part may hold the wildcards * and ?; "" when there is none, also for a path that can be nobody's. Hidden
  // and system entries and folders are seen only when the attribute set names them; Normal sees none of the
  // three. A path that ends in a separator asks for the first entry in that folder.
  virtual String findFirst(StringView pattern, std::uint32_t attributes = FileAttribute::Normal) = 0;

  // All of them, in the order of their names.
  virtual std::vector<String> findAll(StringView pattern,
                                      std::uint32_t attributes = FileAttribute::Normal) = 0;

  // Whether there is such a file or folder, hidden ones included. False for a path that can be nobody's.
  virtual bool fileExists(StringView path) = 0;
  virtual bool folderExists(StringView path) = 0;
  // "C", "C:" or a path on the drive.
  virtual bool driveExists(StringView drive) = 0;

  virtual std::uint64_t length(StringView path) = 0;
  // FileAttribute bits of a file or folder. ReadOnly also where its owner may not write to it.
  virtual std::uint32_t attributes(StringView path) = 0;
  // Sets all of ReadOnly, Hidden, System and Archive. Raises 70 where the file system cannot keep them.
  virtual void setAttributes(StringView path, std::uint32_t attributes) = 0;

  // Raises 7 for a file longer than a text may be (2^31 - 1 bytes).
  virtual std::string readWhole(StringView path) = 0;
  // Creates the file, or replaces all that it holds, keeping its attributes and rights. Until the new
  // contents are safely on the disk the old ones stay, and on any failure for good. Refuses a read-only
  // file with 75.
  virtual void replaceWhole(StringView path, std::string_view contents) = 0;
  // Writes from the first byte on, in place; what the file holds behind that stays. Creates a missing file.
  virtual void overwrite(StringView path, std::string_view contents) = 0;
  // Appends in one piece; several processes that append to one file do not mix their pieces.
  virtual void append(StringView path, std::string_view contents) = 0;
  // Refuses a read-only file with 75 unless forced.
  virtual void remove(StringView path, bool force = false) = 0;

  // Creates one folder; the one above it must exist.
  virtual void createFolder(StringView path) = 0;
  // Removes a folder with all that it holds. A read-only file in it raises 75 unless forced, and stays.
  virtual void removeFolder(StringView path, bool force = false) = 0;

  // The whole path of a name that may be relative, in the system's own form. Nothing need be there.
  virtual String fullPath(StringView path) = 0;
  // Where temporary files go, without a separator at the end.
  virtual String temporaryFolder() = 0;

  static Files& system();
};

inline Files& files() { return Service<Files>::inForce(); }

}  // namespace zelUtilities
