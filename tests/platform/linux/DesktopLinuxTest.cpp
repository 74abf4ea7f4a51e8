// The desktop's own programs: found on PATH, started without a shell.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

#include "platform/Desktop.h"
#include "platform/Dialogs.h"
#include "platform/linux/Environment.h"
#include "support/RaisedError.h"

namespace zelUtilities {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<String>;

class DesktopOnLinux : public testing::Test {
 protected:
  DesktopOnLinux() {
    fs::create_directories(folder);
    for (const char* name : {"a b", "c\nd.txt"}) std::ofstream(bin / name) << "x";
  }
  ~DesktopOnLinux() override { fs::remove_all(bin); }

  // A program that notes its arguments, one a line, and goes on as told.
  void install(const std::string& name, const std::string& script) {
    std::ofstream(bin / name) << "#!/bin/sh\nprintf '%s\\n' \"$@\" > \"$0.args\"\n" << script << "\n";
    fs::permissions(bin / name, fs::perms::owner_all);
  }
  // What the program was given last; a path in the test's folder as "~".
  std::string given(const std::string& name) const {
    std::ostringstream text;
    text << std::ifstream(bin / (name + ".args")).rdbuf();
    std::string all = text.str();
    for (std::size_t at; (at = all.find(bin.native())) != std::string::npos;)
      all.replace(at, bin.native().size(), "~");
    return all;
  }
  // As a client names it.
  String in(const std::string& name) const {
    String path = u"Z:" + fromUtf8((bin / name).native());
    std::replace(path.begin(), path.end(), u'/', u'\\');
    return path;
  }

  const fs::path bin = fs::absolute("desktop programs");
  const fs::path folder = bin / "start here";
  const std::string current = fs::current_path().native() + "/\n";
  Environment path{"PATH", bin.c_str()};
  Environment display{"DISPLAY", ":9"};
  Environment wayland{"WAYLAND_DISPLAY", nullptr};
  Environment desktopName{"XDG_CURRENT_DESKTOP", nullptr};
  const std::vector<FileKind> kinds{{u"All | files", u"*.*"}, {u"Texts", u"*.txt; *.l1"}};
  FileQuestion question{u"A; `title`", fromUtf8(folder.native()), u"", kinds, 2, u"txt", false};
};

TEST_F(DesktopOnLinux, ZenityAsksForFilesToOpen) {
  // A name that nobody has first, then one without its extension.
  install("zenity",
          "[ -e \"$0.again\" ] && echo \"${0%/*}/a b\n${0%/*}/c\nd\" || echo /none; : > \"$0.again\"");
  question.several = true;
  EXPECT_EQ(dialogs().openFiles(question), (Names{in("a b"), in("c\nd.txt")}));
  EXPECT_EQ(given("zenity"),
            "--file-selection\n--filename=~/start here/\n--title=A; `title`\n--multiple\n--separator=\n\n"
            "--file-filter=Texts | *.[tT][xX][tT] *.[lL]1\n--file-filter=All   files | *\n");
  install("zenity", "echo \"${0%/*}/a b\"");
  EXPECT_EQ(dialogs().openFiles({}), Names{in("a b")});
  EXPECT_EQ(given("zenity"), "--file-selection\n--filename=" + current);
}

TEST_F(DesktopOnLinux, KdialogAsksWhereItIsAloneOrAtHome) {
  install("kdialog", "case \"$1\" in --title) echo \"${0%/*}/a b\";; *) echo \"${0%/*}/start here\";; esac");
  EXPECT_EQ(dialogs().openFiles(question), Names{in("a b")});
  EXPECT_EQ(given("kdialog"),
            "--title\nA; `title`\n--getopenfilename\n~/start here/\nTexts (*.txt *.l1) | All   files (*)\n");
  install("zenity", "exit 1");
  EXPECT_EQ(dialogs().openFiles(question), Names{});
  desktopName.set("ubuntu:KDE");
  EXPECT_EQ(dialogs().selectFolder(u"", u"missing"), in("start here"));
  EXPECT_EQ(given("kdialog"), "--getexistingdirectory\n" + current);
}

TEST_F(DesktopOnLinux, ANameToSaveToGetsItsExtensionAndTheUserAgreesToReplaceThatFile) {
  install("zenity", "case \"$2\" in *report.txt) exit 1;; *) printf '%s\\n' \"${0%/*}/report\";; esac");
  EXPECT_EQ(dialogs().saveFile(question), in("report.txt"));
  std::ofstream(bin / "report.txt") << "kept";
  EXPECT_EQ(dialogs().saveFile(question), u"");
  EXPECT_TRUE(
      given("zenity").starts_with("--file-selection\n--filename=~/report.txt\n--title=A; `title`\n"
                                  "--save\n--confirm-overwrite\n"));
  install("zenity", "printf '%s\\n' \"${0%/*}/a.dat\"");
  question.name = u"a.dat";
  EXPECT_EQ(dialogs().saveFile(question), in("a.dat"));
  EXPECT_TRUE(given("zenity").starts_with("--file-selection\n--filename=~/start here/a.dat\n"));
  question.name = u"a?b";
  EXPECT_EQ(raisedError([&] { dialogs().saveFile(question); }).substr(0, 2), "52");
}

TEST_F(DesktopOnLinux, WithoutAChooserTheUserCannotBeAsked) {
  const auto refused = [](const std::string& why) {
    EXPECT_EQ(raisedError([] { dialogs().selectFolder(u"", u""); }), "429||Files cannot be chosen: " + why);
  };
  refused("neither the program zenity nor kdialog is on PATH.");
  install("zenity", "exit 255");
  refused((bin / "zenity").native() + " ended with the code 255.");
  display.set(nullptr);
  refused("there is no display.");
}

TEST_F(DesktopOnLinux, HelpFilesAreOpenedByTheDesktopWithoutWaitingForIt) {
  const String file = in("$(help) manual.chm");
  EXPECT_EQ(raisedError([&] { desktop().windowHelp(file, 1, 5); }).substr(0, 3), "53|");
  install("xdg-open", "until [ -e \"$0.go\" ]; do /bin/sleep 0.01; done; : > \"$0.done\"");
  EXPECT_EQ(desktop().htmlHelp(file, HtmlHelpCommand::Context, 5), 0);
  EXPECT_EQ(given("xdg-open"), "");  // it cannot be told the context
  EXPECT_EQ(desktop().htmlHelp(file, HtmlHelpCommand::Topic, 0), 0);
  std::ofstream(bin / "xdg-open.go") << "";
  for (int i = 0; i < 1000 && !fs::exists(bin / "xdg-open.done"); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  EXPECT_TRUE(fs::exists(bin / "xdg-open.done"));
  EXPECT_EQ(given("xdg-open"), "~/$(help) manual.chm\n");
}

}  // namespace
}  // namespace zelUtilities
