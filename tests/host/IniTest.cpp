#include <gmock/gmock.h>

#include "host/Command.h"
#include "library/Library.h"
#include "support/FailingFiles.h"
#include "support/ScratchFolder.h"

namespace zelUtilities {
namespace {

constexpr char settings[] =
    "; written by hand\r\ntop = 1\r\n\r\n"
    "[Paths]\r\nHome = C:\\Data\r\nGr\xF6\xDF"
    "e=4\r\nEmpty=\r\nno equals sign\r\n"
    "[Other]\r\nHome=elsewhere\r\n";

// Settings files through the real node list.
class ZelIni : public testing::Test {
 protected:
  ZelIni() { write(settings); }

  void write(std::string_view contents) { files().replaceWhole(u"f.ini", contents); }
  std::string ini(const std::string& line) { return run(library(), "ini " + line); }
  // A command that fails with this message and leaves the file as it was.
  void expectRefused(const std::string& line, const std::string& message) {
    const std::string before = files().readWhole(u"f.ini");
    EXPECT_EQ(ini(line), "1||zel: f.ini " + message + "\n");
    EXPECT_EQ(files().readWhole(u"f.ini"), before);
  }

  const ScratchFolder scratch_;
};

TEST_F(ZelIni, ListsEntriesAndGetsTheirValuesAsTheFileHasThem) {
  EXPECT_EQ(ini("list f.ini"),
            "0|top = 1\n[Paths]\nHome = C:\\Data\nGr\u00F6\u00DFe=4\nEmpty=\n[Other]\nHome=elsewhere\n|");
  EXPECT_EQ(ini("get f.ini paths HOME") + ini("get f.ini \"\" top"), "0| C:\\Data\n|0| 1\n|");
  EXPECT_EQ(ini("get f.ini Paths Empty"), "0|\n|");
}

TEST_F(ZelIni, SetChangesTheValueAndNothingElse) {
  EXPECT_EQ(ini("set f.ini Paths Gr\u00F6\u00DFe \u00FC=7"), "0||");
  std::string expected = settings;
  expected.replace(expected.find("e=4"), 3, "e=\xFC=7");
  EXPECT_EQ(files().readWhole(u"f.ini"), expected);
}

TEST_F(ZelIni, WhatIsNoEntryIsNeitherGotNorSet) {
  const std::pair<std::string, std::string> rows[] = {
      {"Paths Missing", "\"Missing\" in the section [Paths]"},
      {"Missing Home", "\"Home\" in the section [Missing]"},
      {"Paths \"\"", "\"\" in the section [Paths]"},
      {"Paths \"no equals sign\"", "\"no equals sign\" in the section [Paths]"}};
  for (const auto& [entry, what] : rows) {
    expectRefused("get f.ini " + entry, "has no " + what);
    expectRefused("set f.ini " + entry + " x", "has no " + what + "; nothing is changed");
  }
  write("");
  expectRefused("set f.ini Paths Home x", "has no \"Home\" in the section [Paths]; nothing is changed");
}

TEST_F(ZelIni, SetRefusesWhereSomethingWouldBeLost) {
  expectRefused("set f.ini Paths Home \"a\nb\"", "is left as it is: a value cannot hold a line end");
  expectRefused("set f.ini Paths Home \u4E2D",
                "is left as it is: the value has characters that the file's code page has not");
  write("x=1\ny=2\nz=3\n");
  expectRefused("set f.ini \"\" x 3", "is left as it is: its lines do not end in CR LF");
  for (const char* lines : {"x=2", "; -\r\n; -", "[a]\r\ny=1"}) {
    write("[A]\r\nx=1\r\n" + std::string(lines) + "\r\n");
    expectRefused(
        "set f.ini A x 3",
        "is left as it is: it repeats sections, names or comments, of which saving would keep but one");
  }
}

TEST_F(ZelIni, AReadOnlyFileAndAFullDiskAreToldAndLeaveTheFile) {
  const auto told = testing::EndsWith("\nzel: f.ini could not be written\n");
  files().setAttributes(u"f.ini", FileAttribute::ReadOnly);
  EXPECT_THAT(ini("set f.ini Paths Home x"), told);
  files().setAttributes(u"f.ini", FileAttribute::Normal);
  FailingFiles disk("replaceWhole", ErrorNumber::DiskFull);
  const Replaced<Files> replaced(disk);
  EXPECT_THAT(ini("set f.ini Paths Home x"), told);
  EXPECT_EQ(files().readWhole(u"f.ini"), settings);
}

TEST_F(ZelIni, AFileThatCannotBeReadIsToldAndNotCreated) {
  files().remove(u"f.ini");
  for (const char* line : {"list f.ini", "get f.ini a b", "set f.ini a b c"})
    EXPECT_EQ(ini(line), "1||zel: there is no file f.ini (error 53)\n");
  EXPECT_FALSE(files().fileExists(u"f.ini"));
}

}  // namespace
}  // namespace zelUtilities
