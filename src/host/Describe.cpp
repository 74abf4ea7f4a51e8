#include "host/Describe.h"

#include <algorithm>

#include "automation/Conversions.h"

namespace zelUtilities::host {

namespace {

String typeText(const TypeInfo& type) {
  String text(kindName(type.kind));
  if (type.enumeration) text = type.enumeration()->name;
  if (type.object) text = type.object()->name();
  return type.array ? text + u"()" : text;
}

String defaultText(const Parameter& parameter) {
  if (parameter.type.enumeration) {
    for (const EnumInfo::Value& value : parameter.type.enumeration()->values)
      if (value.value == toLong(parameter.defaultValue)) return value.name;
  }
  if (parameter.defaultValue.isString()) return u"\"" + toText(parameter.defaultValue) + u"\"";
  if (parameter.defaultValue.isObject()) return u"Nothing";
  return toText(parameter.defaultValue);
}

String parameterText(const Parameter& parameter) {
  String text = parameter.type.byReference ? u"ByRef " : u"";
  text += parameter.name + u" As " + typeText(parameter.type);
  if (parameter.hasDefault) text += u" = " + defaultText(parameter);
  return parameter.optional ? u"[" + text + u"]" : text;
}

String parametersText(const std::vector<Parameter>& parameters) {
  String text;
  for (const Parameter& parameter : parameters)
    text += (text.empty() ? u"" : u", ") + parameterText(parameter);
  return text;
}

StringView access(const Member& member) {
  if (!member.isProperty) return {};
  return member.put || member.putRef ? u"   (read and write)" : u"   (read)";
}

void printHelp(StringView help, Console& console) {
  if (!help.empty()) console.print(u"    " + String(help));
}

}  // namespace

String signature(const Member& member) {
  String text = member.name;
  if (!member.isProperty || !member.parameters.empty())
    text += u"(" + parametersText(member.parameters) + u")";
  if (member.result.kind != VariantKind::Empty) text += u" As " + typeText(member.result);
  return text;
}

String signature(const EventInfo& event) {
  return u"Event " + event.name + u"(" + parametersText(event.parameters) + u")";
}

void printClasses(const ClassRegistry& registry, Console& console) {
  std::size_t width = 0;
  for (const ClassInfo* info : registry.classes()) width = std::max(width, info->name().size());
  for (const ClassInfo* info : registry.classes()) {
    const String gap(info->help().empty() ? 0 : width + 2 - info->name().size(), u' ');
    console.print(info->name() + gap + info->help());
  }
}

void printClass(const ClassInfo& info, Console& console) {
  StringView use = u"Objects of this class come from other objects.";
  if (info.isCreatable()) use = u"Clients create objects of this class.";
  if (info.isGlobal()) use = u"Global operations: no object is needed.";
  console.print(info.name());
  printHelp(info.help(), console);
  printHelp(use, console);
  for (const Member& member : info.members()) {
    String line = signature(member) + String(access(member));
    if (member.id == Member::defaultId) line += u"   (default)";
    console.print({});
    console.print(line);
    printHelp(member.help, console);
  }
  for (const EventInfo& event : info.events()) {
    console.print({});
    console.print(signature(event));
    printHelp(event.help, console);
  }
}

void printEnumeration(const EnumInfo& info, Console& console) {
  console.print(info.name);
  for (const EnumInfo::Value& value : info.values)
    console.print(u"    " + value.name + u" = " + decimalText(value.value));
}

}  // namespace zelUtilities::host
