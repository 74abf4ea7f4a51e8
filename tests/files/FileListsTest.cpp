#include "files/FilesFixture.h"
#include "files/zelFileFilters.h"
#include "files/zelFileList.h"
#include "platform/LateBound.h"
#include "support/Spelled.h"

namespace zelUtilities {
namespace {

using testing::ElementsAre;

class FileLists : public FilesFixture {};

TEST_F(FileLists, AFileKnowsItsSizeAndDateFromItsPath) {
  const auto file = make<zelFile>();
  file->setFullPath(put(u"Report.TXT", std::string(1536, 'x')));
  EXPECT_EQ(propertiesOf(*file, u"Size SizeKB Extension Name Selected"), "1536|1.5|txt|Report.TXT|True");
  EXPECT_EQ(file->Folder(), folder);
  const Date date = file->FileDate();
  EXPECT_EQ(date, files().details(file->FullPath()).modified);
  file->setName(u"Mine");
  EXPECT_EQ(file->Name(), u"Mine");
  file->setName(u"");
  EXPECT_EQ(file->Name(), u"Report.TXT");
  for (const String& none : {path(u"no"), folder, String()}) {
    file->setFullPath(none);
    EXPECT_EQ(file->Size(), 0);
    EXPECT_EQ(file->FileDate(), date) << "a missing file leaves the date";
  }
  EXPECT_TRUE(logged.empty());
}

TEST_F(FileLists, ASizeIsAtLeastOneKilobyteAndHalvesRoundToEven) {
  const auto file = make<zelFile>();
  std::string sizes = toUtf8(file->SizeAsString());
  for (const std::int32_t size : {0, 1023, 1536, 2560, 2561, -9999, 2147483647}) {
    file->setSize(size);
    sizes += ", " + toUtf8(file->SizeAsString());
  }
  EXPECT_EQ(sizes, "1 KB, 1 KB, 1 KB, 2 KB, 2 KB, 3 KB, 1 KB, 2097152 KB");
}

TEST_F(FileLists, FilesLieUnderTheirPaths) {
  const auto list = make<zelFileList>();
  EXPECT_EQ(list->SelectedCount(), 0);
  EXPECT_EQ(list->Create(put(u"a.txt"))->Size(), 1);
  EXPECT_FALSE(list->Create(path(u"no"), u"gone", false)->Selected());
  EXPECT_TRUE(list->Create(u"")) << "no path is a path like any other";
  EXPECT_EQ(list->Item(3), list->Item(u""));
  EXPECT_FALSE(list->Create(path(u"A.TXT")) || list->Add(nullptr));
  EXPECT_THAT(logged, ElementsAre("zelFileList.Add", "zelFileList.Add"));
  EXPECT_EQ(list->Item(path(u"NO"))->Comment(), u"gone");
  EXPECT_EQ(spelled({list->SelectedCount(), list->Remove(1), list->Count()}), "2|True|2");
  list->Clear();
  EXPECT_EQ(list->Count(), 0);
}

TEST_F(FileLists, FiltersLieUnderTheirKeys) {
  const auto filters = make<zelFileFilters>();
  const Ref<zelFileFilter> texts = filters->Create(u"txt", u"*.txt;*.log", u"Texts");
  texts->setKey(u"other");
  EXPECT_EQ(propertiesOf(*texts, u"Key Name"), "txt|Texts");
  EXPECT_EQ(filters->Create(u"1", u"*")->Name(), u"1") << "the key while there is no name";
  EXPECT_EQ(filters->Item(u"1")->Filter(), u"*") << "a text is a key";
  EXPECT_EQ(make<zelFileFilter>()->Filter(), u"*.*");
  EXPECT_FALSE(filters->Create(u"TXT", u"*"));
  EXPECT_FALSE(filters->Item(u"no") || filters->Item(3) || filters->Remove(u"no"));
  EXPECT_THAT(logged, ElementsAre("zelFileFilters.Add", "zelFileFilters.Item", "zelFileFilters.Item",
                                  "zelFileFilters.Remove"));
}

TEST_F(FileLists, AClientReachesEveryMember) {
  const LateBound list(zelFileList::describeClass().create());
  const LateBound file = list.object(u"Create", path(u"a.txt"));
  constexpr auto members =
      u"Name Comment DSOURL POPServer POPAccount POPPassword From ReplyTo Tag Size POPPort";
  setProperties(*file.get(), members, {u"n", u"c", u"d", u"s", u"a", u"p", u"f", u"r", u"t", 5, 6});
  EXPECT_EQ(propertiesOf(*file.get(), members), "n|c|d|s|a|p|f|r|t|5|6");
}

}  // namespace
}  // namespace zelUtilities
