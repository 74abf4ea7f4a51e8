// Files: what the library asks of a file system.
//
//   if (files().findFirst(u"C:\\Data\\a.ini") != u"") text = widen(files().readWhole(u"C:\\Data\\a.ini"));
//   files().replaceWhole(u"C:\\Data\\a.ini", narrow(text));
//
// Paths may be relative to the current folder; folders are parted by "\" or "/". On a system with one tree of
// its own, Windows paths go over a table of drives ("Z:" is the whole tree, "C:" a folder of the user's, more
// drives are folders or links named after their letter in the folder "drives" of the library's home), names
// are matched without regard to letter case where the exact one is missing (which takes a look at the whole
// folder), and hidden, system and archive are attributes that are kept beside the file.
//
// Contents are bytes. Every failure raises an Error without a source: 52 for a name that can be no file's
// (empty, with a NUL or a wildcard), 53 file not found, 57 device, 58 exists already, 61 disk full,
// 70 permission denied (in use by somebody else), 74 a move of a folder to another drive, 75 path/file access
// (read-only, a folder, a device, no right), 76 path not found.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "automation/Date.h"
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

struct FileEntry {
  String name;  // without its folder
  bool isFolder = false;
  bool isLink = false;  // the folder, or the file, lies elsewhere

  friend bool operator==(const FileEntry&, const FileEntry&) = default;
};

struct FileDetails {
  std::uint64_t length = 0;  // bytes; 0 for a folder
  Date modified;             // local time, in whole seconds
  bool isFolder = false;
};

// A file that is read from its first byte to what was its last when it was opened.
class FileReader {
 public:
  explicit FileReader(std::uint64_t length) : length_(length), left_(length) {}
  virtual ~FileReader() = default;
  FileReader(const FileReader&) = delete;
  FileReader& operator=(const FileReader&) = delete;

  std::uint64_t length() const { return length_; }  // bytes
  // Fills the buffer and returns the count of bytes; fewer than it holds only at the end.
  std::size_t read(std::span<char> buffer) {
    const std::size_t count = readMore(buffer.first(std::min<std::uint64_t>(buffer.size(), left_)));
    left_ -= count;
    return count;
  }

 private:
  virtual std::size_t readMore(std::span<char> buffer) = 0;

  const std::uint64_t length_;
  std::uint64_t left_;
};

struct Files {
  virtual ~Files() = default;

  // The name, without its folder, of the first entry, in the order of names, that matches a path whose last
  // part may hold wildcards (see FilePattern.h); "" when there is none, also for a path that can be nobody's.
  // Hidden and system entries and folders are seen only when the attribute set names them; Normal sees none
  // of the three. A path that ends in a separator asks for the first entry in that folder.
  virtual String findFirst(StringView pattern, std::uint32_t attributes = FileAttribute::Normal) = 0;

  // All of them, in the order of their names. Raises 75 where the folder may not be listed.
  virtual std::vector<FileEntry> findAll(StringView pattern,
                                         std::uint32_t attributes = FileAttribute::Normal) = 0;

  // Whether there is such a file or folder, hidden ones included. False for a path that can be nobody's.
  virtual bool fileExists(StringView path) = 0;
  virtual bool folderExists(StringView path) = 0;
  // "C", "C:" or a path on the drive.
  virtual bool driveExists(StringView drive) = 0;
  // Whether both paths lead to one file or folder that is there.
  virtual bool isSame(StringView path, StringView other) = 0;

  virtual FileDetails details(StringView path) = 0;
  // FileAttribute bits of a file or folder; the system may add bits of its own. ReadOnly also where the
  // owner of a file may not write to it.
  virtual std::uint32_t attributes(StringView path) = 0;
  // Sets all of ReadOnly, Hidden, System and Archive. Raises 70 where the file system cannot keep them.
  virtual void setAttributes(StringView path, std::uint32_t attributes) = 0;

  virtual std::unique_ptr<FileReader> open(StringView path) = 0;
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
  // Copies a file with its attributes and date of modification. The copy is there whole or not at all; until
  // then, and on any failure for good, a file under the new name stays. Refuses a read-only one with 75, and
  // one that is the same file with 70. With replacing false the new name is taken as it is spelled, and an
  // entry under it raises 58.
  virtual void copy(StringView from, StringView to, bool replacing = true) = 0;
  // Renames or moves a file or folder; a file may move to another drive. An entry under the new name raises
  // 58, unless it is the renamed one itself in other letter case, or replacing is set and both are files;
  // then it stays until the other one takes its place, even when it is read-only.
  virtual void rename(StringView from, StringView to, bool replacing = false) = 0;
  // Refuses a read-only file with 75 unless forced. Of a link, the link is removed.
  virtual void remove(StringView path, bool force = false) = 0;

  // Creates one folder; the one above it must exist.
  virtual void createFolder(StringView path) = 0;
  // Removes a folder with all that it holds; links are removed, not followed. A read-only file in it raises
  // 75 unless forced, and stays.
  virtual void removeFolder(StringView path, bool force = false) = 0;

  // Creates an empty file of a name that nobody else has: the first three characters of the prefix, digits
  // and ".tmp". Returns its path.
  virtual String createTemporary(StringView folder, StringView prefix) = 0;

  // The whole path of a name that may be relative, in the system's own form. Nothing need be there.
  virtual String fullPath(StringView path) = 0;
  // Where temporary files go, and the system's own folder, which need not be there: Windows paths without a
  // separator at their end.
  virtual String temporaryFolder() = 0;
  virtual String windowsFolder() = 0;

  static Files& system();
};

inline Files& files() { return Service<Files>::inForce(); }

}  // namespace zelUtilities
