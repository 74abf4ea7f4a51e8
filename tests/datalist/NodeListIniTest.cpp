#include <filesystem>
#include <fstream>

#include "datalist/NodeListFixture.h"
#include "platform/Dialogs.h"
#include "support/FailingFiles.h"

namespace zelUtilities {
namespace {

struct RecordedDialogs : Dialogs {
  std::int32_t messageBox(StringView text, StringView title, std::int32_t) override {
    shown += utf8(title) + "|" + utf8(text) + "\n";
    return MessageBoxAnswer::Ok;
  }
  std::string shown;
};

struct Ini : testing::Test {
  std::filesystem::path folder = std::filesystem::temp_directory_path() /
                                 ("zelini" + std::to_string(reinterpret_cast<std::uintptr_t>(this)));
  Ref<zelNodeList> list = make<zelNodeList>();

  Ini() { std::filesystem::create_directories(folder); }
  ~Ini() override { std::filesystem::remove_all(folder); }

  String path(const char* name) const { return fromUtf8((folder / name).string()); }
  String write(const char* name, const std::string& bytes) const {
    std::ofstream(folder / name, std::ios::binary) << bytes;
    return path(name);
  }
  std::string read(const char* name) const {
    std::ifstream file(folder / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  bool load(const std::string& bytes) { return list->LoadFromINI(write("in.ini", bytes)); }
  std::string saved() {
    EXPECT_TRUE(list->SaveAsINI(path("out.ini")));
    return read("out.ini");
  }
};

TEST_F(Ini, KeepsTheShapeOfAFile) {
  const std::string text =
      "; settings\r\ntop=1\r\n\r\n[Paths] ; where things are\r\nHome = C:\\x\r\nempty=\r\na=b=c\r\nno "
      "value\r\n\r\n[Last]\r\n";
  EXPECT_TRUE(load(text));
  EXPECT_EQ(saved(), text);
}

TEST_F(Ini, EndsEveryLineAndTrimsBlanksAroundLines) {
  load("  a = 1  \r\n  [S]  \r\n ; c \r\nlast");
  EXPECT_EQ(saved(), "a = 1\r\n[S]\r\n; c\r\nlast\r\n");
}

TEST_F(Ini, BringsEveryByteBack) {
  std::string text = "[S]\r\nall=";
  for (int byte = 1; byte < 256; ++byte)
    if (byte != '\r' && byte != ' ') text += static_cast<char>(byte);
  text += "\r\nlone=a\nb\rc\r\nnul=";
  text += std::string("x\0y", 3) + "\r\n";
  EXPECT_TRUE(load(text));
  EXPECT_EQ(saved(), text);
}

TEST_F(Ini, KeysNodesBySectionAndNameOrNumber) {
  EventLog events(*list);
  load("x\r\n\r\n[Paths]\r\n Home = 1\r\n\r\n;c\r\n");
  EXPECT_EQ(
      events.take(),
      "NodesCleared \nColumnsCleared \nColumnAdded Value\nColumnAdded Data\nNodeAdded []\nNodeAdded []x\n"
      "NodeAdded []K0\nNodeAdded [Paths]\nNodeAdded [Paths]Home\nNodeAdded [Paths]K1\nNodeAdded [Paths];c\n");
  EXPECT_EQ(list->Item(u"[]")->Text(), u"[Default]");
  EXPECT_EQ(list->Item(u"[paths]HOME")->Text(), u"Home ");
  EXPECT_EQ(list->Item(u"[Paths];c")->Text(), u"");
}

TEST_F(Ini, ReadsAndUpdatesValuesThatAreThere) {
  load("[Paths]\r\nHome = x \r\n[Other] ; comment\r\nk=v\r\n");
  EXPECT_EQ(list->ReadINIValue(u"paths", u"HOME", u"none"), u" x");
  EXPECT_EQ(list->ReadINIValue(u"Paths", u"Temp", u"none"), u"none");
  EXPECT_EQ(list->ReadINIValue(u"Other", u"k", u"none"), u"none")
      << "the whole header line is the section's key";
  EXPECT_TRUE(list->UpdateINIValue(u"Paths", u"home", u"y"));
  EXPECT_FALSE(list->UpdateINIValue(u"Paths", u"Temp", u"y"));
  EXPECT_EQ(saved(), "[Paths]\r\nHome =y\r\n[Other] ; comment\r\nk=v\r\n");
}

TEST_F(Ini, RepeatedSectionsGoOnAndTheLastValueOfANameWins) {
  load("[A]\r\nx=1\r\ny=2\r\n[B]\r\n[a]\r\nX=3\r\nz=4\r\n[unclosed\r\nq=5\r\n=lost\r\n");
  EXPECT_EQ(list->Item(u"[unclosed")->Cells()->Item(u"Data")->Value().text(), u"lost");
  EXPECT_EQ(saved(), "[A]\r\nx=3\r\ny=2\r\nz=4\r\n[B]\r\n[unclosed\r\nq=5\r\n");
}

TEST_F(Ini, CountsBlankLinesAndNothingAfterTheLastLineEnd) {
  EXPECT_TRUE(load("\r\n"));
  EXPECT_EQ(keysOf(*list), "[] []K0");
  EXPECT_EQ(saved(), "\r\n");
}

TEST_F(Ini, AnEmptyOrMissingFileLeavesAnInitialisedList) {
  RecordedDialogs dialogs;
  const Replaced<Dialogs> replaced(dialogs);
  ErrorLog errors;
  load("[A]\r\nx=1\r\n");
  EXPECT_FALSE(load(""));
  EXPECT_EQ(list->Count(), 0);
  EXPECT_EQ(keysOf(*list->Columns()), "Value Data");
  EXPECT_FALSE(list->LoadFromINI(path("missing.ini")));
  EXPECT_FALSE(list->LoadFromINI(fromUtf8(folder.string())));
  EXPECT_EQ(dialogs.shown + errors.text(), "");
}

struct FailingReader : FileReader {
  explicit FailingReader(int goodReads) : FileReader(100'000), left(goodReads) {}
  std::size_t readMore(std::span<char> buffer) override {
    if (left-- == 0) throw Error(ErrorNumber::DeviceIO);
    std::fill(buffer.begin(), buffer.end(), '\n');
    std::copy_n("a=1\r\nb", 6, buffer.begin());
    return buffer.size();
  }
  int left;
};

TEST_F(Ini, AFileThatCannotBeReadToItsEndLeavesAnInitialisedList) {
  struct FailingDisk : FailingFiles {
    using FailingFiles::FailingFiles;
    std::unique_ptr<FileReader> open(StringView) override {
      return std::make_unique<FailingReader>(goodReads);
    }
    int goodReads = 0;
  };
  ErrorLog errors;
  const String file = write("in.ini", "x");
  FailingDisk disk("", 0);
  const Replaced<Files> replaced(disk);
  EventLog events(*list);
  EXPECT_FALSE(list->LoadFromINI(file));
  EXPECT_TRUE(events.take().ends_with("ColumnAdded Data\n"));
  disk.goodReads = 1;
  EXPECT_FALSE(list->LoadFromINI(file));
  EXPECT_EQ(list->Count(), 0);
  EXPECT_TRUE(events.take().ends_with("NodeAdded []a\nNodesCleared \n"));
  EXPECT_EQ(errors.text(), "");
}

TEST_F(Ini, TellsTheUserOfAFileThatCannotBeWritten) {
  RecordedDialogs dialogs;
  const Replaced<Dialogs> replaced(dialogs);
  load("a=1\r\n");
  EXPECT_TRUE(list->SaveAsINI(path("no such folder/out.ini")));
  EXPECT_EQ(dialogs.shown.substr(0, 56), "Write Error|The requested file could not be written:    ");
}

TEST_F(Ini, NeedsItsDataColumn) {
  auto plain = make<zelNodeList>();
  plain->Create(u"", u"[S]", u"[S]");
  plain->Create(u"[S]", u"[S]x", u"x");
  ErrorLog errors;
  EXPECT_EQ(plain->ReadINIValue(u"S", u"x", u"none"), u"");
  EXPECT_FALSE(plain->UpdateINIValue(u"S", u"x", u"1"));
  write("out.ini", "kept");
  EXPECT_FALSE(plain->SaveAsINI(path("out.ini")));
  EXPECT_EQ(read("out.ini"), "kept");
  list->InitializeAsINI();
  EXPECT_FALSE(list->CopySection(plain->Item(u"[S]")));
  EXPECT_EQ(errors.text(),
            "zelNodeList.ReadINIValue 91\nzelNodeList.UpdateINIValue 91\nzelNodeList.SaveAsINI 91\n"
            "zelNodeList.CopySection 91\n");
}

TEST_F(Ini, CopiesASectionOverTheValuesThatAreThere) {
  load("[A]\r\nx=1\r\n;note\r\n");
  auto other = make<zelNodeList>();
  other->LoadFromINI(write("other.ini", "[a]\r\nX =2\r\nnew=3\r\n[B]\r\n"));
  EXPECT_TRUE(list->CopySection(other->Item(u"[a]")));
  EXPECT_TRUE(list->CopySection(other->Item(u"[B]")));
  EXPECT_FALSE(list->CopySection(nullptr));
  EXPECT_TRUE(list->CopySection(list->Item(u"[A]"))) << "onto itself changes nothing";
  EXPECT_EQ(saved(), "[A]\r\nx=2\r\n;note\r\nnew=3\r\n[B]\r\n");
}

// Long files are read in pieces of whole lines; a piece may end anywhere in a line.
TEST_F(Ini, KeepsTheShapeOfALongFileHoweverItsLinesLie) {
  std::string lines;
  for (int i = 0; i < 10'000; ++i) lines += std::to_string(10'000 + i) + "=\r\n";  // 8 bytes each
  for (std::size_t shift = 1; shift <= 8; ++shift) {
    const std::string text = "[" + std::string(shift, 's') + "]\r\n" + lines;
    ASSERT_TRUE(load(text));
    EXPECT_EQ(list->Count(), 10'002) << shift;  // with both sections
    EXPECT_TRUE(saved() == text) << shift;
  }
}

TEST_F(Ini, TakesHugeFilesAsTheyAre) {
  const std::string line = "x=" + std::string(100'000'000, '=') + "\r\n";
  EXPECT_TRUE(load(line));
  EXPECT_EQ(saved(), line);

  std::string sections;
  for (int i = 0; i < 1'000'000; ++i) sections += "[" + std::to_string(i) + "]\r\n";
  EXPECT_TRUE(load(sections));
  EXPECT_EQ(list->RootNodes()->Count(), 1'000'001);
  EXPECT_EQ(saved(), sections);

  EXPECT_TRUE(load(std::string(1'000'000, '\0')));
  EXPECT_EQ(saved(), std::string(1'000'000, '\0') + "\r\n");
}

}  // namespace
}  // namespace zelUtilities
