// A client of the library: loads a settings file into a node list, follows the list's events, shows
// the tree, changes two values and saves a copy, of which only the changed lines differ.
//
//   settings-client FILE [COPY]          without COPY, a file in the folder for temporary files
//
// Ends with 0; with 1 when something failed, which is said on standard error.
#include <iostream>
#include <vector>

#include "automation/Conversions.h"
#include "automation/Error.h"
#include "datalist/zelNodeList.h"
#include "files/mFiles.h"
#include "foundation/ErrorWatch.h"
#include "library/Library.h"
#include "platform/Files.h"
#include "platform/Program.h"

namespace {

using namespace zelUtilities;

void print(StringView line) { std::cout << toUtf8(line) << '\n'; }
void title(StringView line) { std::cout << '\n' << toUtf8(line) << "\n\n"; }

// Node lists tell of every change while it happens; a form would keep its tree control in step here.
// The events last as long as their subscriptions.
std::vector<Subscription> printEventsOf(zelNodeList& list) {
  std::vector<Subscription> subscriptions;
  const auto keep = [&](Subscription subscription) { subscriptions.push_back(std::move(subscription)); };
  keep(list.onNodesCleared.subscribe([] { print(u"  NodesCleared"); }));
  keep(list.onColumnsCleared.subscribe([] { print(u"  ColumnsCleared"); }));
  keep(list.onColumnAdded.subscribe(
      [](const Ref<zelNodeListColumn>& column) { print(u"  ColumnAdded    " + String(column->Key())); }));
  keep(list.onNodeAdded.subscribe(
      [](const Ref<zelNode>& node) { print(u"  NodeAdded      " + String(node->Key())); }));
  keep(list.onRefreshedNode.subscribe(
      [](const Ref<zelNode>& node) { print(u"  RefreshedNode  " + String(node->Key())); }));
  return subscriptions;
}

// The nodes of a collection, in order.
std::vector<Ref<zelNode>> all(const Ref<zelNodes>& nodes) {
  std::vector<Ref<zelNode>> found;
  const Ref<Enumerator> walk = nodes->NewEnum();
  for (Variant item; walk->next(item);) found.push_back(objectCast<zelNode>(item.object()));
  return found;
}

String dataOf(zelNode& entry) { return toText(entry.Cells()->Item(u"Data")->Value()); }

// A section is a root node, its lines are child nodes: the name is a node's text, the value its "Data" cell.
// A comment or a blank line is a node without a text.
String shown(zelNode& entry) {
  const String name(trimBlanks(entry.Text()));
  return name.empty() ? dataOf(entry) : name + u" = " + dataOf(entry);
}

void printTree(zelNodeList& list) {
  for (const Ref<zelNode>& section : all(list.RootNodes())) {
    print(u"  " + section->Text());
    for (const Ref<zelNode>& entry : all(section->Nodes())) {
      const String line = shown(*entry);
      print(line.empty() ? line : u"      " + line);
    }
  }
}

String withoutBrackets(StringView section) { return String(section.substr(1, section.size() - 2)); }

struct Setting {
  String section;
  String name;
};

// The first setting of the first section and the last one of the last, whatever the file holds.
std::vector<Setting> settingsToChange(zelNodeList& list) {
  std::vector<Setting> settings;
  for (const Ref<zelNode>& section : all(list.RootNodes())) {
    if (!section->Key().ends_with(u']')) continue;  // cannot be named in brackets
    for (const Ref<zelNode>& entry : all(section->Nodes()))
      if (!entry->Text().empty())
        settings.push_back({withoutBrackets(section->Key()), String(trimBlanks(entry->Text()))});
  }
  if (settings.size() > 2) settings.erase(settings.begin() + 1, settings.end() - 1);
  return settings;
}

void change(zelNodeList& list, const Setting& setting) {
  const String before = list.ReadINIValue(setting.section, setting.name, u"not there");
  const String after = before + u" (changed)";
  const bool changed = list.UpdateINIValue(setting.section, setting.name, after);
  print(u"  " + setting.name + u" in [" + setting.section + u"]: " + before +
        (changed ? u" -> " + after : String()));
}

void changeValues(zelNodeList& list) {
  for (const Setting& setting : settingsToChange(list)) change(list, setting);
  change(list, {u"Window", u"Transparency"});  // a name that is not there is not added
}

std::vector<StringView> linesOf(StringView text) {
  std::vector<StringView> lines;
  for (std::size_t end; (end = text.find(u"\r\n")) != StringView::npos; text.remove_prefix(end + 2))
    lines.push_back(text.substr(0, end));
  if (!text.empty()) lines.push_back(text);
  return lines;
}

void printDifferences(StringView before, StringView after) {
  const std::vector<StringView> old = linesOf(before);
  const std::vector<StringView> copy = linesOf(after);
  if (old.size() != copy.size()) {  // a line that repeats another one's name is stored with it
    print(u"  " + decimalText(static_cast<long long>(old.size())) + u" lines have become " +
          decimalText(static_cast<long long>(copy.size())));
    return;
  }
  long long equal = 0;
  for (std::size_t i = 0; i < old.size(); ++i) {
    if (old[i] == copy[i]) {
      ++equal;
      continue;
    }
    print(u"  line " + decimalText(static_cast<long long>(i) + 1));
    print(u"    - " + String(old[i]));
    print(u"    + " + String(copy[i]));
  }
  print(u"  " + decimalText(equal) + u" other lines are as they were");
}

int run(const String& file, const String& copy) {
  // By name, as any client can; what comes back also answers calls by name.
  Ref<Object> object = library().create(u"zelUtilities.zelNodeList");
  Ref<zelNodeList> list = objectCast<zelNodeList>(object.get());
  const std::vector<Subscription> events = printEventsOf(*list);

  title(u"Events while " + file +
        u" is loaded (a node's key is that of its section and its name; K0 is a blank line)");
  if (!list->LoadFromINI(file)) {
    std::cerr << toUtf8(file) << " is missing or empty, or cannot be read\n";
    return 1;
  }
  title(u"The tree, " + toText(object->Invoke(u"Count", InvokeKind::Get, {})) + u" nodes");
  printTree(*list);

  title(u"Values changed");
  changeValues(*list);

  title(u"Saved as " + files().fullPath(copy) + u", where");
  list->SaveAsINI(copy);  // says itself where it cannot
  const String saved = mFiles::GetFileContentsAsString(copy, ZEL_ErrorMode_None);
  if (saved.empty()) return 1;
  printDifferences(mFiles::GetFileContentsAsString(file, ZEL_ErrorMode_None), saved);
  return 0;
}

}  // namespace

int main(int count, char** values) {
  useUtf8Streams();
  const std::vector<String> arguments = programArguments(count, values);
  if (arguments.empty() || arguments.size() > 2) {
    std::cerr << "settings-client FILE [COPY]\n";
    return 1;
  }
  // The library logs failures and goes on; a program that wants to tell its user watches for them.
  bool failed = false;
  const ErrorWatch watch([&failed](const ErrorReport& report) {
    failed = true;
    std::cerr << toUtf8(report.source) << ": " << toUtf8(report.description) << '\n';
  });
  try {
    const String copy =
        arguments.size() == 2 ? arguments[1] : files().temporaryFolder() + u"\\settings-copy.ini";
    const int code = run(arguments[0], copy);
    return failed ? 1 : code;
  } catch (const Error& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
