#include "platform/Objects.h"

#include <gtest/gtest.h>

#include "automation/Conversions.h"
#include "automation/Error.h"
#include "platform/Files.h"

namespace zelUtilities {
namespace {

// An object that answers everything with its own name.
class NamedObject : public Object {
 public:
  explicit NamedObject(StringView name) : name_(name) {}
  Variant Invoke(StringView, InvokeKind, std::span<Variant>) override { return name_; }

 private:
  String name_;
};

ObjectFactory factoryOf(StringView name) {
  return [name] { return Ref<Object>(new NamedObject(name)); };
}

Variant call(const Ref<Object>& object, StringView name, std::vector<Variant> arguments = {}) {
  return object->Invoke(name, InvokeKind::MethodOrGet, arguments);
}

template <class Action>
Error raisedBy(Action action) {
  try {
    action();
  } catch (const Error& error) {
    return error;
  }
  return {0, {}, {}};
}

TEST(Objects, AnUnknownNameCannotBeCreated) {
  for (const StringView name : {u"", u"No.Such.Class", u"\u65E5"}) {
    const Error error = raisedBy([&] { createObject(name); });
    EXPECT_EQ(error.number(), ErrorNumber::CannotCreateObject);
    EXPECT_NE(error.description().find(name), String::npos);
  }
}

TEST(Objects, AClassOfTheProgramsTakesThePlaceOfAStandIn) {
  registerObject(u"Contract.Both", factoryOf(u"own"));
  registerStandIn(u"Contract.Both", factoryOf(u"stand-in"));
  EXPECT_EQ(call(createObject(u"CONTRACT.both"), u"x").text(), u"own");
  registerObject(u"Contract.Both", {});
  EXPECT_EQ(call(createObject(u"Contract.Both"), u"x").text(), u"stand-in");
  registerStandIn(u"Contract.Both", {});
  EXPECT_EQ(raisedBy([] { createObject(u"Contract.Both"); }).number(), ErrorNumber::CannotCreateObject);
}

TEST(Objects, AClassOfTheProgramsTakesThePlaceOfTheSystems) {
  registerObject(u"Scripting.FileSystemObject", factoryOf(u"own"));
  EXPECT_EQ(call(createObject(u"Scripting.FileSystemObject"), u"x").text(), u"own");
  registerObject(u"Scripting.FileSystemObject", {});
}

TEST(Objects, WhatTheFactoryRaisesReachesTheCaller) {
  registerObject(u"Contract.Broken", []() -> Ref<Object> { throw Error(5); });
  EXPECT_EQ(raisedBy([] { createObject(u"Contract.Broken"); }).number(), 5);
  registerObject(u"Contract.Broken", {});
}

class FileSystemObjectContract : public testing::Test {
 protected:
  FileSystemObjectContract() {
    if (files().folderExists(folder_)) files().removeFolder(folder_, true);
    call(fso_, u"CreateFolder", {folder_});
  }
  ~FileSystemObjectContract() override { files().removeFolder(folder_, true); }

  String in(StringView name) const { return folder_ + u"\\" + String(name); }
  bool exists(StringView operation, StringView path) { return toBoolean(call(fso_, operation, {path})); }
  String text(StringView operation, std::vector<Variant> arguments) {
    return toText(call(fso_, operation, std::move(arguments)));
  }
  std::int32_t numberRaised(StringView operation, std::vector<Variant> arguments) {
    return raisedBy([&] { call(fso_, operation, std::move(arguments)); }).number();
  }

  const Ref<Object> fso_ = createObject(u"Scripting.FileSystemObject");
  const String folder_ = u"fso-contract";
};

TEST_F(FileSystemObjectContract, TellsFilesFoldersAndDrivesApart) {
  files().replaceWhole(in(u"a.txt"), "x");
  EXPECT_TRUE(exists(u"FileExists", in(u"a.txt")));
  EXPECT_FALSE(exists(u"FileExists", folder_));
  EXPECT_FALSE(exists(u"FileExists", in(u"none")));
  EXPECT_TRUE(exists(u"FolderExists", folder_));
  EXPECT_FALSE(exists(u"FolderExists", in(u"a.txt")));
  EXPECT_TRUE(exists(u"DriveExists", u"C:"));
  EXPECT_FALSE(exists(u"DriveExists", u"Q:"));
}

TEST_F(FileSystemObjectContract, CreatesAFolderOnce) {
  EXPECT_EQ(toText(call(call(fso_, u"CreateFolder", {in(u"Sub")}).object(), u"Name")), u"Sub");
  EXPECT_TRUE(files().folderExists(in(u"Sub")));
  EXPECT_EQ(numberRaised(u"CreateFolder", {in(u"Sub")}), ErrorNumber::FileAlreadyExists);
  EXPECT_EQ(numberRaised(u"CreateFolder", {in(u"none\\Sub")}), ErrorNumber::PathNotFound);
}

TEST_F(FileSystemObjectContract, DeletesFilesByNameAndByPattern) {
  for (const StringView name : {u"a.txt", u"b.txt", u"c.ini"}) files().replaceWhole(in(name), "");
  call(fso_, u"DeleteFile", {in(u"c.ini")});
  EXPECT_FALSE(files().fileExists(in(u"c.ini")));
  call(fso_, u"DeleteFile", {in(u"*.txt")});
  EXPECT_EQ(files().findFirst(in(u"*")), u"");
  EXPECT_EQ(numberRaised(u"DeleteFile", {in(u"none.txt")}), ErrorNumber::FileNotFound);
  EXPECT_EQ(numberRaised(u"DeleteFile", {in(u"*.txt")}), ErrorNumber::FileNotFound);
}

TEST_F(FileSystemObjectContract, DeletesAReadOnlyFileOnlyByForce) {
  files().replaceWhole(in(u"a.txt"), "");
  files().setAttributes(in(u"a.txt"), FileAttribute::ReadOnly);
  EXPECT_EQ(numberRaised(u"DeleteFile", {in(u"a.txt")}), ErrorNumber::PermissionDenied);
  EXPECT_TRUE(files().fileExists(in(u"a.txt")));
  call(fso_, u"DeleteFile", {in(u"a.txt"), true});
  EXPECT_FALSE(files().fileExists(in(u"a.txt")));
}

TEST_F(FileSystemObjectContract, DeletesAFolderWithAllThatItHolds) {
  files().createFolder(in(u"Sub"));
  files().replaceWhole(in(u"Sub\\a.txt"), "");
  call(fso_, u"DeleteFolder", {in(u"Sub"), true});
  EXPECT_FALSE(files().folderExists(in(u"Sub")));
  EXPECT_NE(numberRaised(u"DeleteFolder", {in(u"Sub")}), 0);
}

TEST_F(FileSystemObjectContract, ReadsAndWritesTheAttributesOfAFile) {
  files().replaceWhole(in(u"a.txt"), "12345");
  const Ref<Object> file(call(fso_, u"GetFile", {in(u"a.txt")}).object());
  EXPECT_EQ(toText(call(file, u"Name")), u"a.txt");
  EXPECT_EQ(toLong(call(file, u"Size")), 5);
  EXPECT_TRUE(files().fileExists(toText(call(file, u""))));
  Variant readOnly[] = {std::int32_t{FileAttribute::ReadOnly}};
  file->Invoke(u"Attributes", InvokeKind::Put, readOnly);
  EXPECT_EQ(toLong(call(file, u"Attributes")) & 1, 1);
  EXPECT_EQ(numberRaised(u"GetFile", {in(u"none")}), ErrorNumber::FileNotFound);
  EXPECT_EQ(numberRaised(u"GetFolder", {in(u"none")}), ErrorNumber::PathNotFound);
}

struct PathCase {
  StringView operation;
  StringView path;
  StringView result;
};

TEST_F(FileSystemObjectContract, TakesPathsApartAsTheTableSays) {
  const PathCase cases[] = {
      {u"GetFileName", u"C:\\Data\\a.txt", u"a.txt"},
      {u"GetFileName", u"C:\\Data\\", u"Data"},
      {u"GetFileName", u"a.txt", u"a.txt"},
      {u"GetFileName", u"Data/a.txt", u"a.txt"},
      {u"GetFileName", u"", u""},
      {u"GetParentFolderName", u"C:\\Data\\a.txt", u"C:\\Data"},
      {u"GetParentFolderName", u"C:\\Data\\", u"C:\\"},
      {u"GetParentFolderName", u"C:\\Data", u"C:\\"},
      {u"GetParentFolderName", u"a.txt", u""},
      {u"GetParentFolderName", u"Data\\a.txt", u"Data"},
      {u"GetBaseName", u"C:\\Data\\a.tar.gz", u"a.tar"},
      {u"GetBaseName", u"noextension", u"noextension"},
      {u"GetBaseName", u"C:\\Da.ta\\b", u"b"},
      {u"GetExtensionName", u"C:\\Data\\a.tar.gz", u"gz"},
      {u"GetExtensionName", u"noextension", u""},
      {u"GetExtensionName", u"a.", u""},
      {u"GetDriveName", u"C:\\Data", u"C:"},
      {u"GetDriveName", u"Data", u""},
  };
  for (const PathCase& row : cases)
    EXPECT_EQ(text(row.operation, {row.path}), row.result)
        << testing::PrintToString(row.operation) << " " << testing::PrintToString(row.path);
}

TEST_F(FileSystemObjectContract, PutsPathsTogether) {
  EXPECT_EQ(text(u"BuildPath", {u"C:\\Data", u"a.txt"}), u"C:\\Data\\a.txt");
  EXPECT_EQ(text(u"BuildPath", {u"C:\\Data\\", u"a.txt"}), u"C:\\Data\\a.txt");
  EXPECT_EQ(text(u"BuildPath", {u"Data", u"a.txt"}), u"Data\\a.txt");
}

TEST_F(FileSystemObjectContract, NamesTemporaryFilesDifferently) {
  const String first = text(u"GetTempName", {});
  EXPECT_EQ(first.substr(first.size() - 4), u".tmp");
  EXPECT_NE(first + text(u"GetTempName", {}), first + first);
}

TEST_F(FileSystemObjectContract, RefusesWhatItDoesNotHave) {
  EXPECT_EQ(numberRaised(u"NoSuchOperation", {}), ErrorNumber::ObjectDoesNotSupport);
}

}  // namespace
}  // namespace zelUtilities
