#include "host/Docs.h"

#include <algorithm>
#include <set>

#include "host/Describe.h"
#include "platform/Files.h"

namespace zelUtilities::host {

namespace {

constexpr StringView enumerationsPage = u"enumerations.md";

String code(StringView text) { return u"`" + String(text) + u"`"; }
String link(StringView text, StringView target) {
  return u"[" + String(text) + u"](" + String(target) + u")";
}
String classLink(const ClassInfo& info) { return link(info.name(), info.name() + u".md"); }
String enumerationLink(const EnumInfo& info) {
  String anchor = info.name;
  for (char16_t& unit : anchor)
    if (unit >= u'A' && unit <= u'Z') unit = static_cast<char16_t>(unit + 32);
  return link(info.name, String(enumerationsPage) + u"#" + anchor);
}

// A help text within a line of a table.
String inTable(StringView text) {
  String escaped;
  for (const char16_t unit : text) {
    if (unit == u'|') escaped += u'\\';
    escaped += unit;
  }
  return escaped;
}

class PageWriter {
 public:
  explicit PageWriter(const ClassRegistry& registry) : registry_(registry) {}

  void line(StringView text = {}) { text_.append(text) += u'\n'; }
  void paragraph(StringView text) {
    if (text.empty()) return;
    line(text);
    line();
  }
  Page page(String name) {
    while (text_.ends_with(u"\n\n")) text_.pop_back();
    return {std::move(name), std::move(text_)};
  }

  void writeOverview() {
    paragraph(u"# zelUtilities");
    paragraph(
        u"Scripts and other automation clients create a class as `zelUtilities.<class>`. Global "
        u"operations need no object in C++ and on the command line (`zel call`); automation clients "
        u"create their class like any other.");
    paragraph(u"## Classes");
    line(u"| class | |");
    line(u"|---|---|");
    for (const ClassInfo* info : registry_.classes())
      line(u"| " + classLink(*info) + u" | " + inTable(info->help()) + u" |");
    line();
    writeOperations();
    if (!registry_.enumerations().empty())
      paragraph(u"The values of enumerations: " + link(u"enumerations", enumerationsPage) + u".");
  }

  void writeClass(const ClassInfo& info) {
    paragraph(u"# " + info.name());
    paragraph(info.help());
    paragraph(use(info));
    writeMembers(info, u"## Properties", true);
    writeMembers(info, info.isGlobal() ? u"## Operations" : u"## Methods", false);
    if (info.events().empty()) return;
    paragraph(u"## Events");
    for (const EventInfo& event : info.events())
      writeEntry(event.name, signature(event), event.help, event.parameters, {});
  }

  void writeEnumerations() {
    paragraph(u"# Enumerations");
    for (const EnumInfo* info : registry_.enumerations()) {
      paragraph(u"## " + info->name);
      line(u"| name | value |");
      line(u"|---|---|");
      for (const EnumInfo::Value& value : info->values)
        line(u"| " + code(value.name) + u" | " + decimalText(value.value) + u" |");
      line();
    }
  }

 private:
  void writeOperations() {
    std::vector<std::pair<StringView, const ClassInfo*>> operations;
    for (const ClassInfo* info : registry_.classes())
      if (info->isGlobal())
        for (const Member& member : info->members()) operations.emplace_back(member.name, info);
    if (operations.empty()) return;
    std::sort(operations.begin(), operations.end());
    paragraph(u"## Global operations");
    for (const auto& [name, info] : operations) line(u"- " + code(name) + u" of " + classLink(*info));
    line();
  }

  static String use(const ClassInfo& info) {
    const String created = u"`CreateObject(\"zelUtilities." + info.name() + u"\")`";
    if (info.isGlobal()) return u"Global operations; an automation client reaches them by " + created + u".";
    return info.isCreatable() ? u"Created by " + created + u"."
                              : String(u"Objects of this class come from other objects.");
  }

  void writeMembers(const ClassInfo& info, StringView title, bool properties) {
    bool isFirst = true;
    for (const Member& member : info.members()) {
      if (member.isProperty != properties) continue;
      if (std::exchange(isFirst, false)) paragraph(title);
      writeEntry(member.name, signature(member), member.help + remarks(member), member.parameters,
                 member.result);
    }
  }

  static String remarks(const Member& member) {
    String text;
    if (member.isProperty) text += member.put || member.putRef ? u" Read and write." : u" Read only.";
    if (member.id == Member::defaultId) text += u" The default member.";
    if (member.id == Member::enumeratorId) text += u" Used by For Each.";
    return text;
  }

  void writeEntry(StringView name, StringView declaration, StringView help,
                  const std::vector<Parameter>& parameters, const TypeInfo& result) {
    paragraph(u"### " + String(name));
    line(u"```vb");
    line(declaration);
    line(u"```");
    line();
    paragraph(help.substr(std::min(help.find_first_not_of(u' '), help.size())));
    paragraph(typesOf(parameters, result));
  }

  // The pages of what the declaration mentions, where there are such pages.
  String typesOf(const std::vector<Parameter>& parameters, const TypeInfo& result) const {
    std::set<String> links;
    const auto add = [&](const TypeInfo& type) {
      if (type.enumeration) links.insert(enumerationLink(*type.enumeration()));
      if (type.object && registry_.find(type.object()->name())) links.insert(classLink(*type.object()));
    };
    add(result);
    for (const Parameter& parameter : parameters) add(parameter.type);
    String text;
    for (const String& each : links) text += (text.empty() ? u"See " : u", ") + each;
    return text.empty() ? text : text + u".";
  }

  const ClassRegistry& registry_;
  String text_;
};

}  // namespace

std::vector<Page> referencePages(const ClassRegistry& registry) {
  std::vector<Page> pages;
  const auto add = [&](String name, const auto& write) {
    PageWriter writer(registry);
    write(writer);
    pages.push_back(writer.page(std::move(name)));
  };
  add(u"README.md", [](PageWriter& writer) { writer.writeOverview(); });
  for (const ClassInfo* info : registry.classes())
    add(info->name() + u".md", [info](PageWriter& writer) { writer.writeClass(*info); });
  if (!registry.enumerations().empty())
    add(String(enumerationsPage), [](PageWriter& writer) { writer.writeEnumerations(); });
  return pages;
}

void printDocs(const ClassRegistry& registry, Console& console) {
  for (const Page& page : referencePages(registry)) console.print(page.text);
}

void writeDocs(const ClassRegistry& registry, const String& folder, Console& console) {
  if (!files().folderExists(folder)) files().createFolder(folder);
  const std::vector<Page> pages = referencePages(registry);
  for (const Page& page : pages) files().replaceWhole(folder + u"\\" + page.name, toUtf8(page.text));
  console.print(decimalText(static_cast<long long>(pages.size())) + u" pages in " + folder);
}

}  // namespace zelUtilities::host
