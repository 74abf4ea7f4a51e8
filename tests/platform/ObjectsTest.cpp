#include "platform/Objects.h"

#include <gtest/gtest.h>

#include "automation/Raised.h"
#include "platform/LateBound.h"
#include "support/FileTree.h"
#include "support/RaisedError.h"

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

TEST(Objects, AnUnknownNameCannotBeCreated) {
  for (const StringView name : {u"", u"No.Such.Class", u"\u65E5"}) {
    const std::string error = raisedError([&] { createObject(name); });
    EXPECT_EQ(error.substr(0, 4), "429|");
    EXPECT_NE(error.find(toUtf8(name)), std::string::npos);
  }
}

TEST(Objects, AClassOfTheProgramsTakesThePlaceOfAStandInAndOfTheSystems) {
  registerObject(u"Contract.Both", factoryOf(u"own"));
  registerStandIn(u"Contract.Both", factoryOf(u"stand-in"));
  EXPECT_EQ(LateBound::create(u"CONTRACT.both").text(u"x"), u"own");
  registerObject(u"Contract.Both", {});
  EXPECT_EQ(LateBound::create(u"Contract.Both").text(u"x"), u"stand-in");
  registerStandIn(u"Contract.Both", {});
  EXPECT_EQ(raised([] { createObject(u"Contract.Both"); }), ErrorNumber::CannotCreateObject);
  registerObject(u"Scripting.FileSystemObject", factoryOf(u"own"));
  EXPECT_EQ(LateBound::create(u"Scripting.FileSystemObject").text(u"x"), u"own");
  registerObject(u"Scripting.FileSystemObject", {});
}

class FileSystemObjectContract : public testing::Test {
 protected:
  FileSystemObjectContract() {
    if (files().folderExists(folder_)) files().removeFolder(folder_, true);
    fso_(u"CreateFolder", folder_);
  }
  ~FileSystemObjectContract() override { files().removeFolder(folder_, true); }

  String in(StringView name) const { return folder_ + u"\\" + String(name); }
  template <class... A>
  std::int32_t error(StringView operation, const A&... arguments) {
    return raised([&] { fso_(operation, arguments...); });
  }

  const LateBound fso_ = LateBound::create(u"Scripting.FileSystemObject");
  const String folder_ = u"fso-contract";
};

TEST_F(FileSystemObjectContract, TellsFilesFoldersAndDrivesApart) {
  makeTree(folder_, "a.txt");
  EXPECT_TRUE(fso_.isTrue(u"FileExists", in(u"a.txt")) && fso_.isTrue(u"FolderExists", folder_));
  EXPECT_FALSE(fso_.isTrue(u"FileExists", folder_) || fso_.isTrue(u"FileExists", in(u"none")));
  EXPECT_FALSE(fso_.isTrue(u"FolderExists", in(u"a.txt")) || fso_.isTrue(u"DriveExists", u"Q:"));
  EXPECT_TRUE(fso_.isTrue(u"DriveExists", u"C:"));
}

TEST_F(FileSystemObjectContract, CreatesAFolderOnceAndDeletesItWithAllThatItHolds) {
  EXPECT_EQ(fso_.object(u"CreateFolder", in(u"Sub")).text(u"Name"), u"Sub");
  EXPECT_EQ(error(u"CreateFolder", in(u"Sub")), ErrorNumber::FileAlreadyExists);
  EXPECT_EQ(error(u"CreateFolder", in(u"none\\Sub")), ErrorNumber::PathNotFound);
  makeTree(folder_, "Sub\\a.txt");
  fso_(u"DeleteFolder", in(u"Sub"), true);
  EXPECT_EQ(treeIn(folder_), "");
  EXPECT_NE(error(u"DeleteFolder", in(u"Sub")), 0);
}

TEST_F(FileSystemObjectContract, DeletesFilesByNameAndByPatternReadOnlyOnesByForce) {
  makeTree(folder_, "a.txt b.txt c.ini r:r");
  fso_(u"DeleteFile", in(u"c.ini"));
  fso_(u"DeleteFile", in(u"*.txt"));
  EXPECT_EQ(error(u"DeleteFile", in(u"none.txt")), ErrorNumber::FileNotFound);
  EXPECT_EQ(error(u"DeleteFile", in(u"*.txt")), ErrorNumber::FileNotFound);
  EXPECT_EQ(error(u"DeleteFile", in(u"r")), ErrorNumber::PermissionDenied);
  EXPECT_EQ(treeIn(folder_), "r:r");
  fso_(u"DeleteFile", in(u"r"), true);
  EXPECT_EQ(treeIn(folder_), "");
}

TEST_F(FileSystemObjectContract, ReadsAndWritesTheAttributesOfAFile) {
  makeTree(folder_, "a.txt=12345");
  const LateBound file = fso_.object(u"GetFile", in(u"a.txt"));
  EXPECT_EQ(file.text(u"Name"), u"a.txt");
  EXPECT_EQ(file.number(u"Size"), 5);
  EXPECT_TRUE(files().fileExists(file.text(u"")));
  file.put(u"Attributes", std::int32_t{FileAttribute::ReadOnly});
  EXPECT_EQ(file.number(u"Attributes") & 1, 1);
  EXPECT_EQ(error(u"GetFile", in(u"none")), ErrorNumber::FileNotFound);
  EXPECT_EQ(error(u"GetFolder", in(u"none")), ErrorNumber::PathNotFound);
  EXPECT_EQ(error(u"NoSuchOperation"), ErrorNumber::ObjectDoesNotSupport);
}

TEST_F(FileSystemObjectContract, TakesPathsApartAndPutsThemTogether) {
  // The file's name, the folder above, the name without its extension, the extension and the drive.
  for (const auto& [path, parts] : std::vector<std::pair<StringView, StringView>>{
           {u"C:\\Data\\a.tar.gz", u"a.tar.gz|C:\\Data|a.tar|gz|C:"},
           {u"C:\\Data\\", u"Data|C:\\|Data||C:"},
           {u"Data\\a.txt", u"a.txt|Data|a|txt|"},
           {u"a.", u"a.||a||"},
           {u"", u"||||"}})
    EXPECT_EQ(fso_.text(u"GetFileName", path) + u"|" + fso_.text(u"GetParentFolderName", path) + u"|" +
                  fso_.text(u"GetBaseName", path) + u"|" + fso_.text(u"GetExtensionName", path) + u"|" +
                  fso_.text(u"GetDriveName", path),
              parts);
  for (const StringView folder : {u"C:\\Data", u"C:\\Data\\"})
    EXPECT_EQ(fso_.text(u"BuildPath", folder, u"a.txt"), u"C:\\Data\\a.txt");
}

}  // namespace
}  // namespace zelUtilities
