#include "files/FilesFixture.h"
#include "files/zelFiles.h"
#include "platform/Registry.h"
#include "support/FailingFiles.h"
#include "support/MemoryRegistry.h"

namespace zelUtilities {
namespace {

using testing::ElementsAre;

class Paths : public FilesFixture {};

TEST_F(Paths, AreSplitAtTheLastBackslashAndTheLastDotBehindIt) {
  struct {
    StringView path, folder, name, base, extension;
  } const rows[] = {{u"", u"", u"", u"", u""},
                    {u"file.txt", u"", u"file.txt", u"file", u"txt"},
                    {u"C:\\file.TXT", u"C:", u"file.TXT", u"file", u"txt"},
                    {u"C:\\dir\\", u"C:\\dir", u"", u"", u""},
                    {u"\\\\server", u"\\", u"server", u"server", u""},
                    {u"\\\\server\\share\\f.txt", u"\\\\server\\share", u"f.txt", u"f", u"txt"},
                    {u"dir/file.txt", u"", u"dir/file.txt", u"dir/file", u"txt"},
                    {u"archive.tar.gz", u"", u"archive.tar.gz", u"archive.tar", u"gz"},
                    {u".profile", u"", u".profile", u"", u"profile"},
                    {u"file.", u"", u"file.", u"file", u""},
                    {u"C:\\x.y\\z", u"C:\\x.y", u"z", u"z", u""}};
  for (const auto& row : rows) {
    EXPECT_EQ(zel_GetFolderName(row.path), row.folder);
    EXPECT_EQ(zel_GetFileName(row.path), row.name);
    EXPECT_EQ(zel_GetBaseName(row.path), row.base);
    EXPECT_EQ(zel_GetFileExtension(row.path), row.extension);
  }
}

TEST_F(Paths, ASeparatorBehindTheLongestPositionIsLoggedAndGivesNothing) {
  const String longest = String(32766, u'a') + u"\\b";
  EXPECT_EQ(zel_GetFileName(longest) + zel_GetFileName(String(40000, u'a')).substr(39999), u"ba");
  const String tooLong = u"a" + longest, dotted = String(32767, u'a') + u".b";
  EXPECT_EQ(zel_GetFolderName(tooLong) + zel_GetFileName(tooLong) + zel_GetBaseName(dotted) +
                zel_GetFileExtension(dotted),
            u"");
  EXPECT_THAT(logged, testing::UnorderedElementsAre("mFiles.GetFolderName", "mFiles.GetFileName",
                                                    "mFiles.GetBaseName", "mFiles.GetFileExtension"));
}

TEST_F(Paths, AFolderIsFoundByWhatIsInIt) {
  put(u"a.txt");
  put(u"hidden.txt", "x", FileAttribute::Hidden);
  putFolder(u"empty");
  EXPECT_EQ(zel_TypeOfPath(path(u"A.TXT")), ZEL_PathType_File);
  EXPECT_EQ(zel_TypeOfPath(folder + u"\\"), ZEL_PathType_Folder);
  for (const String& nothing :
       {folder, path(u"hidden.txt"), path(u"empty\\"), path(u"*.txt"), path(u"no"), String()})
    EXPECT_EQ(zel_TypeOfPath(nothing), ZEL_PathType_None) << toUtf8(nothing);
}

TEST_F(Paths, FilesAndFoldersExistEachForItself) {
  const String file = put(u"hidden.txt", "x", FileAttribute::Hidden);
  EXPECT_TRUE(zel_IsFile(file) && !zel_IsFolder(file));
  EXPECT_TRUE(zel_IsFolder(folder + u"\\") && !zel_IsFile(folder));
  for (const String& nothing :
       {String(), path(u"*"), folder + String(u"\\a\0b", 4), path(String(40000, u'a'))})
    EXPECT_FALSE(zel_IsFile(nothing) || zel_IsFolder(nothing));
}

TEST_F(Paths, OnlyTwoSchemesAreUrls) {
  const auto afterwards = [](String text) {
    const bool url = zel_IsURL(text);
    return toUtf8(text) + (url ? " yes" : "");
  };
  EXPECT_EQ(afterwards(u"HTTP://host/x"), "HTTP://host/x yes");
  EXPECT_EQ(afterwards(u"ftp:/"), "ftp:/ yes");
  EXPECT_EQ(afterwards(u"https://host/x"), "https:\\\\host\\x");
  EXPECT_EQ(afterwards(u"htt"), "htt");
  EXPECT_EQ(zel_FileFromURL(u"http://host/a.txt") + zel_FileFromURL(u"b") + zel_FileFromURL(u"c/"),
            u"a.txtb");
}

TEST_F(Paths, NamesAreMadeSafe) {
  EXPECT_EQ(zel_ReplaceFilenameCharacters(u"a b:c*d?.txt"), u"a_b_c_d_.txt");
  EXPECT_EQ(zel_ReplaceFilenameCharacters(u"/\\'#\"|<>\t"), u"_____|<>\t");
}

class WellKnownFolders : public Paths {
 protected:
  void write(RegistryHandle root, StringView key, StringView name, std::uint32_t type,
             std::string_view data) {
    RegistryHandle opened = 0;
    bool existed = false;
    registry_.createKey(root, key, opened, existed);
    registry_.openKey(root, key, RegistryAccess::Write, opened);
    registry_.setValue(opened, name, type, data);
  }

  static constexpr StringView machineKey = u"Software\\Microsoft\\Windows\\CurrentVersion";
  static constexpr StringView userKey =
      u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";

 private:
  MemoryRegistry registry_;
  Replaced<Registry> replaced_{registry_};
};

TEST_F(WellKnownFolders, HaveDefaults) {
  EXPECT_EQ(zel_GetCommonFilesDir(), u"C:\\Program Files\\Common Files");
  EXPECT_EQ(zel_GetProgramFilesDir(), u"C:\\Program Files");
  EXPECT_EQ(zel_GetDesktopDir(), u"C:\\Windows\\Desktop");
  EXPECT_EQ(zel_GetPersonalDir(), u"My Documents");
}

TEST_F(WellKnownFolders, AreReadFromTheRegistry) {
  write(RegistryRoot::LocalMachine, machineKey, u"CommonFilesDir", RegistryType::Text, "D:\\Common");
  write(RegistryRoot::LocalMachine, machineKey, u"ProgramFilesDir", RegistryType::DWord, {"\7\0\0\0", 4});
  write(RegistryRoot::CurrentUser, userKey, u"Desktop", RegistryType::Text, "D:\\Me\\Desktop");
  write(RegistryRoot::CurrentUser, userKey, u"Personal", RegistryType::Binary, "x");
  EXPECT_EQ(zel_GetCommonFilesDir(), u"D:\\Common");
  EXPECT_EQ(zel_GetProgramFilesDir(), u"7") << "a number is taken as text";
  EXPECT_EQ(zel_GetPersonalDir(), u"") << "bytes are not";
  EXPECT_THAT(logged, ElementsAre("zelFiles.zel_GetPersonalDir"));
  for (const StringView word : {u"Desktop", u""}) EXPECT_EQ(zel_FilterFromDesktop(word), u"D:\\Me\\Desktop");
  EXPECT_EQ(zel_FilterFromDesktop(u"desktop"), u"desktop");
  EXPECT_EQ(zel_FilterToDesktop(u"d:\\me\\DESKTOP"), u"Desktop");
  EXPECT_EQ(zel_FilterToDesktop(u"D:\\Me\\Desktop\\"), u"D:\\Me\\Desktop\\");
}

}  // namespace
}  // namespace zelUtilities
