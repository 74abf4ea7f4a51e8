#include "server/PublishedNameCheck.h"

#include <algorithm>
#include <map>
#include <string_view>

#include "automation/CaseFolding.h"
#include "automation/Error.h"
#include "server/PublishedNames.h"

namespace zelUtilities {

namespace {

constexpr std::u16string_view words[] = {
    u"FALSE",   u"NULL",       u"TRUE",      u"boolean", u"byte",          u"case",      u"char",
    u"coclass", u"const",      u"cpp_quote", u"default", u"dispinterface", u"double",    u"enum",
    u"extern",  u"float",      u"handle_t",  u"hyper",   u"import",        u"importlib", u"in",
    u"inline",  u"int",        u"interface", u"library", u"long",          u"methods",   u"module",
    u"out",     u"properties", u"register",  u"short",   u"signed",        u"small",     u"static",
    u"struct",  u"switch",     u"typedef",   u"union",   u"unsigned",      u"void",      u"wchar_t"};

[[noreturn]] void refuse(const String& what) { throw Error(ErrorNumber::InternalError, u"zel.idl", what); }

class Check {
 public:
  void name(const String& name) {
    if (std::find(std::begin(words), std::end(words), name) != std::end(words))
      refuse(u"\"" + name + u"\" is a word of the description language");
    text(name);
    const auto [known, isNew] = spellings_.emplace(foldCase(name), name);
    if (!isNew && known->second != name)
      refuse(u"\"" + known->second + u"\" and \"" + name + u"\" differ only in letter case");
  }

  void text(const String& text) {
    if (std::any_of(text.begin(), text.end(), [](char16_t unit) { return unit < u' ' || unit > u'~'; }))
      refuse(u"\"" + text + u"\" is more than plain ASCII");
  }

  void parameters(const std::vector<Parameter>& parameters) {
    for (const Parameter& parameter : parameters) name(parameter.name);
  }

 private:
  std::map<String, String> spellings_;
};

void checkClass(Check& check, const ClassInfo& info) {
  check.name(info.name());
  check.name(fromUtf8(callInterfaceName(info)));
  check.name(fromUtf8(eventInterfaceName(info)));
  check.text(info.help());
  for (const Member& member : info.members()) {
    check.name(member.name);
    check.text(member.help);
    check.parameters(member.parameters);
  }
  for (const EventInfo& event : info.events()) {
    check.name(event.name);
    check.text(event.help);
    check.parameters(event.parameters);
  }
}

}  // namespace

void checkPublishedNames(const ClassRegistry& registry) {
  Check check;
  for (const EnumInfo* info : registry.enumerations()) {
    check.name(info->name);
    for (const EnumInfo::Value& value : info->values) check.name(value.name);
  }
  for (const ClassInfo* info : registry.classes()) checkClass(check, *info);
}

}  // namespace zelUtilities
