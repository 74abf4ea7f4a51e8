#include "platform/Objects.h"

#include <gtest/gtest.h>

#include "automation/Raised.h"
#include "platform/XmlNodes.h"
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
    files().createFolder(folder_);
  }
  ~FileSystemObjectContract() override { files().removeFolder(folder_, true); }

  // What members answer one after the other; the test's folder stands for a "~" in their arguments.
  std::string answers(StringView members) const {
    String paths(members);
    for (std::size_t at; (at = paths.find(u'~')) != String::npos;) paths.replace(at, 1, folder_);
    return seen(fso_, paths);
  }

  const LateBound fso_ = LateBound::create(u"Scripting.FileSystemObject");
  const String folder_ = u"fso-contract";
};

TEST_F(FileSystemObjectContract, TellsFilesFoldersAndDrivesApart) {
  makeTree(folder_, "a.txt");
  EXPECT_EQ(answers(u"FileExists{~\\a.txt} FolderExists{~} DriveExists{C:}"), "True|True|True");
  EXPECT_EQ(answers(u"FileExists{~} FileExists{~\\none} FolderExists{~\\a.txt} DriveExists{Q:}"),
            "False|False|False|False");
}

TEST_F(FileSystemObjectContract, CreatesAFolderOnceAndDeletesItWithAllThatItHolds) {
  EXPECT_EQ(answers(u"CreateFolder{~\\Sub}.Name CreateFolder{~\\Sub} CreateFolder{~\\none\\Sub}"),
            "Sub|!58|!76");
  makeTree(folder_, "Sub\\a.txt");
  EXPECT_EQ(answers(u"DeleteFolder{~\\Sub;-1}"), "");
  EXPECT_EQ(treeIn(folder_), "");
  EXPECT_EQ(answers(u"DeleteFolder{~\\Sub}").front(), '!');
}

TEST_F(FileSystemObjectContract, DeletesFilesByNameAndByPatternReadOnlyOnesByForce) {
  makeTree(folder_, "a.txt b.txt c.ini r:r");
  EXPECT_EQ(answers(u"DeleteFile{~\\c.ini} DeleteFile{~\\*.txt}"), "|");
  EXPECT_EQ(answers(u"DeleteFile{~\\none.txt} DeleteFile{~\\*.txt} DeleteFile{~\\r}"), "!53|!53|!70");
  EXPECT_EQ(treeIn(folder_), "r:r");
  EXPECT_EQ(answers(u"DeleteFile{~\\r;-1}"), "");
  EXPECT_EQ(treeIn(folder_), "");
}

TEST_F(FileSystemObjectContract, ReadsAndWritesTheAttributesOfAFile) {
  makeTree(folder_, "a.txt=12345");
  EXPECT_EQ(answers(u"GetFile{~\\a.txt}.Name GetFile{~\\a.txt}.Size GetFile{~\\a.txt}.Attributes={1}"),
            "a.txt|5|");
  EXPECT_EQ(treeIn(folder_), "a.txt=12345:r");
  const LateBound file = fso_.object(u"GetFile", folder_ + u"\\a.txt");
  EXPECT_EQ(file.number(u"Attributes") & 1, 1);
  EXPECT_TRUE(files().fileExists(file.text(u"")));
  EXPECT_EQ(answers(u"GetFile{~\\none} GetFolder{~\\none} NoSuchOperation"), "!53|!76|!438");
}

TEST_F(FileSystemObjectContract, TakesPathsApartAndPutsThemTogether) {
  // The file's name, the folder above, the name without its extension, the extension and the drive.
  for (const auto& [path, parts] :
       std::vector<std::pair<String, std::string>>{{u"C:\\Data\\a.tar.gz", "a.tar.gz|C:\\Data|a.tar|gz|C:"},
                                                   {u"C:\\Data\\", "Data|C:\\|Data||C:"},
                                                   {u"Data\\a.txt", "a.txt|Data|a|txt|"},
                                                   {u"a.", "a.||a||"},
                                                   {u"", "||||"}})
    EXPECT_EQ(answers(u"GetFileName{" + path + u"} GetParentFolderName{" + path + u"} GetBaseName{" + path +
                      u"} GetExtensionName{" + path + u"} GetDriveName{" + path + u"}"),
              parts);
  EXPECT_EQ(answers(u"BuildPath{C:\\Data;a.txt} BuildPath{C:\\Data\\;a.txt}"),
            "C:\\Data\\a.txt|C:\\Data\\a.txt");
}

}  // namespace
}  // namespace zelUtilities
