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
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/FileErrors.h"
#include "platform/linux/FilePaths.h"

namespace zelUtilities {

namespace {

constexpr std::uint64_t longestText = std::numeric_limits<std::int32_t>::max();
constexpr std::uint32_t unseenUnlessAsked =
    FileAttribute::Hidden | FileAttribute::System | FileAttribute::Folder;

enum class Kind { Nothing, File, Folder, Other };

Kind kindOf(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return Kind::Nothing;
  if (S_ISDIR(status.st_mode)) return Kind::Folder;
  return S_ISREG(status.st_mode) ? Kind::File : Kind::Other;
}

std::string folderOf(const std::string& path) {
  const std::size_t end = path.find_last_not_of('/');
  const std::size_t separator = path.find_last_of('/', end);
  if (separator == std::string::npos) return ".";
  return separator == 0 ? "/" : path.substr(0, separator);
}

// A missing file in a missing folder is another failure than a missing file.
[[noreturn]] void raiseFor(const std::string& path, int code) {
  if (code == ENOENT && kindOf(folderOf(path)) != Kind::Folder) code = ENOTDIR;
  raiseFileError(code);
}

[[noreturn]] void raiseMissing(const std::string& path) { raiseFor(path, ENOENT); }

// The file behind a link, so that it is written to and not replaced; the path itself where there is none.
std::string behindLinks(const std::string& path) {
  const std::unique_ptr<char, void (*)(void*)> real(realpath(path.c_str(), nullptr), std::free);
  return real ? real.get() : path;
}

void requireWritable(const std::string& path, Kind kind) {
  if (kind == Kind::Folder || isReadOnly(path)) throw Error(ErrorNumber::PathFileAccess);
  if (kind == Kind::Nothing && kindOf(folderOf(path)) != Kind::Folder) throw Error(ErrorNumber::PathNotFound);
}

// A new file beside another one, which it replaces or is gone.
class TemporaryFile {
 public:
  TemporaryFile(const std::string& target, bool replacing)
      : path_(pathBeside(target)), file_(path_, O_CREAT | O_EXCL | O_WRONLY, replacing ? 0600 : 0666) {}
  ~TemporaryFile() {
    if (!done_) unlink(path_.c_str());
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  FileDescriptor& file() { return file_; }

  void moveTo(const std::string& target) {
    file_.close();
    if (rename(path_.c_str(), target.c_str()) != 0) raiseFileError(errno);
    done_ = true;
  }

 private:
  static std::string pathBeside(const std::string& target) {
    static std::atomic<unsigned> count = std::random_device()();
    return folderOf(target) + "/.zel-" + std::to_string(getpid()) + "-" + std::to_string(++count) + ".tmp";
  }

  std::string path_;
  FileDescriptor file_;
  bool done_ = false;
};

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

bool isSeen(std::uint32_t attributes, std::uint32_t asked) {
  return (attributes & unseenUnlessAsked & ~asked) == 0;
}

// Hands every name in the folder that matches to the receiver.
template <class Receiver>
void eachIn(const std::string& folder, StringView pattern, std::uint32_t asked, Receiver receive) {
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(folder.c_str()), closedir);
  if (!entries) return;
  while (const dirent* entry = readdir(entries.get())) {
    String name = fromUtf8(entry->d_name);
    if (name == u"." || name == u".." || !matchesPattern(name, pattern)) continue;
    const std::string path = folder + "/" + entry->d_name;
    if (kindOf(path) != Kind::Nothing && isSeen(fileAttributes(path), asked)) receive(std::move(name));
  }
}

template <class Receiver>
void eachFound(StringView pattern, std::uint32_t asked, Receiver receive) {
  const std::size_t last = lastPartOf(pattern);
  const StringView folder = pattern.substr(0, last);
  StringView name = pattern.substr(last);
  if (name.empty() && !folder.empty()) name = u"*";
  if (hasWildcard(name)) return eachIn(folder.empty() ? "." : nativePath(folder), name, asked, receive);
  const std::string path = nativePath(pattern);
  if (kindOf(path) != Kind::Nothing && isSeen(fileAttributes(path), asked))
    receive(fromUtf8(path.substr(path.find_last_of('/') + 1)));
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

class LinuxFiles : public Files {
 public:
  String findFirst(StringView pattern, std::uint32_t attributes) override {
    return ifNameable([&] {
      String first;
      eachFound(pattern, attributes, [&](String name) {
        if (first.empty() || compareFolded(name, first) < 0) first = std::move(name);
      });
      return first;
    });
  }
  std::vector<String> findAll(StringView pattern, std::uint32_t attributes) override {
    return ifNameable([&] {
      std::vector<String> names;
      eachFound(pattern, attributes, [&](String name) { names.push_back(std::move(name)); });
      std::sort(names.begin(), names.end(),
                [](const String& a, const String& b) { return compareFolded(a, b) < 0; });
      return names;
    });
  }

  bool fileExists(StringView path) override {
    return ifNameable([&] {
      const Kind kind = kindOf(nativePath(path));
      return kind == Kind::File || kind == Kind::Other;
    });
  }
  bool folderExists(StringView path) override {
    return ifNameable([&] { return kindOf(nativePath(path)) == Kind::Folder; });
  }
  bool driveExists(StringView drive) override {
    return ifNameable([&] {
      const char16_t letter = drive.empty() ? u' ' : drive[0] | 0x20;
      if (letter < u'a' || letter > u'z' || (drive.size() > 1 && drive[1] != u':')) return false;
      return kindOf(driveRoot(letter) + "/") == Kind::Folder;
    });
  }

  std::uint64_t length(StringView path) override {
    const std::string native = nativePath(path);
    struct stat status {};
    if (stat(native.c_str(), &status) != 0) raiseFor(native, errno);
    return S_ISDIR(status.st_mode) ? 0 : static_cast<std::uint64_t>(status.st_size);
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

  std::string readWhole(StringView path) override {
    const std::string native = nativePath(path);
    requireReadable(native);
    FileDescriptor file(native, O_RDONLY);
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
    TemporaryFile temporary(target, kind == Kind::File);
    temporary.file().write(contents);
    if (kind == Kind::File) copyAttributes(target, temporary.file().number());
    temporary.file().toDisk();
    temporary.moveTo(target);
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

  void remove(StringView path, bool force) override {
    const std::string native = nativePath(path);
    if (kindOf(native) == Kind::Folder || (!force && isReadOnly(native)))
      throw Error(ErrorNumber::PathFileAccess);
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

  String temporaryFolder() override {
    const char* named = std::getenv("TMPDIR");
    std::string folder = named && *named ? named : "/tmp";
    if (folder.size() > 1 && folder.back() == '/') folder.pop_back();
    return fromUtf8(folder);
  }

 private:
  // A pipe would have us wait for its other end.
  static void requireReadable(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) raiseFor(path, errno);
    if (S_ISDIR(status.st_mode) || S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode))
      throw Error(ErrorNumber::PathFileAccess);
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
