#include "platform/linux/FileChooser.h"

#include <algorithm>
#include <cstdlib>

#include "automation/CaseFolding.h"
#include "automation/Error.h"
#include "platform/Files.h"
#include "platform/linux/ChildProcess.h"
#include "platform/linux/FilePaths.h"

namespace zelUtilities::fileChooser {

namespace {

using Command = std::vector<std::string>;

enum class Purpose { Open, Save, Folder };

bool isSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value && *value;
}

bool isKdesDesktop() {
  const char* desktops = std::getenv("XDG_CURRENT_DESKTOP");
  return desktops && std::string_view(desktops).find("KDE") != std::string_view::npos;
}

struct Program {
  std::string path;
  bool isKdialog = false;
};

Program chooser() {
  if (!isSet("DISPLAY") && !isSet("WAYLAND_DISPLAY"))
    throw Error(ErrorNumber::CannotCreateObject, {}, u"Files cannot be chosen: there is no display.");
  Program zenity{findProgram("zenity"), false};
  Program kdialog{findProgram("kdialog"), true};
  if (!kdialog.path.empty() && (zenity.path.empty() || isKdesDesktop())) return kdialog;
  if (!zenity.path.empty()) return zenity;
  throw Error(ErrorNumber::CannotCreateObject, {},
              u"Files cannot be chosen: neither the program zenity nor kdialog is on PATH.");
}

// A text as one line of an argument: what parts the pieces there becomes a blank.
std::string oneLine(StringView text) {
  String line(text);
  std::replace_if(
      line.begin(), line.end(), [](char16_t unit) { return unit < u' ' || unit == u'|'; }, u' ');
  return toUtf8(line);
}

// zenity regards letter case; Windows' patterns do not.
String inAnyCase(StringView pattern) {
  String either;
  for (const char16_t unit : pattern) {
    const bool isLetter = (unit | 0x20) >= u'a' && (unit | 0x20) <= u'z';
    if (isLetter) {
      either += {u'[', static_cast<char16_t>(unit | 0x20), static_cast<char16_t>(unit & ~0x20), u']'};
    } else {
      either += unit;
    }
  }
  return either;
}

// The patterns of a kind, parted by blanks.
std::string patternsOf(const FileKind& kind, bool anyCase) {
  String patterns;
  StringView rest = kind.patterns;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find(u';'), rest.size());
    StringView pattern = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    while (pattern.starts_with(u' ')) pattern.remove_prefix(1);
    while (pattern.ends_with(u' ')) pattern.remove_suffix(1);
    if (pattern.empty()) continue;
    if (pattern == u"*.*") pattern = u"*";  // which means names without a dot too
    patterns += (patterns.empty() ? u"" : u" ") + (anyCase ? inAnyCase(pattern) : String(pattern));
  }
  return oneLine(patterns);
}

// Neither program can be told which kind to begin with: the first one.
std::vector<FileKind> kindsInOrder(const FileQuestion& question) {
  std::vector<FileKind> kinds = question.kinds;
  const auto first = static_cast<std::size_t>(std::max(question.kind, 1)) - 1;
  if (first < kinds.size())
    std::rotate(kinds.begin(), kinds.begin() + static_cast<std::ptrdiff_t>(first),
                kinds.begin() + static_cast<std::ptrdiff_t>(first) + 1);
  return kinds;
}

// Where to begin: a folder with a separator behind it, or the suggested name in it. A folder that is not
// there counts for nothing.
std::string startPath(const FileQuestion& question) {
  if (lastPartOf(question.name) != 0) return toUtf8(files().fullPath(question.name));
  String start = files().fullPath(files().folderExists(question.folder) ? question.folder : u".");
  if (!start.ends_with(u'/')) start += u'/';
  return toUtf8(question.name.empty() ? start : files().fullPath(start + question.name));
}

Command zenityCommand(Purpose purpose, const FileQuestion& question) {
  Command command = {"--file-selection", "--filename=" + startPath(question)};
  if (!question.title.empty()) command.push_back("--title=" + oneLine(question.title));
  if (purpose == Purpose::Folder) command.emplace_back("--directory");
  if (purpose == Purpose::Save) command.insert(command.end(), {"--save", "--confirm-overwrite"});
  if (question.several) command.insert(command.end(), {"--multiple", "--separator=\n"});
  for (const FileKind& kind : kindsInOrder(question))
    command.push_back("--file-filter=" + oneLine(kind.name) + " | " + patternsOf(kind, true));
  return command;
}

Command kdialogCommand(Purpose purpose, const FileQuestion& question) {
  Command command;
  if (!question.title.empty()) command.insert(command.end(), {"--title", oneLine(question.title)});
  if (question.several) command.insert(command.end(), {"--multiple", "--separate-output"});
  const char* const purposes[] = {"--getopenfilename", "--getsavefilename", "--getexistingdirectory"};
  command.insert(command.end(), {purposes[static_cast<int>(purpose)], startPath(question)});
  std::string kinds;
  for (const FileKind& kind : kindsInOrder(question))
    kinds += (kinds.empty() ? "" : " | ") + oneLine(kind.name) + " (" + patternsOf(kind, false) + ")";
  if (!kinds.empty()) command.push_back(kinds.starts_with('-') ? " " + kinds : kinds);
  return command;
}

// Paths begin with a separator, so that one with a line end inside stays whole. What a client does with a
// path takes backslashes for granted.
std::vector<String> pathsIn(std::string_view text) {
  if (text.ends_with('\n')) text.remove_suffix(1);
  std::vector<String> paths;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find("\n/"), text.size());
    paths.push_back(windowsPath(std::string(text.substr(0, end))));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return paths;
}

std::vector<String> ask(Purpose purpose, const FileQuestion& question) {
  const Program program = chooser();
  Command command = program.isKdialog ? kdialogCommand(purpose, question) : zenityCommand(purpose, question);
  command.insert(command.begin(), program.path);
  const ProgramOutput output = outputOf(command);
  // Whoever cancels leaves the output empty, with an exit code of 1; a host may keep the code from us.
  if (output.exitCode > 1)
    throw Error(ErrorNumber::CannotCreateObject, {},
                u"Files cannot be chosen: " + fromUtf8(program.path) + u" ended with the code " +
                    decimalText(output.exitCode) + u".");
  return output.exitCode == 1 ? std::vector<String>() : pathsIn(output.text);
}

bool hasExtension(StringView path) {
  return path.substr(path.find_last_of(u'\\') + 1).find(u'.') != StringView::npos;
}

}  // namespace

// Where a name is typed that nobody has, the user is asked again.
std::vector<String> openFiles(const FileQuestion& question) {
  for (;;) {
    std::vector<String> paths = ask(Purpose::Open, question);
    for (String& path : paths)
      if (!question.extension.empty() && !hasExtension(path) && !files().fileExists(path))
        path += u"." + question.extension;
    const auto exists = [](const String& path) { return files().fileExists(path); };
    if (std::all_of(paths.begin(), paths.end(), exists)) return paths;
  }
}

String saveFile(const FileQuestion& question) {
  FileQuestion asked = question;
  for (;;) {
    const std::vector<String> paths = ask(Purpose::Save, asked);
    if (paths.empty()) return {};
    if (question.extension.empty() || hasExtension(paths[0])) return paths[0];
    asked.name = paths[0] + u"." + question.extension;
    // The user has agreed to the name as typed, not to replace the file that the extension leads to.
    if (!files().fileExists(asked.name)) return asked.name;
  }
}

String selectFolder(StringView title, StringView folder) {
  FileQuestion question;
  question.title = title;
  question.folder = folder;
  for (;;) {
    const std::vector<String> paths = ask(Purpose::Folder, question);
    if (paths.empty()) return {};
    if (files().folderExists(paths[0])) return paths[0];
  }
}

}  // namespace zelUtilities::fileChooser
