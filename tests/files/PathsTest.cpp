#include "files/FilesFixture.h"
#include "files/zelFiles.h"
#include "platform/Registry.h"
#include "support/MemoryRegistry.h"
#include "support/Testing.h"

namespace zelUtilities {
namespace {

class Paths : public FilesFixture {};

TEST_F(Paths, AreSplitAtTheLastBackslashAndTheLastDotBehindIt) {
  // The folder, the name, the name without its extension and the extension.
  for (const auto& [path, parts] : {std::pair(u"", "|||"),
                                    {u"file.txt", "|file.txt|file|txt"},
                                    {u"C:\\file.TXT", "C:|file.TXT|file|txt"},
                                    {u"C:\\dir\\", "C:\\dir|||"},
                                    {u"\\\\server", "\\|server|server|"},
                                    {u"dir/file.txt", "|dir/file.txt|dir/file|txt"},
                                    {u"a.tar.gz", "|a.tar.gz|a.tar|gz"},
                                    {u".profile", "|.profile||profile"},
                                    {u"file.", "|file.|file|"},
                                    {u"C:\\x.y\\z", "C:\\x.y|z|z|"}})
    EXPECT_EQ(toUtf8(zel_GetFolderName(path) + u"|" + zel_GetFileName(path) + u"|" + zel_GetBaseName(path) +
                     u"|" + zel_GetFileExtension(path)),
              parts);
}

TEST_F(Paths, ASeparatorBehindTheLongestPositionIsLoggedAndGivesNothing) {
  const String longest = String(32766, u'a') + u"\\b";
  EXPECT_EQ(zel_GetFileName(longest) + zel_GetFileName(String(40000, u'a')).substr(39999), u"ba");
  const String tooLong = u"a" + longest, dotted = String(32767, u'a') + u".b";
  EXPECT_EQ(spelled({zel_GetFolderName(tooLong), zel_GetFileName(tooLong), zel_GetBaseName(dotted),
                     zel_GetFileExtension(dotted)}),
            "|||");
  EXPECT_EQ(reports.taken(),
            "mFiles.GetFolderName|6 mFiles.GetFileName|6 mFiles.GetBaseName|6 mFiles.GetFileExtension|6 ");
}

TEST_F(Paths, TellFilesAndFoldersApart) {
  given("a hidden:h empty\\");
  // The type, which is found by what is in a folder, and whether it is a file, and a folder.
  const auto said = [](StringView name) {
    return toUtf8(decimalText(zel_TypeOfPath(name)) + decimalText(zel_IsFile(name)) +
                  decimalText(zel_IsFolder(name)));
  };
  EXPECT_EQ(said(path(u"A")), "110");
  EXPECT_EQ(said(folder + u"\\"), "201");
  EXPECT_EQ(said(path(u"hidden")), "010");
  for (const String& name : {folder, path(u"empty\\")}) EXPECT_EQ(said(name), "001");
  for (const String& none : {path(u"*"), path(u"no"), String(), folder + String(u"\\a\0b", 4),
                             folder + String(u"\0b", 2), path(String(40000, u'a'))})
    EXPECT_EQ(said(none), "000");
}

TEST_F(Paths, OnlyTwoSchemesAreUrls) {
  const std::pair<String, const char*> cases[] = {{u"HTTP://host/x", "HTTP://host/x yes"},
                                                  {u"ftp:/", "ftp:/ yes"},
                                                  {u"https://host/x", "https:\\\\host\\x"},
                                                  {u"htt", "htt"}};
  for (auto [text, afterwards] : cases) {
    const bool isUrl = zel_IsURL(text);
    EXPECT_EQ(toUtf8(text) + (isUrl ? " yes" : ""), afterwards);
  }
  EXPECT_EQ(zel_FileFromURL(u"http://host/a.txt") + zel_FileFromURL(u"b") + zel_FileFromURL(u"c/"),
            u"a.txtb");
}

TEST_F(Paths, NamesAreMadeSafe) {
  EXPECT_EQ(zel_ReplaceFilenameCharacters(u"a b:c*d?.txt/\\'#\"|<>\t"), u"a_b_c_d_.txt_____|<>\t");
}

TEST_F(Paths, WellKnownFoldersHaveDefaultsAndAreReadFromTheRegistry) {
  MemoryRegistry registry;
  const Replaced<Registry> replaced(registry);
  const auto all = [] {
    return spelled(
        {zel_GetCommonFilesDir(), zel_GetProgramFilesDir(), zel_GetDesktopDir(), zel_GetPersonalDir()});
  };
  EXPECT_EQ(foldCase(zel_GetWindowsDir()), foldCase(u"C:\\Windows"));
  EXPECT_EQ(all(), "C:\\Program Files\\Common Files|C:\\Program Files|C:\\Windows\\Desktop|My Documents");
  const String version = u"Software\\Microsoft\\Windows\\CurrentVersion",
               folders = version + u"\\Explorer\\Shell Folders";
  registry.store(RegistryRoot::LocalMachine, version, u"CommonFilesDir", RegistryType::Text, "D:\\Common");
  registry.store(RegistryRoot::LocalMachine, version, u"ProgramFilesDir", RegistryType::DWord,
                 {"\7\0\0\0", 4});
  registry.store(RegistryRoot::CurrentUser, folders, u"Desktop", RegistryType::Text, "D:\\Me\\Desktop");
  registry.store(RegistryRoot::CurrentUser, folders, u"Personal", RegistryType::Binary, "x");
  EXPECT_EQ(all(), "D:\\Common|7|D:\\Me\\Desktop|") << "a number is taken as text, bytes are not";
  EXPECT_EQ(reports.taken(), "zelFiles.zel_GetPersonalDir|13 ");
  EXPECT_EQ(spelled({zel_FilterFromDesktop(u"Desktop"), zel_FilterFromDesktop(u""),
                     zel_FilterFromDesktop(u"desktop")}),
            "D:\\Me\\Desktop|D:\\Me\\Desktop|desktop");
  EXPECT_EQ(spelled({zel_FilterToDesktop(u"d:\\me\\DESKTOP"), zel_FilterToDesktop(u"D:\\Me\\Desktop\\")}),
            "Desktop|D:\\Me\\Desktop\\");
}

}  // namespace
}  // namespace zelUtilities
