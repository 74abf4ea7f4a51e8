#include "host/Program.h"

#include "automation/Error.h"
#include "foundation/ErrorWatch.h"
#include "foundation/mLog.h"
#include "host/Call.h"
#include "host/Console.h"
#include "host/Describe.h"
#include "host/Docs.h"
#include "host/Ini.h"
#include "host/Publish.h"
#include "host/Translate.h"
#include "platform/Dialogs.h"

namespace zelUtilities::host {

namespace {

constexpr StringView help =
    u"zel: the operations of zelUtilities from the command line\n"
    "\n"
    "  zel classes                               every class, with what it is for\n"
    "  zel describe CLASS                        a class's operations, properties and events; also an "
    "enumeration\n"
    "  zel call OPERATION [ARGUMENT...]          calls a global operation and prints its result\n"
    "  zel ini list FILE                         the sections and entries of a settings file\n"
    "  zel ini get FILE SECTION NAME             the value of an entry\n"
    "  zel ini set FILE SECTION NAME VALUE       changes the value of an entry that is there\n"
    "  zel translate FILE LANGUAGE SECTION CONTROL [PART [USE]]\n"
    "                                            a text of a translation file; without USE, the Caption\n"
    "  zel docs [FOLDER]                         the reference of all classes as Markdown, one page a class\n"
    "  zel idl                                   the interface description (IDL) of all classes\n"
    "  zel manifest                              the manifest for use without registration\n"
    "  zel --version\n"
    "  zel --help\n"
    "\n"
    "SECTION is written without brackets; \"\" stands for the lines before the first section. Arguments of\n"
    "operations are converted to the types that \"zel describe\" shows: an enumeration's value by name or "
    "number, a\n"
    "byte array as hexadecimal digits, no object as \"\". What fails is told on standard error, and the exit "
    "code\n"
    "is then 1, or 2 for a command that is not understood.";

enum ExitCode { succeeded = 0, failed = 1, notUnderstood = 2 };

// Message boxes have nobody to close them here. Files are asked for as everywhere.
class ConsoleDialogs : public Dialogs {
 public:
  explicit ConsoleDialogs(Console& console) : console_(console), asking_(dialogs()) {}
  std::int32_t messageBox(StringView text, StringView title, std::int32_t) override {
    String line(title);
    line += u':';
    bool wasBlank = true;
    for (const char16_t unit : text) {
      const bool isBlank = unit <= u' ';
      if (!isBlank && wasBlank) line += u' ';
      if (!isBlank) line += unit;
      wasBlank = isBlank;
    }
    console_.complain(line);
    return MessageBoxAnswer::Ok;
  }
  std::vector<String> openFiles(const FileQuestion& question) override { return asking_.openFiles(question); }
  String saveFile(const FileQuestion& question) override { return asking_.saveFile(question); }
  String selectFolder(StringView title, StringView folder) override {
    return asking_.selectFolder(title, folder);
  }

 private:
  Console& console_;
  Dialogs& asking_;
};

String errorLine(StringView source, std::int32_t number, StringView description) {
  String line(source);
  if (!source.empty()) line += u": ";
  return line + String(description) + u" (error " + decimalText(number) + u")";
}

using Words = std::span<const String>;

int runDescribe(Words words, const ClassRegistry& registry, Console& console) {
  if (words.size() != 1) return notUnderstood;
  if (const ClassInfo* info = registry.find(words[0])) {
    printClass(*info, console);
  } else if (const EnumInfo* enumeration = registry.findEnumeration(words[0])) {
    printEnumeration(*enumeration, console);
  } else {
    console.complain(u"there is no class " + words[0] + u"; see: zel classes");
  }
  return succeeded;
}

int runCall(Words words, const ClassRegistry& registry, Console& console) {
  if (words.empty()) return notUnderstood;
  if (const auto operation = registry.findOperation(words[0])) {
    callOperation(*operation, words.subspan(1), console);
  } else {
    console.complain(u"there is no global operation " + words[0]);
  }
  return succeeded;
}

int runIni(Words words, const ClassRegistry& registry, Console& console) {
  if (words.size() == 2 && words[0] == u"list") {
    listIni(registry, words[1], console);
  } else if (words.size() == 4 && words[0] == u"get") {
    getIni(registry, words[1], {words[2], words[3]}, console);
  } else if (words.size() == 5 && words[0] == u"set") {
    setIni(registry, words[1], {words[2], words[3]}, words[4], console);
  } else {
    return notUnderstood;
  }
  return succeeded;
}

int runTranslate(Words words, const ClassRegistry& registry, Console& console) {
  if (words.size() < 4 || words.size() > 6) return notUnderstood;
  TextName name;
  name.section = words[2];
  name.control = words[3];
  if (words.size() > 4) name.part = words[4];
  if (words.size() > 5) name.use = words[5];
  translate(registry, words[0], words[1], name, console);
  return succeeded;
}

int runDocs(Words words, const ClassRegistry& registry, Console& console) {
  if (words.size() > 1) return notUnderstood;
  if (words.empty()) {
    printDocs(registry, console);
  } else {
    writeDocs(registry, words[0], console);
  }
  return succeeded;
}

int runCommand(Words words, const ClassRegistry& registry, Console& console) {
  if (words.empty()) return notUnderstood;
  const String& command = words[0];
  const Words rest = words.subspan(1);
  if (command == u"describe") return runDescribe(rest, registry, console);
  if (command == u"call") return runCall(rest, registry, console);
  if (command == u"ini") return runIni(rest, registry, console);
  if (command == u"translate") return runTranslate(rest, registry, console);
  if (command == u"docs") return runDocs(rest, registry, console);
  if (!rest.empty()) return notUnderstood;
  if (command == u"classes") {
    printClasses(registry, console);
  } else if (command == u"idl") {
    printInterfaceDescription(registry, console);
  } else if (command == u"manifest") {
    printManifest(registry, console);
  } else if (command == u"--version") {
    console.print(mLog::GetLibraryVersion());
  } else if (command == u"--help" || command == u"-h") {
    console.print(help);
  } else {
    return notUnderstood;
  }
  return succeeded;
}

// The same, with whatever it raises told to the user.
int runGuarded(Words words, const ClassRegistry& registry, Console& console) {
  try {
    return runCommand(words, registry, console);
  } catch (...) {
    const Error error = currentError();
    console.complain(errorLine(error.source(), error.number(), error.description()));
    return failed;
  }
}

}  // namespace

int runProgram(std::span<const String> arguments, const ClassRegistry& registry, std::ostream& out,
               std::ostream& err) {
  Console console(out, err);
  ConsoleDialogs dialogs(console);
  const Replaced<Dialogs> replaced(dialogs);
  const ErrorWatch watch([&](const ErrorReport& report) {
    console.complain(errorLine(report.source, report.number, report.description));
  });

  const int code = runGuarded(arguments, registry, console);
  if (code == notUnderstood) console.complain(u"this is not understood; see: zel --help");
  if (!console.finish()) console.complain(u"standard output cannot be written");
  return code == succeeded && console.hasComplained() ? failed : code;
}

}  // namespace zelUtilities::host
