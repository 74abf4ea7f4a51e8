#include <gmock/gmock.h>

#include <sstream>

#include "host/Program.h"
#include "library/Library.h"
#include "platform/Files.h"
#include "support/FailingFiles.h"

namespace zelUtilities {
namespace {

using testing::HasSubstr;

constexpr char settings[] =
    "; written by hand\r\n"
    "top = 1\r\n"
    "\r\n"
    "[Paths]\r\n"
    "Home = C:\\Data\r\n"
    "Gr\xF6\xDF"
    "e=4\r\n"
    "Empty=\r\n"
    "no equals sign\r\n"
    "[Other]\r\n"
    "Home=elsewhere\r\n";

// Settings files through the real node list.
class ZelIni : public testing::Test {
 protected:
  ZelIni() {
    if (files().fileExists(file)) files().remove(file, true);
    write(settings);
  }
  ~ZelIni() override {
    if (files().fileExists(file)) files().remove(file, true);
  }

  void write(std::string_view contents) { files().replaceWhole(file, contents); }
  std::string contents() { return files().readWhole(file); }

  int run(std::vector<String> arguments) {
    std::ostringstream out, err;
    arguments.insert(arguments.begin(), u"ini");
    const int code = host::runProgram(arguments, library(), out, err);
    printed = out.str();
    complaint = err.str();
    return code;
  }
  // A command that fails with a message and leaves the file as it was.
  void expectRefused(const std::vector<String>& arguments, const std::string& message) {
    const std::string before = contents();
    EXPECT_EQ(run(arguments), 1);
    EXPECT_THAT(complaint, HasSubstr(message));
    EXPECT_EQ(printed, "");
    EXPECT_EQ(contents(), before);
  }

  const String file = u"zel-ini-test.ini";
  std::string printed;
  std::string complaint;
};

TEST_F(ZelIni, ListsSectionsAndEntries) {
  EXPECT_EQ(run({u"list", file}), 0);
  EXPECT_EQ(printed,
            "top = 1\n[Paths]\nHome = C:\\Data\nGr\xC3\xB6\xC3\x9F"
            "e=4\nEmpty=\n[Other]\nHome=elsewhere\n");
  EXPECT_EQ(complaint, "");
}

TEST_F(ZelIni, GetsAValueAsTheFileHasIt) {
  EXPECT_EQ(run({u"get", file, u"paths", u"HOME"}), 0);
  EXPECT_EQ(printed, " C:\\Data\n");
  EXPECT_EQ(run({u"get", file, u"", u"top"}), 0);
  EXPECT_EQ(printed, " 1\n");
  EXPECT_EQ(run({u"get", file, u"Paths", u"Empty"}), 0);
  EXPECT_EQ(printed, "\n");
}

TEST_F(ZelIni, WhatIsNoEntryIsNotGot) {
  expectRefused({u"get", file, u"Paths", u"Missing"}, "has no \"Missing\" in the section [Paths]");
  expectRefused({u"get", file, u"Missing", u"Home"}, "has no \"Home\" in the section [Missing]");
  expectRefused({u"get", file, u"Paths", u""}, "has no \"\"");
  expectRefused({u"get", file, u"Paths", u"no equals sign"}, "has no \"no equals sign\"");
}

TEST_F(ZelIni, SetChangesTheValueAndNothingElse) {
  EXPECT_EQ(run({u"set", file, u"Paths", u"Gr\u00F6\u00DFe", u"\u00FC=7"}), 0);
  EXPECT_EQ(complaint, "");
  std::string expected = settings;
  expected.replace(expected.find("e=4"), 3, "e=\xFC=7");
  EXPECT_EQ(contents(), expected);
}

TEST_F(ZelIni, SetOfAnUnknownNameSaysSoAndChangesNothing) {
  expectRefused({u"set", file, u"Paths", u"Missing", u"x"},
                "has no \"Missing\" in the section [Paths]; nothing is changed");
  expectRefused({u"set", file, u"Paths", u"no equals sign", u"x"}, "nothing is changed");
  expectRefused({u"set", file, u"Paths", u"", u"x"}, "nothing is changed");
}

TEST_F(ZelIni, SetRefusesAValueThatTheFileCannotHold) {
  expectRefused({u"set", file, u"Paths", u"Home", u"a\nb"}, "a value cannot hold a line end");
  expectRefused({u"set", file, u"Paths", u"Home", u"\u4E2D"}, "code page");
}

TEST_F(ZelIni, SetRefusesAFileThatSavingWouldCutShort) {
  write("[A]\r\nx=1\r\nx=2\r\n");
  expectRefused({u"set", file, u"A", u"x", u"3"}, "repeats");
  write("[A]\r\nx=1\r\n; -\r\n; -\r\n");
  expectRefused({u"set", file, u"A", u"x", u"3"}, "repeats");
  write("[A]\r\nx=1\r\n[a]\r\ny=1\r\n");
  expectRefused({u"set", file, u"A", u"x", u"3"}, "repeats");
  write("x=1\ny=2\nz=3\n");
  expectRefused({u"set", file, u"", u"x", u"3"}, "do not end in CR LF");
}

TEST_F(ZelIni, AFileThatCannotBeReadIsToldAndNotCreated) {
  files().remove(file);
  for (const std::vector<String>& command : std::vector<std::vector<String>>{
           {u"list", file}, {u"get", file, u"a", u"b"}, {u"set", file, u"a", u"b", u"c"}}) {
    EXPECT_EQ(run(command), 1);
    EXPECT_THAT(complaint, HasSubstr("there is no file zel-ini-test.ini"));
    EXPECT_FALSE(files().fileExists(file));
  }
  EXPECT_EQ(run({u"set", u".", u"a", u"b", u"c"}), 1);
}

TEST_F(ZelIni, AFullDiskIsToldAndLeavesTheFile) {
  FailingFiles disk("replaceWhole", ErrorNumber::DiskFull);
  const Replaced<Files> replaced(disk);
  expectRefused({u"set", file, u"Paths", u"Home", u"x"}, "could not be written");
}

TEST_F(ZelIni, AReadOnlyFileIsToldAndLeft) {
  files().setAttributes(file, FileAttribute::ReadOnly);
  expectRefused({u"set", file, u"Paths", u"Home", u"x"}, "could not be written");
}

TEST_F(ZelIni, AnEmptyFileHasNoEntries) {
  write("");
  EXPECT_EQ(run({u"list", file}), 0);
  EXPECT_EQ(printed, "");
  expectRefused({u"set", file, u"Paths", u"Home", u"x"}, "has no \"Home\"");
}

}  // namespace
}  // namespace zelUtilities
