#include "datalist/NodeListFixture.h"
#include "support/FailingFiles.h"
#include "support/RecordingDialogs.h"
#include "support/Testing.h"

namespace zelUtilities {
namespace {

struct Ini : testing::Test {
  ScratchFolder folder;
  Ref<zelNodeList> list = make<zelNodeList>();
  RecordingDialogs dialogs;
  Replaced<Dialogs> dialogsInForce{dialogs};
  Reports reports{"zelNodeList."};

  bool load(const std::string& bytes) {
    files().replaceWhole(u"in.ini", bytes);
    return list->LoadFromINI(u"in.ini");
  }
  std::string saved() {
    EXPECT_TRUE(list->SaveAsINI(u"out.ini"));
    return files().readWhole(u"out.ini");
  }
};

TEST_F(Ini, KeepsTheShapeOfAFile) {
  std::string everyByte = "[S]\r\nall=";
  for (int byte = 1; byte < 256; ++byte)
    if (byte != '\r' && byte != ' ') everyByte += static_cast<char>(byte);
  everyByte += "\r\nlone=a\nb\rc\r\nnul=" + std::string("x\0y", 3) + "\r\n";
  for (const std::string& text :
       {std::string("; settings\r\ntop=1\r\n\r\n[Paths] ; where things are\r\nHome = C:\\x\r\nempty=\r\n"
                    "a=b=c\r\nno value\r\n\r\n[Last]\r\n"),
        everyByte, std::string("\r\n")}) {
    EXPECT_TRUE(load(text));
    EXPECT_EQ(saved(), text);
  }
  EXPECT_EQ(keysOf(*list), "[] []K0") << "nothing after the last line end is no line";
  load("  a = 1  \r\n  [S]  \r\n ; c \r\nlast");
  EXPECT_EQ(saved(), "a = 1\r\n[S]\r\n; c\r\nlast\r\n") << "but for blanks around lines and the last end";
}

TEST_F(Ini, KeysNodesBySectionAndNameOrNumber) {
  EventLog events(*list);
  load("x\r\n\r\n[Paths]\r\n Home = 1\r\n\r\n;c\r\n");
  EXPECT_EQ(events.take(),
            "clear clear| +|Value +|Data +[] +[]x +[]K0 +[Paths] +[Paths]Home +[Paths]K1 +[Paths];c ");
  const auto text = [&](StringView key) { return list->Item(key)->Text(); };
  EXPECT_EQ(spelled({text(u"[]"), text(u"[paths]HOME"), text(u"[Paths];c")}), "[Default]|Home |");
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
  EXPECT_EQ(list->Item(u"[a]z")->Key(), u"[A]z");
  EXPECT_EQ(saved(), "[A]\r\nx=3\r\ny=2\r\nz=4\r\n[B]\r\n[unclosed\r\nq=5\r\n");
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
struct FailingDisk : FailingFiles {
  FailingDisk() : FailingFiles("", 0) {}
  std::unique_ptr<FileReader> open(StringView) override { return std::make_unique<FailingReader>(goodReads); }
  int goodReads = 0;
};

TEST_F(Ini, WhatCannotBeReadIsSilentAndLeavesAnInitialisedList) {
  EventLog events(*list);
  const auto expectNone = [&](StringView name, const std::string& lastEvents) {
    EXPECT_FALSE(list->LoadFromINI(String(name)));
    EXPECT_TRUE(events.take().ends_with(lastEvents));
    EXPECT_EQ(spelled({list->Count(), list->Columns()->Count()}), "0|2");
    list->Create(u"", u"[A]", u"[A]");
  };
  load("[A]\r\nx=1\r\n");
  files().replaceWhole(u"empty.ini", "");
  for (const StringView name : {u"empty.ini", u"missing.ini", u"."}) expectNone(name, "+|Data ");
  FailingDisk disk;
  const Replaced<Files> replaced(disk);
  expectNone(u"in.ini", "+|Data ");
  disk.goodReads = 1;
  expectNone(u"in.ini", "+[]a clear ");
  EXPECT_EQ(reports.taken(), "");
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(Ini, TellsTheUserOfAFileThatCannotBeWritten) {
  load("a=1\r\n");
  EXPECT_TRUE(list->SaveAsINI(u"no such folder/out.ini"));
  ASSERT_EQ(dialogs.boxes.size(), 1U);
  EXPECT_EQ(dialogs.boxes[0].title, u"Write Error");
  EXPECT_TRUE(dialogs.boxes[0].text.starts_with(u"The requested file could not be written:    "));
}

TEST_F(Ini, NeedsItsDataColumn) {
  auto plain = make<zelNodeList>();
  plain->Create(u"", u"[S]", u"[S]");
  plain->Create(u"[S]", u"[S]x", u"x");
  EXPECT_EQ(plain->ReadINIValue(u"S", u"x", u"none"), u"");
  EXPECT_FALSE(plain->UpdateINIValue(u"S", u"x", u"1"));
  files().replaceWhole(u"out.ini", "kept");
  EXPECT_FALSE(plain->SaveAsINI(u"out.ini"));
  EXPECT_EQ(files().readWhole(u"out.ini"), "kept");
  list->InitializeAsINI();
  EXPECT_FALSE(list->CopySection(plain->Item(u"[S]")));
  EXPECT_EQ(reports.taken(), "ReadINIValue|91 UpdateINIValue|91 SaveAsINI|91 CopySection|91 ");
}

TEST_F(Ini, CopiesASectionOverTheValuesThatAreThere) {
  load("[a]\r\nX =2\r\nnew=3\r\n[B]\r\n");
  const auto other = std::exchange(list, make<zelNodeList>());
  load("[A]\r\nx=1\r\n;note\r\n");
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
  std::string sections;
  for (int i = 0; i < 1'000'000; ++i) sections += "[" + std::to_string(i) + "]\r\n";
  for (const std::string& text :
       {"x=" + std::string(100'000'000, '=') + "\r\n", std::string(1'000'000, '\0') + "\r\n", sections}) {
    EXPECT_TRUE(load(text));
    EXPECT_TRUE(saved() == text);
  }
  EXPECT_EQ(list->RootNodes()->Count(), 1'000'001);
}

}  // namespace
}  // namespace zelUtilities
