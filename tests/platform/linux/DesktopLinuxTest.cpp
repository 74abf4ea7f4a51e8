// The desktop's own programs: found on PATH, started without a shell.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <thread>

#include "platform/Desktop.h"
#include "platform/Dialogs.h"
#include "platform/Files.h"
#include "support/RaisedError.h"

namespace zelUtilities {
namespace {

using testing::ElementsAre;
using testing::StartsWith;
namespace fs = std::filesystem;

// A variable of the environment as a test wants it.
class Environment {
 public:
  Environment(const char* name, const char* value) : name_(name) {
    if (const char* before = std::getenv(name)) before_ = before;
    set(value);
  }
  ~Environment() { set(before_ ? before_->c_str() : nullptr); }
  void set(const char* value) { value ? setenv(name_, value, 1) : unsetenv(name_); }

 private:
  const char* name_;
  std::optional<std::string> before_;
};

class DesktopOnLinux : public testing::Test {
 protected:
  DesktopOnLinux() {
    fs::remove_all(bin);
    fs::create_directories(folder);
  }
  ~DesktopOnLinux() override { fs::remove_all(bin); }

  // A program that notes its arguments, one a line, and goes on as told.
  void install(const std::string& name, const std::string& script) {
    std::ofstream(bin / name) << "#!/bin/sh\nprintf '%s\\n' \"$@\" > \"$0.args\"\n" << script << "\n";
    chmod((bin / name).c_str(), 0755);
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
  String in(const std::string& name) const { return fromUtf8((bin / name).native()); }

  const fs::path bin = fs::absolute("desktop programs");
  const fs::path folder = bin / "start here";
  Environment path{"PATH", bin.c_str()};
  Environment display{"DISPLAY", ":9"};
  Environment wayland{"WAYLAND_DISPLAY", nullptr};
  Environment desktopName{"XDG_CURRENT_DESKTOP", nullptr};
  FileQuestion question{u"A; `title`",
                        fromUtf8(folder.native()),
                        u"",
                        {{u"All | files", u"*.*"}, {u"Texts", u"*.txt; *.l1"}},
                        2,
                        u"txt",
                        false};
};

TEST_F(DesktopOnLinux, ZenityAsksForFilesToOpen) {
  install("zenity", "printf '/a b\\n/c\\nd\\n'");
  question.several = true;
  EXPECT_THAT(dialogs().openFiles(question), ElementsAre(u"/a b", u"/c\nd"));
  EXPECT_EQ(given("zenity"),
            "--file-selection\n--filename=~/start here/\n--title=A; `title`\n--multiple\n--separator=\n\n"
            "--file-filter=Texts | *.[tT][xX][tT] *.[lL]1\n--file-filter=All   files | *\n");
  install("zenity", "printf '/a b\\n'");
  question = {};
  EXPECT_THAT(dialogs().openFiles(question), ElementsAre(u"/a b"));
  EXPECT_EQ(given("zenity"), "--file-selection\n--filename=" + fs::current_path().native() + "/\n");
}

TEST_F(DesktopOnLinux, KdialogAsksWhereItIsAloneOrAtHome) {
  install("kdialog", "printf '/a b\\n'");
  const std::string arguments =
      "--title\nA; `title`\n--getopenfilename\n~/start here/\nTexts (*.txt *.l1) | All   files (*)\n";
  EXPECT_THAT(dialogs().openFiles(question), ElementsAre(u"/a b"));
  EXPECT_EQ(given("kdialog"), arguments);
  install("zenity", "exit 1");
  EXPECT_THAT(dialogs().openFiles(question), ElementsAre());
  desktopName.set("ubuntu:KDE");
  EXPECT_EQ(dialogs().selectFolder(u"", u"missing"), u"/a b");
  EXPECT_EQ(given("kdialog"), "--getexistingdirectory\n" + fs::current_path().native() + "/\n");
}

TEST_F(DesktopOnLinux, ANameToSaveToGetsItsExtensionAndTheUserAgreesToReplaceThatFile) {
  install("zenity", "printf '%s\\n' \"${0%/*}/report\"");
  EXPECT_EQ(dialogs().saveFile(question), in("report.txt"));
  std::ofstream(bin / "report.txt") << "kept";
  install("zenity", "case \"$2\" in *report.txt) exit 1;; *) printf '%s\\n' \"${0%/*}/report\";; esac");
  EXPECT_EQ(dialogs().saveFile(question), u"");
  EXPECT_THAT(given("zenity"), StartsWith("--file-selection\n--filename=~/report.txt\n--title=A; `title`\n"
                                          "--save\n--confirm-overwrite\n"));
  install("zenity", "printf '%s\\n' \"${0%/*}/a.dat\"");
  question.name = u"a.dat";
  EXPECT_EQ(dialogs().saveFile(question), in("a.dat"));
  EXPECT_EQ(given("zenity").substr(17, 33), "--filename=~/start here/a.dat\n--t");
  question.name = u"a?b";
  EXPECT_EQ(raisedError([&] { dialogs().saveFile(question); }).substr(0, 2), "52");
}

TEST_F(DesktopOnLinux, WithoutAChooserTheUserCannotBeAsked) {
  const auto failure = [&] { return raisedError([] { dialogs().selectFolder(u"", u""); }); };
  EXPECT_EQ(failure(), "429||Files cannot be chosen: neither the program zenity nor kdialog is on PATH.");
  install("zenity", "exit 255");
  EXPECT_EQ(failure(), "429||Files cannot be chosen: " + toUtf8(in("zenity")) + " ended with the code 255.");
  display.set(nullptr);
  EXPECT_EQ(failure(), "429||Files cannot be chosen: there is no display.");
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

TEST_F(DesktopOnLinux, EveryWindowIsMissing) {
  EXPECT_EQ(desktop().windowStyle(7), 0);
  desktop().stackWindow(7, -1, 19);
  EXPECT_EQ(desktop().workAreas().size(), 0u);
}

}  // namespace
}  // namespace zelUtilities
