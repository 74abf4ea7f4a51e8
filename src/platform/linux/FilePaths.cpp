#include "platform/linux/FilePaths.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <optional>

#include "automation/CaseFolding.h"
#include "automation/Error.h"
#include "platform/FilePattern.h"
#include "platform/Machine.h"

namespace zelUtilities {

namespace {

constexpr StringView separators = u"/\\";

bool isLetter(char16_t unit) { return (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z'); }

bool isFolder(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool isThere(const std::string& path) {
  struct stat status {};
  return lstat(path.c_str(), &status) == 0;
}

// The name in the folder that is spelled like this but for letter case; "" when there is none.
std::string spellingIn(const std::string& folder, StringView name) {
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(folder.empty() ? "." : folder.c_str()), closedir);
  if (!entries) return {};
  while (const dirent* entry = readdir(entries.get()))
    if (equalFolded(fromUtf8(entry->d_name), name)) return entry->d_name;
  return {};
}

// Puts names together to a path, each in the spelling that is there.
class PathWalk {
 public:
  explicit PathWalk(std::string start) : path_(std::move(start)) {}

  void add(StringView name) {
    const std::string exact = toUtf8(name);
    const std::string folder = path_;
    path_ += exact;
    if (missing_ || isThere(path_)) return;
    const std::string spelling = spellingIn(folder, name);
    missing_ = spelling.empty();
    if (!missing_) path_ = folder + spelling;
  }
  void addSeparator() { path_ += '/'; }

  const std::string& path() const { return path_; }

 private:
  std::string path_;
  bool missing_ = false;  // nothing below can be there
};

std::string walk(std::string start, StringView rest) {
  PathWalk walk(std::move(start));
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find_first_of(separators), rest.size());
    if (end != 0) walk.add(rest.substr(0, end));
    rest.remove_prefix(end);
    if (rest.empty()) break;
    walk.addSeparator();
    rest.remove_prefix(std::min(rest.find_first_not_of(separators), rest.size()));
  }
  return walk.path();
}

void requireName(StringView path) {
  if (path.empty() || path.find(u'\0') != StringView::npos || hasWildcard(path))
    throw Error(ErrorNumber::BadFileName);
}

bool hasDrive(StringView path) { return path.size() >= 2 && path[1] == u':' && isLetter(path[0]); }

// The path's drive as a native folder with a separator, "" where it has none; it is taken from the path.
std::string takeDrive(StringView& path) {
  requireName(path);
  if (path.starts_with(u"\\\\")) throw Error(ErrorNumber::PathNotFound);  // another machine's
  if (!hasDrive(path)) return {};
  std::string root = driveRoot(path[0]) + "/";
  path.remove_prefix(2);
  path.remove_prefix(std::min(path.find_first_not_of(separators), path.size()));
  return root;
}

std::string walkFrom(StringView path) {
  std::string start = takeDrive(path);
  return walk(std::move(start), path);
}

std::string findDrive(char letter) {
  const std::string home = toUtf8(machine().homeFolder());
  std::string listed = home + "/drives/" + letter;
  if (isFolder(listed)) return listed;
  if (letter == 'z') return "";
  std::string own = home + "/drive_c";
  if (letter != 'c' || (mkdir(own.c_str(), 0777) != 0 && !isFolder(own)))
    throw Error(ErrorNumber::PathNotFound);
  return own;
}

// The drives that were found a moment ago, so that not every path of many looks them up again.
class RememberedDrives {
 public:
  std::string root(char letter) {
    const char* home = std::getenv("ZELORA_HOME");
    if (&machine() != machine_ || isLongAgo() || home_ != (home ? home : "")) {
      machine_ = &machine();
      home_ = home ? home : "";
      roots_ = {};
    }
    std::optional<std::string>& root = roots_[static_cast<std::size_t>(letter - 'a')];
    if (!root) root = findDrive(letter);
    return *root;
  }

 private:
  static constexpr long moment = 100'000'000;  // nanoseconds

  bool isLongAgo() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    const bool longAgo = now.tv_sec > since_.tv_sec + 1 ||
                         (now.tv_sec - since_.tv_sec) * 1'000'000'000 + now.tv_nsec - since_.tv_nsec > moment;
    if (longAgo) since_ = now;
    return longAgo;
  }

  const Machine* machine_ = nullptr;
  std::string home_;
  timespec since_{};
  std::array<std::optional<std::string>, 26> roots_;
};

// The root of a drive that there is; "" otherwise.
std::string rootIfThere(char16_t letter) {
  try {
    return driveRoot(letter);
  } catch (const Error&) {
    return {};
  }
}

}  // namespace

std::string driveRoot(char16_t letter) {
  thread_local RememberedDrives drives;
  return drives.root(static_cast<char>(letter | 0x20));
}

std::string asSpelled(StringView path) {
  std::string start = takeDrive(path);
  std::string rest = toUtf8(path);
  std::replace(rest.begin(), rest.end(), '\\', '/');
  return start + rest;
}

bool statusOf(StringView path, struct stat& status) {
  return stat(asSpelled(path).c_str(), &status) == 0 || stat(nativePath(path).c_str(), &status) == 0;
}

std::string nativePath(StringView path) {
  std::string spelled = asSpelled(path);
  if (isThere(spelled)) return spelled;  // mostly, and found in one step
  const std::size_t last = lastPartOf(path);
  if (last == path.size() || last == 0) return walkFrom(path);
  const std::string folder = asSpelled(path.substr(0, last));
  return isThere(folder) ? walk(folder, path.substr(last)) : walkFrom(path);
}

std::string targetPath(StringView path) {
  requireName(path);
  while (path.size() > 1 && separators.find(path.back()) != StringView::npos) path.remove_suffix(1);
  const std::size_t last = lastPartOf(path);
  if (last == 0) return toUtf8(path);
  return nativePath(path.substr(0, last)) + toUtf8(path.substr(last));
}

std::string folderOf(const std::string& path) {
  const std::size_t end = path.find_last_not_of('/');
  const std::size_t separator = path.find_last_of('/', end);
  if (separator == std::string::npos) return ".";
  return separator == 0 ? "/" : path.substr(0, separator);
}

String windowsPath(const std::string& path) {
  char16_t drive = u'Z';
  std::size_t shared = 0;  // how much of the path the drive stands for
  for (char16_t letter = u'A'; letter <= u'Z'; ++letter) {
    const std::string root = rootIfThere(letter);
    if (root.size() > shared && path.starts_with(root) &&
        (path.size() == root.size() || path[root.size()] == '/')) {
      drive = letter;
      shared = root.size();
    }
  }
  String windows = String(1, drive) + u":" + fromUtf8(path.substr(shared));
  std::replace(windows.begin(), windows.end(), u'/', u'\\');
  return windows;
}

std::size_t lastPartOf(StringView path) {
  const std::size_t separator = path.find_last_of(separators);
  if (separator != StringView::npos) return separator + 1;
  return hasDrive(path) ? 2 : 0;
}

}  // namespace zelUtilities
