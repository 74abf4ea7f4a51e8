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

TEST_F(Paths, TellFilesAndFoldersApart) {
  given("a hidden:h empty\\");
  // What zel_TypeOfPath, zel_IsFile and zel_IsFolder say; a folder's type is found by what is in it.
  for (const auto& [name, said] :
       std::vector<std::pair<String, std::string>>{{path(u"A"), "110"},
                                                   {folder + u"\\", "201"},
                                                   {folder, "001"},
                                                   {path(u"hidden"), "010"},
                                                   {path(u"empty\\"), "001"},
                                                   {path(u"*"), "000"},
                                                   {path(u"no"), "000"},
                                                   {String(), "000"},
                                                   {folder + String(u"\\a\0b", 4), "000"},
                                                   {path(String(40000, u'a')), "000"}})
    EXPECT_EQ(toUtf8(decimalText(zel_TypeOfPath(name)) + decimalText(zel_IsFile(name)) +
                     decimalText(zel_IsFolder(name))),
              said)
        << toUtf8(name.substr(0, 99));
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

TEST_F(Paths, WellKnownFoldersHaveDefaultsAndAreReadFromTheRegistry) {
  MemoryRegistry registry;
  const Replaced<Registry> replaced(registry);
  const auto write = [&](RegistryHandle root, StringView below, StringView name, std::uint32_t type,
                         std::string_view data) {
    const String key = u"Software\\Microsoft\\Windows\\CurrentVersion" + String(below);
    RegistryHandle opened = 0;
    bool existed = false;
    registry.createKey(root, key, opened, existed);
    registry.openKey(root, key, RegistryAccess::Write, opened);
    registry.setValue(opened, name, type, data);
  };
  const auto all = [] {
    return toUtf8(zel_GetCommonFilesDir() + u"|" + zel_GetProgramFilesDir() + u"|" + zel_GetDesktopDir() +
                  u"|" + zel_GetPersonalDir());
  };
  EXPECT_EQ(all(), "C:\\Program Files\\Common Files|C:\\Program Files|C:\\Windows\\Desktop|My Documents");
  constexpr auto machine = RegistryRoot::LocalMachine, user = RegistryRoot::CurrentUser;
  write(machine, u"", u"CommonFilesDir", RegistryType::Text, "D:\\Common");
  write(machine, u"", u"ProgramFilesDir", RegistryType::DWord, {"\7\0\0\0", 4});
  write(user, u"\\Explorer\\Shell Folders", u"Desktop", RegistryType::Text, "D:\\Me\\Desktop");
  write(user, u"\\Explorer\\Shell Folders", u"Personal", RegistryType::Binary, "x");
  EXPECT_EQ(all(), "D:\\Common|7|D:\\Me\\Desktop|") << "a number is taken as text, bytes are not";
  EXPECT_THAT(logged, ElementsAre("zelFiles.zel_GetPersonalDir"));
  for (const StringView word : {u"Desktop", u""}) EXPECT_EQ(zel_FilterFromDesktop(word), u"D:\\Me\\Desktop");
  EXPECT_EQ(zel_FilterFromDesktop(u"desktop"), u"desktop");
  EXPECT_EQ(zel_FilterToDesktop(u"d:\\me\\DESKTOP"), u"Desktop");
  EXPECT_EQ(zel_FilterToDesktop(u"D:\\Me\\Desktop\\"), u"D:\\Me\\Desktop\\");
}

}  // namespace
}  // namespace zelUtilities
