// FileSystemObject: the stand-in for "Scripting.FileSystemObject", over the Files service.
//
// It has what the library and its clients use of that class; its failures have the numbers of the original:
// 52, 53 file not found, 58 exists already, 70 permission denied (read-only without force too), 76 path not
// found.
#pragma once

#include "automation/ClassInfo.h"
#include "automation/Object.h"
#include "automation/String.h"

namespace zelUtilities {

// A file or a folder that was there when it was asked for.
class FileSystemEntry : public Object {
 public:
  explicit FileSystemEntry(String path) : path_(std::move(path)) {}

  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }
  // The path is the default member.
  Variant Invoke(StringView name, InvokeKind kind, std::span<Variant> arguments) override;

  String Path() const { return path_; }
  String Name() const;
  std::int32_t Attributes() const;
  void setAttributes(std::int32_t attributes);
  double Size() const;  // bytes

 private:
  String path_;
};

class FileSystemObject : public Object {
 public:
  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  bool FileExists(const String& FileSpec) const;
  bool FolderExists(const String& FolderSpec) const;
  bool DriveExists(const String& DriveSpec) const;
  Ref<FileSystemEntry> GetFile(const String& FilePath) const;
  Ref<FileSystemEntry> GetFolder(const String& FolderPath) const;
  // Only the temporary folder (2) exists on every system; raises 5 for the others.
  Ref<FileSystemEntry> GetSpecialFolder(std::int32_t SpecialFolder) const;

  // One level; raises 58 where there is such a file or folder, 76 where the one above is missing.
  Ref<FileSystemEntry> CreateFolder(const String& Path) const;
  // The last part of the path may hold wildcards; raises 53 where nothing matches.
  void DeleteFile(const String& FileSpec, bool Force) const;
  void DeleteFolder(const String& FolderSpec, bool Force) const;

  String BuildPath(const String& Path, const String& Name) const;
  String GetFileName(const String& Path) const;
  String GetParentFolderName(const String& Path) const;
  String GetBaseName(const String& Path) const;
  String GetExtensionName(const String& Path) const;
  String GetDriveName(const String& Path) const;
  String GetAbsolutePathName(const String& Path) const;
  String GetTempName() const;
};

}  // namespace zelUtilities
