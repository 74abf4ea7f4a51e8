#include "files/FilesClasses.h"
#include "files/FilesFixture.h"
#include "files/zelFileFilters.h"
#include "files/zelFileList.h"

namespace zelUtilities {
namespace {

using testing::ElementsAre;

class FileLists : public FilesFixture {};

TEST_F(FileLists, AFileKnowsItsSizeAndDateFromItsPath) {
  const auto file = make<zelFile>();
  EXPECT_TRUE(file->Selected());
  file->setFullPath(put(u"Report.TXT", std::string(1536, 'x')));
  EXPECT_EQ(file->Size(), 1536);
  EXPECT_EQ(file->SizeKB(), 1.5);
  const Date date = file->FileDate();
  EXPECT_EQ(date, files().details(file->FullPath()).modified);
  EXPECT_EQ(file->Folder(), folder);
  EXPECT_EQ(file->Extension() + u" " + file->Name(), u"txt Report.TXT");
  for (const String& name : {String(u"Mine"), String()}) {
    file->setName(name);
    EXPECT_EQ(file->Name(), name.empty() ? u"Report.TXT" : name);
  }
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
  EXPECT_EQ(list->Item(std::int32_t{3}), list->Item(u""));
  EXPECT_FALSE(list->Create(path(u"A.TXT")) || list->Add(nullptr));
  EXPECT_THAT(logged, ElementsAre("zelFileList.Add", "zelFileList.Add"));
  EXPECT_EQ(list->SelectedCount(), 2);
  EXPECT_EQ(list->Item(path(u"NO"))->Comment(), u"gone");
  EXPECT_TRUE(list->Remove(std::int32_t{1}));
  EXPECT_EQ(list->Count(), 2);
  list->Clear();
  EXPECT_EQ(list->Count(), 0);
}

TEST_F(FileLists, FiltersLieUnderTheirKeys) {
  const auto filters = make<zelFileFilters>();
  const Ref<zelFileFilter> texts = filters->Create(u"txt", u"*.txt;*.log", u"Texts");
  texts->setKey(u"other");
  EXPECT_EQ(texts->Key() + u" " + texts->Name(), u"txt Texts");
  EXPECT_EQ(filters->Create(u"1", u"*")->Name(), u"1") << "the key while there is no name";
  EXPECT_EQ(filters->Item(u"1")->Filter(), u"*") << "a text is a key";
  EXPECT_EQ(make<zelFileFilter>()->Filter(), u"*.*");
  EXPECT_FALSE(filters->Create(u"TXT", u"*"));
  EXPECT_FALSE(filters->Item(u"no") || filters->Item(std::int32_t{3}) || filters->Remove(u"no"));
  EXPECT_THAT(logged, ElementsAre("zelFileFilters.Add", "zelFileFilters.Item", "zelFileFilters.Item",
                                  "zelFileFilters.Remove"));
}

TEST_F(FileLists, AClientReachesEveryMember) {
  ClassRegistry registry;
  registerFiles(registry);
  std::vector<Variant> arguments{path(u"a.txt")};
  const Variant created =
      registry.create(u"zelUtilities.zelFileList")->Invoke(u"Create", InvokeKind::Method, arguments);
  for (const StringView name : {u"FullPath", u"Name", u"Comment", u"DSOURL", u"POPServer", u"POPAccount",
                                u"POPPassword", u"From", u"ReplyTo", u"Tag", u"Size", u"POPPort"}) {
    const bool isNumber = name == u"Size" || name == u"POPPort";
    Variant value = isNumber ? Variant(std::int32_t{5}) : Variant(name);
    created.object()->Invoke(name, InvokeKind::Put, {&value, 1});
    EXPECT_EQ(toText(created.object()->Invoke(name, InvokeKind::Get, {})), isNumber ? u"5" : name);
  }
}

}  // namespace
}  // namespace zelUtilities
