// Deleting, renaming and asking for what is known of a file.
#include <optional>

#include "automation/CaseFolding.h"
#include "automation/Conversions.h"
#include "automation/Error.h"
#include "files/LiftedReadOnly.h"
#include "files/mFiles.h"
#include "foundation/Handled.h"
#include "platform/FilePattern.h"
#include "platform/Files.h"

namespace zelUtilities::mFiles {

namespace {

// Normal, temporary, sparse, reparse point, compressed, offline, not indexed, encrypted.
constexpr std::uint32_t unreportedBits = 0x7F80;

bool deleteFiles(StringView pattern) {
  const String folder = GetFolderName(pattern);
  bool any = false;
  for (;;) {
    const std::vector<FileEntry> found = files().findAll(pattern);
    if (found.empty()) return any;
    any = true;
    for (const FileEntry& file : found) files().remove(folder + u"\\" + file.name, true);
  }
}

// Whether the inner path names the outer one or lies below it.
bool lies(StringView inner, StringView outer) {
  if (inner.size() < outer.size() || !equalFolded(inner.substr(0, outer.size()), outer)) return false;
  return inner.size() == outer.size() || inner[outer.size()] == u'\\' || inner[outer.size()] == u'/';
}

bool namesFolder(StringView path) { return path.ends_with(u'\\') || path.ends_with(u'/'); }

// What is in the way of a renamed entry and cannot simply be replaced, since one of them is a folder. It is
// deleted when the other one has its place; else it is put back.
class PutAside {
 public:
  explicit PutAside(StringView name) : name_(name) {
    while (name_.size() > 1 && namesFolder(name_)) name_.pop_back();
    for (int tries = 0; aside_.empty() || isFile(aside_) || isFolder(aside_);)
      aside_ = name_ + u"~" + decimalText(++tries);
    files().rename(name_, aside_);
  }
  ~PutAside() {
    if (done_) return;
    try {
      files().rename(aside_, name_);
    } catch (const Error&) {
      // It stays under its other name.
    }
  }
  PutAside(const PutAside&) = delete;
  PutAside& operator=(const PutAside&) = delete;

  void remove() {
    done_ = true;
    if (!isFolder(aside_)) return files().remove(aside_, true);
    FileDelete(aside_);
  }

 private:
  String name_;
  String aside_;
  bool done_ = false;
};

// The name is free afterwards, or taken by a file that the renamed one replaces: then True.
bool makeWay(StringView oldName, StringView newName, std::optional<PutAside>& aside) {
  if (hasWildcard(newName)) throw Error(ErrorNumber::BadFileName);
  if (namesFolder(newName) && !isFolder(oldName)) throw Error(ErrorNumber::PathNotFound);
  if (files().isSame(oldName, newName)) return false;
  const String from = files().fullPath(oldName);
  const String to = files().fullPath(newName);
  if (lies(from, to) || lies(to, from)) throw Error(ErrorNumber::PathFileAccess);
  const bool overFolder = isFolder(newName);
  if (!overFolder && files().findFirst(newName).empty()) return false;
  if (!overFolder && !isFolder(oldName)) return true;
  aside.emplace(newName);
  return false;
}

}  // namespace

bool FileDelete(StringView sFilename) {
  return chained(u"mFiles.FileDelete", [&] {
    if (!isFolder(sFilename)) return deleteFiles(sFilename);
    files().removeFolder(sFilename, true);
    return false;
  });
}

bool FileRename(StringView sOldFileName, StringView sNewFileName, bool bMarkReadOnly) {
  return chained(u"mFiles.FileRename", [&] {
    if (!isFile(sOldFileName) && !isFolder(sOldFileName)) return false;
    std::optional<PutAside> aside;
    const bool replacing = makeWay(sOldFileName, sNewFileName, aside);
    auto attributes = static_cast<std::uint32_t>(GetFileAttr(sOldFileName));
    LiftedReadOnly lifted(sOldFileName);
    files().rename(sOldFileName, sNewFileName, replacing);
    lifted.keep();
    attributes |= FileAttribute::Archive | (bMarkReadOnly ? FileAttribute::ReadOnly : 0);
    files().setAttributes(sNewFileName, attributes & ~FileAttribute::Folder);
    if (aside) aside->remove();
    return true;
  });
}

std::int32_t GetFileAttr(const Variant& sFilename) {
  return chained(u"mFiles.GetFileAttr", [&] {
    return static_cast<std::int32_t>(files().attributes(toText(sFilename)) & ~unreportedBits);
  });
}

std::int32_t GetFileLength(StringView fName) {
  try {
    return checkedLong(static_cast<std::int64_t>(files().details(fName).length));
  } catch (...) {
    return 0;
  }
}

String GetFileDate(StringView fName) {
  if (!isFile(fName)) return {};
  return toText(Variant::date(files().details(fName).modified.days));
}

}  // namespace zelUtilities::mFiles
