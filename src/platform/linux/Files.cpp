#include "platform/Files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <memory>
#include <random>

#include "automation/CaseFolding.h"
#include "automation/Error.h"
#include "platform/FilePattern.h"
#include "platform/linux/FileAttributes.h"
#include "platform/linux/FileCopy.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/FileErrors.h"
#include "platform/linux/FilePaths.h"
#include "platform/linux/LocalDate.h"
#include "platform/linux/TemporaryFile.h"

namespace zelUtilities {

namespace {

constexpr std::uint64_t longestText = std::numeric_limits<std::int32_t>::max();

enum class Kind { Nothing, File, Folder, Other };

Kind kindOf(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return Kind::Nothing;
  if (S_ISDIR(status.st_mode)) return Kind::Folder;
  return S_ISREG(status.st_mode) ? Kind::File : Kind::Other;
}

// Only a folder's name may end in a separator.
bool namesFolder(std::string_view path) { return path.ends_with('/'); }
void requireFileName(StringView path) {
  if (path.ends_with(u'\\') || path.ends_with(u'/')) throw Error(ErrorNumber::PathNotFound);
}

bool namesDrive(StringView path) {
  return path.size() >= 2 && path[1] == u':' && path.find_first_not_of(u"\\/", 2) == StringView::npos;
}

// A missing file in a missing folder is another failure than a missing file.
[[noreturn]] void raiseFor(const std::string& path, int code) {
  if (code == ENOENT && (namesFolder(path) || kindOf(folderOf(path)) != Kind::Folder)) code = ENOTDIR;
  raiseFileError(code);
}

bool isSameEntry(const struct stat& one, const struct stat& another) {
  return one.st_dev == another.st_dev && one.st_ino == another.st_ino;
}

std::string withoutClosingSeparators(std::string path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

std::string_view nameIn(const std::string& path) {
  return std::string_view(path).substr(path.find_last_of('/') + 1);
}

// Also a link that leads nowhere.
bool isThere(const std::string& path) {
  struct stat status {};
  return lstat(path.c_str(), &status) == 0;
}

[[noreturn]] void raiseMissing(const std::string& path) { raiseFor(path, ENOENT); }

// The file behind a link, so that it is written to and not replaced; the path itself where there is none.
std::string behindLinks(const std::string& path) {
  const std::unique_ptr<char, void (*)(void*)> real(realpath(path.c_str(), nullptr), std::free);
  return real ? real.get() : path;
}

// What the system itself keeps under a name is not a client's to take away. A link to it is.
void requireNoDevice(const std::string& path) {
  struct stat status {};
  if (lstat(path.c_str(), &status) == 0 && (S_ISCHR(status.st_mode) || S_ISBLK(status.st_mode)))
    throw Error(ErrorNumber::PathFileAccess);
}

void requireWritable(const std::string& path, Kind kind) {
  if (kind == Kind::Folder || isReadOnly(path)) throw Error(ErrorNumber::PathFileAccess);
  if (kind == Kind::Nothing && (namesFolder(path) || kindOf(folderOf(path)) != Kind::Folder))
    throw Error(ErrorNumber::PathNotFound);
}

// The new name of a file is safe only when its folder is. A folder that cannot be read must do without.
void folderToDisk(const std::string& folder) {
  const int number = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (number < 0) return;
  fsync(number);
  close(number);
}

// Reserves the room that a file is going to need, so that a full disk is known before anything is lost.
void reserve(FileDescriptor& file, std::uint64_t length) {
  const std::uint64_t before = file.length();
  if (length <= before) return;
  const int code = posix_fallocate(file.number(), 0, static_cast<off_t>(length));
  if (code == 0 || code == EINVAL || code == EOPNOTSUPP) return;
  if (ftruncate(file.number(), static_cast<off_t>(before)) != 0) errno = 0;
  raiseFileError(code);
}

// Whether an entry that is there belongs to what is asked for; its attributes are looked up if they matter.
template <class Attributes>
bool isSeen(bool isFolder, std::uint32_t asked, Attributes attributes) {
  if (isFolder && (asked & FileAttribute::Folder) == 0) return false;
  const std::uint32_t unseen = (FileAttribute::Hidden | FileAttribute::System) & ~asked;
  return unseen == 0 || (attributes() & unseen) == 0;
}

bool isLink(const std::string& path) {
  struct stat status {};
  return lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

// What the folder's listing says of an entry, asking no further where that is enough.
Kind kindOf(const dirent& entry, const std::string& path) {
  if (entry.d_type == DT_DIR) return Kind::Folder;
  return entry.d_type == DT_REG ? Kind::File : kindOf(path);
}
bool isLink(const dirent& entry, const std::string& path) {
  return entry.d_type == DT_LNK || (entry.d_type == DT_UNKNOWN && isLink(path));
}

// Hands each entry of the folder that matches and is wanted to the receiver.
template <class Wanted, class Receiver>
void eachIn(std::string folder, StringView pattern, std::uint32_t asked, Wanted isWanted, Receiver receive) {
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(folder.c_str()), closedir);
  if (!entries) raiseFileError(errno);
  if (folder.back() != '/') folder += '/';
  std::string path;
  const auto attributes = [&] {
    return keptAttributes(path, dirfd(entries.get()), path.c_str() + folder.size());
  };
  while (const dirent* entry = readdir(entries.get())) {
    const std::string_view spelled(entry->d_name);
    if (spelled == "." || spelled == "..") continue;
    String name = fromUtf8(spelled);
    if (!matchesPattern(name, pattern) || !isWanted(name)) continue;
    path = folder;
    path += spelled;
    const Kind kind = kindOf(*entry, path);
    if (kind != Kind::Nothing && isSeen(kind == Kind::Folder, asked, attributes))
      receive(FileEntry{std::move(name), kind == Kind::Folder, isLink(*entry, path)});
  }
}

template <class Wanted, class Receiver>
void eachFound(StringView pattern, std::uint32_t asked, Wanted isWanted, Receiver receive) {
  const std::size_t last = lastPartOf(pattern);
  const StringView folder = pattern.substr(0, last);
  StringView name = pattern.substr(last);
  if (name.empty() && !folder.empty()) name = u"*";
  if (hasWildcard(name))
    return eachIn(folder.empty() ? "." : nativePath(folder), name, asked, isWanted, receive);
  const std::string path = nativePath(pattern);
  const Kind kind = kindOf(path);
  if (kind != Kind::Nothing && isSeen(kind == Kind::Folder, asked, [&] { return keptAttributes(path); }))
    receive(FileEntry{fromUtf8(nameIn(path)), kind == Kind::Folder, isLink(path)});
}

// Whether there is nothing under a name, rather than something that may not be seen.
bool namesNothing(const Error& error) {
  const std::int32_t number = error.number();
  return number == ErrorNumber::BadFileName || number == ErrorNumber::FileNotFound ||
         number == ErrorNumber::PathNotFound;
}

// A name that can be nobody's names nothing.
template <class Answer>
auto ifNameable(Answer answer) -> decltype(answer()) {
  try {
    return answer();
  } catch (const Error&) {
    return {};
  }
}

class OpenFile : public FileReader {
 public:
  explicit OpenFile(std::unique_ptr<const FileDescriptor> file)
      : FileReader(file->length()), file_(std::move(file)) {}

 private:
  std::size_t readMore(std::span<char> buffer) override { return file_->read(buffer); }

  const std::unique_ptr<const FileDescriptor> file_;
};

class LinuxFiles : public Files {
 public:
  String findFirst(StringView pattern, std::uint32_t attributes) override {
    return ifNameable([&] {
      String first;
      eachFound(
          pattern, attributes,
          [&](StringView name) { return first.empty() || compareFolded(name, first) < 0; },
          [&](FileEntry entry) { first = std::move(entry.name); });
      return first;
    });
  }
  std::vector<FileEntry> findAll(StringView pattern, std::uint32_t attributes) override {
    std::vector<FileEntry> found;
    try {
      eachFound(
          pattern, attributes, [](StringView) { return true; },
          [&](FileEntry entry) { found.push_back(std::move(entry)); });
    } catch (const Error& error) {
      if (!namesNothing(error)) throw;
    }
    std::sort(found.begin(), found.end(),
              [](const FileEntry& a, const FileEntry& b) { return compareFolded(a.name, b.name) < 0; });
    return found;
  }

  bool fileExists(StringView path) override {
    return ifNameable([&] {
      struct stat status {};
      return statusOf(path, status) && !S_ISDIR(status.st_mode);
    });
  }
  bool folderExists(StringView path) override {
    return ifNameable([&] {
      struct stat status {};
      return statusOf(path, status) && S_ISDIR(status.st_mode);
    });
  }
  bool driveExists(StringView drive) override {
    return ifNameable([&] {
      const char16_t letter = drive.empty() ? u' ' : drive[0] | 0x20;
      if (letter < u'a' || letter > u'z' || (drive.size() > 1 && drive[1] != u':')) return false;
      return kindOf(driveRoot(letter) + "/") == Kind::Folder;
    });
  }

  bool isSame(StringView path, StringView other) override {
    return ifNameable([&] {
      struct stat one {};
      struct stat another {};
      return statusOf(path, one) && statusOf(other, another) && isSameEntry(one, another);
    });
  }

  FileDetails details(StringView path) override {
    struct stat status {};
    if (!statusOf(path, status)) raiseMissing(nativePath(path));
    const bool folder = S_ISDIR(status.st_mode);
    return {folder ? 0 : static_cast<std::uint64_t>(status.st_size), localDate(status.st_mtim.tv_sec),
            folder};
  }
  std::uint32_t attributes(StringView path) override {
    const std::string native = nativePath(path);
    if (kindOf(native) == Kind::Nothing) raiseMissing(native);
    return fileAttributes(native);
  }
  void setAttributes(StringView path, std::uint32_t attributes) override {
    const std::string native = nativePath(path);
    if (kindOf(native) == Kind::Nothing) raiseMissing(native);
    setFileAttributes(native, attributes);
  }

  std::unique_ptr<FileReader> open(StringView path) override {
    return std::make_unique<OpenFile>(std::make_unique<FileDescriptor>(readablePath(path), O_RDONLY));
  }

  std::string readWhole(StringView path) override {
    const FileDescriptor file(readablePath(path), O_RDONLY);
    const std::uint64_t length = file.length();
    if (length > longestText) throw Error(ErrorNumber::OutOfMemory);
    return file.read(static_cast<std::size_t>(length));
  }

  void replaceWhole(StringView path, std::string_view contents) override {
    const std::string target = behindLinks(nativePath(path));
    const Kind kind = kindOf(target);
    requireWritable(target, kind);
    if (kind == Kind::Other) {  // a device takes what it is given
      FileDescriptor(target, O_WRONLY | O_NONBLOCK).write(contents);
      return;
    }
    TemporaryFile temporary(target, kind == Kind::File ? 0600 : 0666);
    temporary.file().write(contents);
    if (kind == Kind::File) copyAttributes(target, temporary.file().number());
    temporary.file().toDisk();
    temporary.moveTo(target, true);
    folderToDisk(folderOf(target));
  }

  void overwrite(StringView path, std::string_view contents) override {
    const std::string native = nativePath(path);
    requireWritable(native, kindOf(native));
    FileDescriptor file(native, O_WRONLY | O_CREAT | O_NONBLOCK);
    if (kindOf(native) == Kind::File) reserve(file, contents.size());
    file.write(contents);
    file.close();
  }

  void append(StringView path, std::string_view contents) override {
    const std::string native = nativePath(path);
    requireWritable(native, kindOf(native));
    FileDescriptor file(native, O_WRONLY | O_CREAT | O_APPEND | O_NONBLOCK);
    while (flock(file.number(), LOCK_EX) != 0)
      if (errno != EINTR) raiseFileError(errno);
    const std::uint64_t before = file.length();
    try {
      file.write(contents);
    } catch (...) {
      // Half a piece is none.
      if (ftruncate(file.number(), static_cast<off_t>(before)) != 0) errno = 0;
      throw;
    }
  }

  void copy(StringView from, StringView to, bool replacing) override {
    if (!replacing && copiedAsSpelled(from, to)) return;
    const std::string source = nativePath(from);
    if (!replacing) {
      requireFileName(to);
      return copyThere(source, targetPath(to), false);
    }
    const std::string target = behindLinks(nativePath(to));
    const Kind kind = kindOf(target);
    if (kind == Kind::Other) throw Error(ErrorNumber::PathFileAccess);
    requireWritable(target, kind);
    copyThere(source, target, true);
  }

  void rename(StringView from, StringView to, bool replacing) override {
    const std::string source = withoutClosingSeparators(nativePath(from));
    const std::string target = targetPath(to);
    const std::string there = withoutClosingSeparators(nativePath(to));  // in another spelling perhaps
    if (kindOf(source) == Kind::Nothing) raiseMissing(source);
    if (kindOf(source) != Kind::Folder && kindOf(there) != Kind::Folder) requireFileName(to);
    if (namesDrive(from)) throw Error(ErrorNumber::PathFileAccess);
    requireNoDevice(source);
    requireNoDevice(there);
    const bool itself = isSpelledAnew(source, there);
    const bool replaces = !itself && isThere(there);
    if (replaces && (!replacing || kindOf(source) == Kind::Folder || kindOf(there) == Kind::Folder))
      throw Error(ErrorNumber::FileAlreadyExists);
    move(source, target, replacing || itself);
    if (replaces && there != target) unlink(there.c_str());
  }

  void remove(StringView path, bool force) override {
    const std::string native = nativePath(path);
    if (kindOf(native) == Kind::Folder || (!force && isReadOnly(native)))
      throw Error(ErrorNumber::PathFileAccess);
    requireNoDevice(native);
    if (unlink(native.c_str()) != 0) raiseFor(native, errno);
  }

  void createFolder(StringView path) override {
    const std::string native = nativePath(path);
    if (mkdir(native.c_str(), 0777) == 0) return;
    raiseFileError(errno == ENOENT ? ENOTDIR : errno);
  }

  void removeFolder(StringView path, bool force) override {
    std::string native = nativePath(path);
    if (kindOf(native) != Kind::Folder) raiseFileError(ENOTDIR);
    if (isRoot(path, native)) throw Error(ErrorNumber::PathFileAccess);
    native.erase(native.find_last_not_of('/') + 1);  // of a link, the link is removed
    std::error_code failure;
    if (!force) requireNothingReadOnly(native);
    std::filesystem::remove_all(native, failure);
    if (failure) raiseFileError(failure.value());
  }

  String fullPath(StringView path) override {
    std::error_code failure;
    const std::filesystem::path whole = std::filesystem::absolute(nativePath(path), failure);
    if (failure) raiseFileError(failure.value());
    std::string native = whole.lexically_normal().native();
    if (native.size() > 1 && native.back() == '/') native.pop_back();
    return fromUtf8(native);
  }

  String createTemporary(StringView folder, StringView prefix) override {
    static std::atomic<unsigned> count = std::random_device()();
    const String start = String(folder) + u"\\" + String(prefix.substr(0, longestPrefix));
    for (unsigned tries = 0; tries <= 0xFFFF; ++tries) {
      String path = start + hexadecimal(++count & 0xFFFF) + u".tmp";
      if (isCreated(nativePath(path))) return path;
    }
    throw Error(ErrorNumber::FileAlreadyExists);
  }
  String temporaryFolder() override {
    const char* named = std::getenv("TMPDIR");
    return windowsPath(withoutClosingSeparators(named && *named == '/' ? named : "/tmp"));
  }
  String windowsFolder() override { return u"C:\\Windows"; }

 private:
  static constexpr std::size_t longestPrefix = 3;

  static String hexadecimal(unsigned number) {
    static constexpr char16_t digits[] = u"0123456789ABCDEF";
    String text;
    for (int shift = 12; shift >= 0; shift -= 4) text.push_back(digits[number >> shift & 0xF]);
    return text;
  }

  // False where the name is taken.
  static bool isCreated(const std::string& path) {
    try {
      const FileDescriptor file(path, O_CREAT | O_EXCL | O_WRONLY, 0600);
      return true;
    } catch (const Error& error) {
      if (error.number() == ErrorNumber::FileAlreadyExists) return false;
      throw;
    }
  }

  // Whether the second path is the first one itself, found under a name in other letter case.
  static bool isSpelledAnew(const std::string& path, const std::string& found) {
    struct stat one {};
    struct stat another {};
    return lstat(path.c_str(), &one) == 0 && lstat(found.c_str(), &another) == 0 &&
           isSameEntry(one, another) && nameIn(path) == nameIn(found);
  }

  // Mostly the names are spelled as they are there, and nothing need be asked.
  static bool copiedAsSpelled(StringView from, StringView to) {
    try {
      copyFile(asSpelled(from), asSpelled(to), false);
      return true;
    } catch (const Error& error) {
      if (error.number() == ErrorNumber::FileNotFound || error.number() == ErrorNumber::PathNotFound)
        return false;
      throw;
    }
  }

  static void copyThere(const std::string& from, const std::string& to, bool replacing) {
    try {
      copyFile(from, to, replacing);
    } catch (const Error& error) {
      if (error.number() == ErrorNumber::FileNotFound) raiseMissing(from);
      throw;
    }
  }

  static void move(const std::string& from, const std::string& to, bool replacing) {
    int code = renameEntry(from, to, replacing);
    if (code == EXDEV && kindOf(from) == Kind::Folder) throw Error(ErrorNumber::DifferentDrive);
    if (code == EXDEV) {
      copyFile(from, to, replacing);
      code = unlink(from.c_str()) == 0 ? 0 : errno;
    }
    if (code == EINVAL) throw Error(ErrorNumber::PathFileAccess);  // into itself
    if (code != 0) raiseFor(to, code);
  }

  // A pipe would have us wait for its other end.
  static std::string readablePath(StringView path) {
    std::string native = nativePath(path);
    struct stat status {};
    if (stat(native.c_str(), &status) != 0) raiseFor(native, errno);
    if (S_ISDIR(status.st_mode) || S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode))
      throw Error(ErrorNumber::PathFileAccess);
    return native;
  }

  // The whole tree, or what a drive stands for.
  static bool isRoot(StringView path, const std::string& native) {
    const std::string real = behindLinks(native);
    return real == "/" || (path.size() >= 2 && path[1] == u':' && real == behindLinks(driveRoot(path[0])));
  }

  static void requireNothingReadOnly(const std::string& folder) {
    std::error_code failure;
    for (std::filesystem::recursive_directory_iterator at(folder, failure), end; !failure && at != end;
         at.increment(failure))
      if (isReadOnly(at->path())) throw Error(ErrorNumber::PathFileAccess);
    if (failure) raiseFileError(failure.value());
  }
};

}  // namespace

Files& Files::system() {
  static auto& service = *new LinuxFiles;
  return service;
}

}  // namespace zelUtilities
