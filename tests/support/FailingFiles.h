// FailingFiles: the files in force, but for one call that fails: the full disk, the denied folder.
//
//   FailingFiles failing("replaceWhole", ErrorNumber::DiskFull);
//   Replaced<Files> replaced(failing);
#pragma once

#include "automation/Error.h"
#include "platform/Files.h"

namespace zelUtilities {

class FailingFiles : public Files {
 public:
  // Every call of the operation so named raises the error, after letting some of them through.
  FailingFiles(std::string_view call, std::int32_t number, int letThrough = 0)
      : files_(zelUtilities::files()), call_(call), number_(number), letThrough_(letThrough) {}

  String findFirst(StringView pattern, std::uint32_t attributes) override {
    return pass("findFirst").findFirst(pattern, attributes);
  }
  std::vector<FileEntry> findAll(StringView pattern, std::uint32_t attributes) override {
    return pass("findAll").findAll(pattern, attributes);
  }
  bool fileExists(StringView path) override { return pass("fileExists").fileExists(path); }
  bool folderExists(StringView path) override { return pass("folderExists").folderExists(path); }
  bool driveExists(StringView drive) override { return pass("driveExists").driveExists(drive); }
  bool isSame(StringView path, StringView other) override { return pass("isSame").isSame(path, other); }
  FileDetails details(StringView path) override { return pass("details").details(path); }
  std::uint32_t attributes(StringView path) override { return pass("attributes").attributes(path); }
  void setAttributes(StringView path, std::uint32_t attributes) override {
    pass("setAttributes").setAttributes(path, attributes);
  }
  std::unique_ptr<FileReader> open(StringView path) override { return pass("open").open(path); }
  std::string readWhole(StringView path) override { return pass("readWhole").readWhole(path); }
  void replaceWhole(StringView path, std::string_view contents) override {
    pass("replaceWhole").replaceWhole(path, contents);
  }
  void overwrite(StringView path, std::string_view contents) override {
    pass("overwrite").overwrite(path, contents);
  }
  void append(StringView path, std::string_view contents) override { pass("append").append(path, contents); }
  void copy(StringView from, StringView to, bool replacing) override {
    pass("copy").copy(from, to, replacing);
  }
  void rename(StringView from, StringView to, bool replacing) override {
    pass("rename").rename(from, to, replacing);
  }
  void remove(StringView path, bool force) override { pass("remove").remove(path, force); }
  void createFolder(StringView path) override { pass("createFolder").createFolder(path); }
  void removeFolder(StringView path, bool force) override { pass("removeFolder").removeFolder(path, force); }
  String createTemporary(StringView folder, StringView prefix) override {
    return pass("createTemporary").createTemporary(folder, prefix);
  }
  String fullPath(StringView path) override { return pass("fullPath").fullPath(path); }
  String temporaryFolder() override { return pass("temporaryFolder").temporaryFolder(); }
  String windowsFolder() override { return pass("windowsFolder").windowsFolder(); }

 private:
  Files& pass(std::string_view call) {
    if (call == call_ && letThrough_-- <= 0) throw Error(number_);
    return files_;
  }

  Files& files_;
  std::string call_;
  std::int32_t number_;
  int letThrough_;
};

}  // namespace zelUtilities
