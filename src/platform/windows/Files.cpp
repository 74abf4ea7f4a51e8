#include "platform/Files.h"

#include <windows.h>

#include <algorithm>
#include <atomic>
#include <limits>
#include <span>
#include <utility>
#include <vector>

#include "automation/Calendar.h"
#include "automation/CaseFolding.h"
#include "automation/Error.h"
#include "platform/FilePattern.h"
#include "platform/windows/FileErrors.h"
#include "platform/windows/FullPath.h"
#include "platform/windows/WideText.h"

namespace zelUtilities {

namespace {

constexpr std::int64_t longestText = std::numeric_limits<std::int32_t>::max();
constexpr std::size_t largestPiece = std::size_t{1} << 30;  // that the system is given at once
constexpr std::uint32_t unseenUnlessAsked =
    FileAttribute::Hidden | FileAttribute::System | FileAttribute::Folder;
constexpr std::uint32_t settable =
    FileAttribute::ReadOnly | FileAttribute::Hidden | FileAttribute::System | FileAttribute::Archive;
constexpr DWORD sharedByAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

class FileHandle {
 public:
  FileHandle(const String& path, DWORD access, DWORD sharing, DWORD disposition)
      : handle_(
            CreateFileW(wide(path), access, sharing, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr)) {
    if (handle_ == INVALID_HANDLE_VALUE) raiseLastFileError();
  }
  ~FileHandle() {
    if (handle_ != INVALID_HANDLE_VALUE) CloseHandle(handle_);
  }
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;

  std::int64_t length() const {
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(handle_, &size)) raiseLastFileError();
    return size.QuadPart;
  }

  void write(std::string_view contents) {
    while (!contents.empty()) {
      const DWORD piece = static_cast<DWORD>(std::min(contents.size(), largestPiece));
      DWORD written = 0;
      if (!WriteFile(handle_, contents.data(), piece, &written, nullptr)) raiseLastFileError();
      if (written == 0) raiseFileError(ERROR_DISK_FULL);
      contents.remove_prefix(written);
    }
  }

  // Fills the buffer; returns fewer bytes at the end of the file.
  std::size_t read(std::span<char> buffer) {
    std::size_t at = 0;
    while (at < buffer.size()) {
      const DWORD piece = static_cast<DWORD>(std::min(buffer.size() - at, largestPiece));
      DWORD count = 0;
      if (!ReadFile(handle_, &buffer[at], piece, &count, nullptr)) raiseLastFileError();
      if (count == 0) break;
      at += count;
    }
    return at;
  }

  void moveTo(std::int64_t position) {
    LARGE_INTEGER distance{};
    distance.QuadPart = position;
    if (!SetFilePointerEx(handle_, distance, nullptr, FILE_BEGIN)) raiseLastFileError();
  }
  void endAt(std::int64_t length) {
    moveTo(length);
    if (!SetEndOfFile(handle_)) raiseLastFileError();
  }

  // Waits for others to let go of the lock, which covers no byte that anybody reads. It ends with the handle.
  void lock() {
    OVERLAPPED place{};
    place.OffsetHigh = 0x40000000;
    if (!LockFileEx(handle_, LOCKFILE_EXCLUSIVE_LOCK, 0, 1, 0, &place)) raiseLastFileError();
  }

  void toDisk() {
    if (!FlushFileBuffers(handle_)) raiseLastFileError();
  }
  void close() {
    if (!CloseHandle(std::exchange(handle_, INVALID_HANDLE_VALUE))) raiseLastFileError();
  }

 private:
  HANDLE handle_;
};

DWORD attributesOrNone(const String& path) { return GetFileAttributesW(wide(path)); }

bool isThere(DWORD attributes) { return attributes != INVALID_FILE_ATTRIBUTES; }
bool isFolder(DWORD attributes) {
  return isThere(attributes) && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

DWORD requiredAttributes(const String& path) {
  const DWORD attributes = attributesOrNone(path);
  if (!isThere(attributes)) raiseLastFileError();
  return attributes;
}

// The whole path, which ends in no separator, of a name that does so only where it is a folder's.
String entryPathOf(StringView path) {
  String whole = fullPathOf(path);
  const bool namesFolder = path.ends_with(u'\\') || path.ends_with(u'/');
  if (namesFolder && !isFolder(attributesOrNone(whole))) throw Error(ErrorNumber::PathNotFound);
  return whole;
}

// The attributes of a file that is going to be written to, if it is there.
DWORD writableAttributes(const String& path) {
  const DWORD attributes = attributesOrNone(path);
  if (!isThere(attributes)) {
    const DWORD code = GetLastError();
    if (code != ERROR_FILE_NOT_FOUND) raiseFileError(code);
  } else if ((attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0) {
    throw Error(ErrorNumber::PathFileAccess);
  }
  return attributes;
}

// The path with the file's name as it is spelled there.
String spelledAsThere(const String& path) {
  WIN32_FIND_DATAW entry{};
  const HANDLE search = FindFirstFileW(wide(path), &entry);
  if (search == INVALID_HANDLE_VALUE) return path;
  FindClose(search);
  return path.substr(0, path.find_last_of(u'\\') + 1) + fromWide(entry.cFileName);
}

bool isDevice(const String& path) { return path.starts_with(u"\\\\.\\"); }

// A name that nobody else has, beside a file.
String pathBeside(const String& target) {
  static std::atomic<DWORD> count = GetTickCount();
  return target.substr(0, target.find_last_of(u'\\') + 1) + u"~zel-" + decimalText(GetCurrentProcessId()) +
         u"-" + decimalText(++count) + u".tmp";
}

// A new file beside another one, which it replaces or is gone.
class TemporaryFile {
 public:
  explicit TemporaryFile(const String& target)
      : path_(pathBeside(target)), file_(path_, GENERIC_WRITE, 0, CREATE_NEW) {}
  ~TemporaryFile() {
    if (done_) return;
    closeQuietly();
    DeleteFileW(wide(path_));
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  FileHandle& file() { return file_; }

  // The attributes are those of the file that is replaced.
  void moveTo(const String& target, DWORD attributes) {
    file_.close();
    const bool replacing = isThere(attributes);
    if (replacing && !SetFileAttributesW(wide(path_), attributes & settable)) raiseLastFileError();
    // The first way also keeps rights and the day of creation; not every file system knows it.
    if (!(replacing && ReplaceFileW(wide(target), wide(path_), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS,
                                    nullptr, nullptr)) &&
        !MoveFileExW(wide(path_), wide(target), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
      raiseLastFileError();
    done_ = true;
  }

 private:
  void closeQuietly() {
    try {
      file_.close();
    } catch (const Error&) {
    }
  }

  String path_;
  FileHandle file_;
  bool done_ = false;
};

// The entries of a folder that match, without the two that stand for folders themselves. Raises 75 where they
// may not be seen.
std::vector<WIN32_FIND_DATAW> entriesOf(const String& pattern) {
  std::vector<WIN32_FIND_DATAW> entries;
  WIN32_FIND_DATAW entry{};
  const HANDLE search = FindFirstFileW(wide(pattern), &entry);
  if (search == INVALID_HANDLE_VALUE && GetLastError() == ERROR_ACCESS_DENIED) raiseLastFileError();
  if (search == INVALID_HANDLE_VALUE) return entries;
  do {
    const String name = fromWide(entry.cFileName);
    if (name != u"." && name != u"..") entries.push_back(entry);
  } while (FindNextFileW(search, &entry));
  FindClose(search);
  return entries;
}

bool isBefore(const FileEntry& a, const FileEntry& b) { return compareFolded(a.name, b.name) < 0; }

// What a client's pattern finds; nothing for one that can be nobody's. The system would look at short names
// too, so that "*.htm" found "a.html"; it is asked for one name or for all of a folder.
std::vector<FileEntry> foundBy(StringView pattern, std::uint32_t asked) {
  std::vector<FileEntry> found;
  if (pattern.empty() || pattern.find(u'\0') != StringView::npos) return found;
  const std::size_t last = pattern.find_last_of(u"\\/:") + 1;
  const String folder(pattern.substr(0, last));
  const StringView name = last == pattern.size() ? StringView(u"*") : pattern.substr(last);
  const bool isMany = hasWildcard(name);
  if (hasWildcard(folder) || (!isMany && isDevice(fullPathOf(pattern)))) return found;
  for (const WIN32_FIND_DATAW& entry : entriesOf(folder + (isMany ? u"*" : String(name)))) {
    const DWORD attributes = entry.dwFileAttributes;
    if ((attributes & unseenUnlessAsked & ~asked) != 0) continue;
    String spelled = fromWide(entry.cFileName);
    if (!isMany || matchesPattern(spelled, name))
      found.push_back(
          {std::move(spelled), isFolder(attributes), (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0});
  }
  return found;
}

// What tells one file or folder on the machine from all others.
struct EntryId {
  explicit EntryId(const String& path) {
    const HANDLE handle =
        CreateFileW(wide(path), 0, sharedByAll, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    BY_HANDLE_FILE_INFORMATION information{};
    const bool known = handle != INVALID_HANDLE_VALUE && GetFileInformationByHandle(handle, &information);
    if (handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
    if (!known) throw Error(ErrorNumber::FileNotFound);
    volume = information.dwVolumeSerialNumber;
    number = std::uint64_t{information.nFileIndexHigh} << 32 | information.nFileIndexLow;
  }
  friend bool operator==(const EntryId&, const EntryId&) = default;

  DWORD volume = 0;
  std::uint64_t number = 0;
};

// Local time as it was then and there.
Date localDate(const FILETIME& time) {
  SYSTEMTIME universal{};
  SYSTEMTIME local{};
  if (!FileTimeToSystemTime(&time, &universal) ||
      !SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local))
    raiseLastFileError();
  const int second = (local.wHour * 60 + local.wMinute) * 60 + local.wSecond;
  return {dateOf(dayNumberOf(local.wYear, local.wMonth, local.wDay), second)};
}

// A folder and all below it, each folder before what is in it. Links are not followed.
struct Tree {
  explicit Tree(const String& top) : folders{top} {
    for (std::size_t i = 0; i < folders.size(); ++i)
      for (const WIN32_FIND_DATAW& entry : entriesOf(folders[i] + u"\\*"))
        add(folders[i] + u"\\" + fromWide(entry.cFileName), entry.dwFileAttributes);
  }

  std::vector<String> folders;
  std::vector<String> files;
  std::vector<String> links;  // to folders
  bool anyReadOnly = false;

 private:
  void add(const String& path, DWORD attributes) {
    const bool folder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (folder && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
      links.push_back(path);
    } else if (folder) {
      folders.push_back(path);
    } else {
      files.push_back(path);
      anyReadOnly = anyReadOnly || (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    }
  }
};

// Deletes with the call that is right for the kind of entry, read-only or not.
template <class Call>
void deleteEntry(const String& path, Call call) {
  if (call(wide(path))) return;
  const DWORD attributes = attributesOrNone(path);
  if (isThere(attributes) && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
    SetFileAttributesW(wide(path), attributes & settable & ~FILE_ATTRIBUTE_READONLY);
    if (call(wide(path))) return;
  }
  raiseLastFileError();
}

class OpenFile : public FileReader {
 public:
  explicit OpenFile(std::unique_ptr<FileHandle> file)
      : FileReader(static_cast<std::uint64_t>(file->length())), file_(std::move(file)) {}

 private:
  std::size_t readMore(std::span<char> buffer) override { return file_->read(buffer); }

  const std::unique_ptr<FileHandle> file_;
};

class WindowsFiles : public Files {
 public:
  String findFirst(StringView pattern, std::uint32_t attributes) override {
    try {
      const std::vector<FileEntry> found = foundBy(pattern, attributes);
      const auto first = std::min_element(found.begin(), found.end(), isBefore);
      return first == found.end() ? String() : first->name;
    } catch (const Error&) {
      return {};
    }
  }
  std::vector<FileEntry> findAll(StringView pattern, std::uint32_t attributes) override {
    std::vector<FileEntry> found = foundBy(pattern, attributes);
    std::sort(found.begin(), found.end(), isBefore);
    return found;
  }

  bool fileExists(StringView path) override {
    const DWORD attributes = attributesIfNameable(path);
    return isThere(attributes) && !isFolder(attributes);
  }
  bool folderExists(StringView path) override { return isFolder(attributesIfNameable(path)); }
  bool driveExists(StringView drive) override {
    const char16_t letter = drive.empty() ? u' ' : drive[0] | 0x20;
    if (letter < u'a' || letter > u'z' || (drive.size() > 1 && drive[1] != u':')) return false;
    return (GetLogicalDrives() >> (letter - u'a') & 1) != 0;
  }

  bool isSame(StringView path, StringView other) override {
    try {
      return EntryId(fullPathOf(path)) == EntryId(fullPathOf(other));
    } catch (const Error&) {
      return false;
    }
  }

  FileDetails details(StringView path) override {
    const String name = entryPathOf(path);
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(wide(name), GetFileExInfoStandard, &data)) raiseLastFileError();
    const std::uint64_t length = std::uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow;
    const bool folder = isFolder(data.dwFileAttributes);
    return {folder ? 0 : length, localDate(data.ftLastWriteTime), folder};
  }
  std::uint32_t attributes(StringView path) override {
    return requiredAttributes(entryPathOf(path)) & ~std::uint32_t{FILE_ATTRIBUTE_NORMAL};
  }
  void setAttributes(StringView path, std::uint32_t attributes) override {
    const String name = entryPathOf(path);
    const DWORD wanted = attributes & settable;
    if (!SetFileAttributesW(wide(name), wanted != 0 ? wanted : FILE_ATTRIBUTE_NORMAL)) raiseLastFileError();
  }

  std::unique_ptr<FileReader> open(StringView path) override {
    return std::make_unique<OpenFile>(
        std::make_unique<FileHandle>(entryPathOf(path), GENERIC_READ, sharedByAll, OPEN_EXISTING));
  }

  std::string readWhole(StringView path) override {
    FileHandle file(entryPathOf(path), GENERIC_READ, sharedByAll, OPEN_EXISTING);
    const std::int64_t length = file.length();
    if (length > longestText) throw Error(ErrorNumber::OutOfMemory);
    std::string contents(static_cast<std::size_t>(length), '\0');
    contents.resize(file.read(contents));
    return contents;
  }

  void replaceWhole(StringView path, std::string_view contents) override {
    const String target = entryPathOf(path);
    if (isDevice(target))
      return FileHandle(target, GENERIC_WRITE, sharedByAll, OPEN_EXISTING).write(contents);
    const DWORD attributes = writableAttributes(target);
    TemporaryFile temporary(target);
    temporary.file().write(contents);
    temporary.file().toDisk();
    temporary.moveTo(spelledAsThere(target), attributes);
  }

  void overwrite(StringView path, std::string_view contents) override {
    const String name = entryPathOf(path);
    writableAttributes(name);
    FileHandle file(name, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_ALWAYS);
    // So that a full disk is known before anything is lost.
    const std::int64_t before = file.length();
    if (static_cast<std::int64_t>(contents.size()) > before)
      file.endAt(static_cast<std::int64_t>(contents.size()));
    file.moveTo(0);
    file.write(contents);
    file.close();
  }

  void append(StringView path, std::string_view contents) override {
    const String name = entryPathOf(path);
    writableAttributes(name);
    FileHandle file(name, GENERIC_READ | GENERIC_WRITE, sharedByAll, OPEN_ALWAYS);
    file.lock();
    const std::int64_t before = file.length();
    file.moveTo(before);
    try {
      file.write(contents);
    } catch (...) {
      file.endAt(before);  // half a piece is none
      throw;
    }
  }

  void copy(StringView from, StringView to, bool replacing) override {
    const String source = entryPathOf(from);
    const String target = entryPathOf(to);
    if (isDevice(source) || isDevice(target) || isFolder(attributesOrNone(source)))
      throw Error(ErrorNumber::PathFileAccess);
    if (replacing) {
      const DWORD there = writableAttributes(target);
      if (isThere(there) && isSame(source, target)) throw Error(ErrorNumber::PermissionDenied);
    }
    const String whole = pathBeside(target);
    const bool done = CopyFileW(wide(source), wide(whole), TRUE) &&
                      MoveFileExW(wide(whole), wide(target), replacing ? MOVEFILE_REPLACE_EXISTING : 0);
    if (done) return;
    const DWORD code = GetLastError();
    SetFileAttributesW(wide(whole), FILE_ATTRIBUTE_NORMAL);
    DeleteFileW(wide(whole));
    raiseFileError(code);
  }

  void rename(StringView from, StringView to, bool replacing) override {
    const String source = fullPathOf(from);
    const DWORD attributes = requiredAttributes(source);
    const String target = isFolder(attributes) ? fullPathOf(to) : entryPathOf(to);
    const DWORD there = attributesOrNone(target);
    const bool replaces = isThere(there) && !equalFolded(source, target);
    if (replaces && (!replacing || isFolder(attributes) || isFolder(there)))
      throw Error(ErrorNumber::FileAlreadyExists);
    const bool readOnly = replaces && (there & FILE_ATTRIBUTE_READONLY) != 0;
    if (readOnly) SetFileAttributesW(wide(target), (there & settable & ~FILE_ATTRIBUTE_READONLY));
    const DWORD flags = MOVEFILE_COPY_ALLOWED | (replaces ? MOVEFILE_REPLACE_EXISTING : 0);
    if (MoveFileExW(wide(source), wide(target), flags)) return;
    const DWORD code = GetLastError();
    if (readOnly) SetFileAttributesW(wide(target), there & settable);
    raiseFileError(code);
  }

  void remove(StringView path, bool force) override {
    const String name = entryPathOf(path);
    const DWORD attributes = requiredAttributes(name);
    if (isFolder(attributes) || (!force && (attributes & FILE_ATTRIBUTE_READONLY) != 0))
      throw Error(ErrorNumber::PathFileAccess);
    deleteEntry(name, DeleteFileW);
  }

  void createFolder(StringView path) override {
    const String name = fullPathOf(path);
    if (!CreateDirectoryW(wide(name), nullptr)) raiseLastFileError();
  }

  void removeFolder(StringView path, bool force) override {
    const String top = fullPathOf(path);
    const DWORD attributes = attributesOrNone(top);
    if (!isFolder(attributes)) raiseFileError(ERROR_PATH_NOT_FOUND);
    if (top.back() == u'\\') throw Error(ErrorNumber::PathFileAccess);  // a whole drive
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) return deleteEntry(top, RemoveDirectoryW);
    const Tree tree(top);
    if (!force && tree.anyReadOnly) throw Error(ErrorNumber::PathFileAccess);
    for (const String& file : tree.files) deleteEntry(file, DeleteFileW);
    for (const String& link : tree.links) deleteEntry(link, RemoveDirectoryW);
    for (auto folder = tree.folders.rbegin(); folder != tree.folders.rend(); ++folder)
      deleteEntry(*folder, RemoveDirectoryW);
  }

  String fullPath(StringView path) override { return fullPathOf(path); }

  String createTemporary(StringView folder, StringView prefix) override {
    const String name = fullPathOf(folder);
    const String start(prefix.substr(0, longestPrefix));
    requireFileName(name + start);
    String path(MAX_PATH, u'\0');
    if (GetTempFileNameW(wide(name), wide(start), 0, wideBuffer(path)) == 0) raiseLastFileError();
    path.resize(path.find(u'\0'));
    return path;
  }
  String temporaryFolder() override {
    String folder(MAX_PATH + 1, u'\0');
    folder.resize(GetTempPathW(MAX_PATH + 1, wideBuffer(folder)));
    return fullPathOf(folder);
  }
  String windowsFolder() override {
    String folder(MAX_PATH + 1, u'\0');
    folder.resize(GetWindowsDirectoryW(wideBuffer(folder), MAX_PATH + 1));
    return folder;
  }

 private:
  static constexpr std::size_t longestPrefix = 3;

  // A name that can be nobody's names nothing.
  static DWORD attributesIfNameable(StringView path) {
    try {
      return attributesOrNone(entryPathOf(path));
    } catch (const Error&) {
      return INVALID_FILE_ATTRIBUTES;
    }
  }
};

}  // namespace

Files& Files::system() {
  static auto& service = *new WindowsFiles;
  return service;
}

}  // namespace zelUtilities
