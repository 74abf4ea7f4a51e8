#include "platform/linux/FileSystemObject.h"

#include <random>

#include "automation/Binder.h"
#include "automation/Error.h"
#include "platform/FilePattern.h"
#include "platform/Files.h"

namespace zelUtilities {

namespace {

constexpr StringView separators = u"\\/";
constexpr std::int32_t temporaryFolder = 2;
constexpr std::uint32_t everything = FileAttribute::Hidden | FileAttribute::System;

bool isSeparator(char16_t unit) { return separators.find(unit) != StringView::npos; }

// How much of a path is its drive and root, as in "C:\", "C:", "\" and "".
std::size_t rootLength(StringView path) {
  std::size_t length = path.size() >= 2 && path[1] == u':' ? 2 : 0;
  if (length < path.size() && isSeparator(path[length])) ++length;
  return length;
}

StringView withoutClosingSeparators(StringView path) {
  const std::size_t root = rootLength(path);
  while (path.size() > root && isSeparator(path.back())) path.remove_suffix(1);
  return path;
}

std::size_t lastPart(StringView path) {
  const std::size_t separator = path.find_last_of(separators);
  return std::max(rootLength(path), separator == StringView::npos ? 0 : separator + 1);
}

StringView fileName(StringView path) {
  path = withoutClosingSeparators(path);
  return path.substr(lastPart(path));
}

// Access that is refused has one number in this class, whatever refuses it.
template <class Action>
auto asThisClassRaises(Action action) {
  try {
    return action();
  } catch (const Error& error) {
    throw error.number() == ErrorNumber::PathFileAccess ? Error(ErrorNumber::PermissionDenied) : error;
  }
}

}  // namespace

Variant FileSystemEntry::Invoke(StringView name, InvokeKind kind, std::span<Variant> arguments) {
  return Object::Invoke(name.empty() ? u"Path" : name, kind, arguments);
}

String FileSystemEntry::Name() const { return String(fileName(path_)); }

std::int32_t FileSystemEntry::Attributes() const {
  return static_cast<std::int32_t>(files().attributes(path_));
}

void FileSystemEntry::setAttributes(std::int32_t attributes) {
  asThisClassRaises([&] { files().setAttributes(path_, static_cast<std::uint32_t>(attributes)); });
}

double FileSystemEntry::Size() const { return static_cast<double>(files().details(path_).length); }

bool FileSystemObject::FileExists(const String& FileSpec) const { return files().fileExists(FileSpec); }

bool FileSystemObject::FolderExists(const String& FolderSpec) const {
  return files().folderExists(FolderSpec);
}

bool FileSystemObject::DriveExists(const String& DriveSpec) const { return files().driveExists(DriveSpec); }

Ref<FileSystemEntry> FileSystemObject::GetFile(const String& FilePath) const {
  if (!files().fileExists(FilePath)) throw Error(ErrorNumber::FileNotFound);
  return make<FileSystemEntry>(files().fullPath(FilePath));
}

Ref<FileSystemEntry> FileSystemObject::GetFolder(const String& FolderPath) const {
  if (!files().folderExists(FolderPath)) throw Error(ErrorNumber::PathNotFound);
  return make<FileSystemEntry>(files().fullPath(FolderPath));
}

Ref<FileSystemEntry> FileSystemObject::GetSpecialFolder(std::int32_t SpecialFolder) const {
  if (SpecialFolder != temporaryFolder) throw Error(ErrorNumber::InvalidProcedureCall);
  return make<FileSystemEntry>(files().temporaryFolder());
}

Ref<FileSystemEntry> FileSystemObject::CreateFolder(const String& Path) const {
  asThisClassRaises([&] { files().createFolder(Path); });
  return GetFolder(Path);
}

void FileSystemObject::DeleteFile(const String& FileSpec, bool Force) const {
  const String pattern(fileName(FileSpec));
  if (!hasWildcard(pattern)) return asThisClassRaises([&] { files().remove(FileSpec, Force); });
  const String folder = FileSpec.substr(0, lastPart(FileSpec));
  const std::vector<FileEntry> found = files().findAll(FileSpec, everything);
  if (found.empty()) throw Error(ErrorNumber::FileNotFound);
  for (const FileEntry& file : found) asThisClassRaises([&] { files().remove(folder + file.name, Force); });
}

void FileSystemObject::DeleteFolder(const String& FolderSpec, bool Force) const {
  asThisClassRaises([&] { files().removeFolder(FolderSpec, Force); });
}

String FileSystemObject::BuildPath(const String& Path, const String& Name) const {
  if (Path.empty() || Name.empty()) return Path + Name;
  // A path that is written the other way is continued that way.
  const bool slashes = Path.find(u'\\') == String::npos && Path.find(u'/') != String::npos;
  const bool parted = isSeparator(Path.back()) || isSeparator(Name.front()) || Path.back() == u':';
  return parted ? Path + Name : Path + (slashes ? u"/" : u"\\") + Name;
}

String FileSystemObject::GetFileName(const String& Path) const { return String(fileName(Path)); }

String FileSystemObject::GetParentFolderName(const String& Path) const {
  const StringView path = withoutClosingSeparators(Path);
  const std::size_t last = lastPart(path);
  if (last == path.size()) return {};  // a root has nothing above it
  return String(withoutClosingSeparators(path.substr(0, last)));
}

String FileSystemObject::GetBaseName(const String& Path) const {
  const StringView name = fileName(Path);
  return String(name.substr(0, name.rfind(u'.')));
}

String FileSystemObject::GetExtensionName(const String& Path) const {
  const StringView name = fileName(Path);
  const std::size_t dot = name.rfind(u'.');
  return dot == StringView::npos ? String() : String(name.substr(dot + 1));
}

String FileSystemObject::GetDriveName(const String& Path) const {
  return Path.size() >= 2 && Path[1] == u':' ? Path.substr(0, 2) : String();
}

String FileSystemObject::GetAbsolutePathName(const String& Path) const {
  return files().fullPath(Path.empty() ? String(u".") : Path);
}

String FileSystemObject::GetTempName() const {
  static constexpr char16_t digits[] = u"0123456789ABCDEF";
  std::random_device random;
  String name = u"rad";
  for (int i = 0; i < 5; ++i) name.push_back(digits[random() % 16]);
  return name + u".tmp";
}

const ClassInfo& FileSystemEntry::describeClass() {
  static const ClassInfo info =
      describe<FileSystemEntry>("FileSystemEntry", "A file or a folder.")
          .property("Path", &FileSystemEntry::Path, "The whole path.")
          .property("Name", &FileSystemEntry::Name, "The name without its folder.")
          .property("Attributes", &FileSystemEntry::Attributes, &FileSystemEntry::setAttributes,
                    "1 read-only, 2 hidden, 4 system, 16 folder, 32 archive.")
          .property("Size", &FileSystemEntry::Size, "The length of a file in bytes.");
  return info;
}

const ClassInfo& FileSystemObject::describeClass() {
  using T = FileSystemObject;
  static const ClassInfo info =
      describe<T>("FileSystemObject", "Files, folders and paths.")
          .creatable()
          .method("FileExists", &T::FileExists, {"FileSpec"}, "Whether there is such a file.")
          .method("FolderExists", &T::FolderExists, {"FolderSpec"}, "Whether there is such a folder.")
          .method("DriveExists", &T::DriveExists, {"DriveSpec"}, "Whether there is such a drive.")
          .method("GetFile", &T::GetFile, {"FilePath"}, "The file under a path.")
          .method("GetFolder", &T::GetFolder, {"FolderPath"}, "The folder under a path.")
          .method("GetSpecialFolder", &T::GetSpecialFolder, {"SpecialFolder"}, "The temporary folder (2).")
          .method("CreateFolder", &T::CreateFolder, {"Path"}, "Creates a folder in one that is there.")
          .method("DeleteFile", &T::DeleteFile, {"FileSpec", arg("Force") = false}, "Deletes files.")
          .method("DeleteFolder", &T::DeleteFolder, {"FolderSpec", arg("Force") = false},
                  "Deletes a folder with all that is in it.")
          .method("BuildPath", &T::BuildPath, {"Path", "Name"}, "A path and a name put together.")
          .method("GetFileName", &T::GetFileName, {"Path"}, "The last part of a path.")
          .method("GetParentFolderName", &T::GetParentFolderName, {"Path"}, "The path without its last part.")
          .method("GetBaseName", &T::GetBaseName, {"Path"}, "The last part without its extension.")
          .method("GetExtensionName", &T::GetExtensionName, {"Path"}, "The extension without its dot.")
          .method("GetDriveName", &T::GetDriveName, {"Path"}, "The drive with its colon.")
          .method("GetAbsolutePathName", &T::GetAbsolutePathName, {"Path"}, "The whole path.")
          .method("GetTempName", &T::GetTempName, "A name for a temporary file.");
  return info;
}

}  // namespace zelUtilities
