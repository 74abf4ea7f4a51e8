#include "server/InterfaceDescription.h"

#include <algorithm>

#include "automation/Conversions.h"
#include "server/PublishedNameCheck.h"
#include "server/PublishedNames.h"

namespace zelUtilities {

namespace {

constexpr std::string_view introduction =
    "// The classes of zelUtilities as its type library publishes them.\n"
    "// Written by \"zel idl\" from the class descriptions; change those, then write it anew.\n"
    "import \"oaidl.idl\";\n";

std::string quoted(std::string_view text) {
  std::string literal = "\"";
  for (const char unit : text) {
    if (unit == '"' || unit == '\\') literal += '\\';
    literal += unit;
  }
  return literal + '"';
}

std::string uuidAttribute(const Uuid& uuid) { return "uuid(" + uuidText(uuid) + ")"; }
std::string helpAttribute(std::string_view help) { return "helpstring(" + quoted(help) + ")"; }

bool isWholeNumber(const Variant& value) {
  return value.kind() == VariantKind::Integer || value.kind() == VariantKind::Long ||
         value.kind() == VariantKind::Byte;
}

std::string enumerationDefault(const EnumInfo& info, std::int32_t value) {
  for (const EnumInfo::Value& candidate : info.values)
    if (candidate.value == value) return toUtf8(candidate.name);
  return std::to_string(value);
}

// A text that stands in a description as it is.
bool isPlain(StringView text) {
  return std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit >= u' ' && unit < 0x7F; });
}

std::string textDefault(const Variant& value) {
  return isPlain(value.text()) ? quoted(toUtf8(value.text())) : std::string();
}

// The compiler stores negative numbers in a variant wrongly.
std::string variantDefault(const Variant& value) {
  if (value.isString()) return textDefault(value);
  if (isWholeNumber(value) && toLong(value) >= 0) return std::to_string(toLong(value));
  return {};
}

std::string plainType(const TypeInfo& type, const ClassRegistry& registry) {
  switch (type.kind) {
    case VariantKind::Empty:
      return "void";
    case VariantKind::Integer:
      return "short";
    case VariantKind::Long:
      return type.enumeration ? toUtf8(type.enumeration()->name) : "long";
    case VariantKind::Single:
      return "float";
    case VariantKind::Double:
      return "double";
    case VariantKind::Currency:
      return "CURRENCY";
    case VariantKind::Date:
      return "DATE";
    case VariantKind::String:
      return "BSTR";
    case VariantKind::Boolean:
      return "VARIANT_BOOL";
    case VariantKind::Byte:
      return "unsigned char";
    case VariantKind::Error:
      return "SCODE";
    case VariantKind::Object:
      if (type.object && registry.find(type.object()->name()) == type.object())
        return callInterfaceName(*type.object()) + "*";
      return "IDispatch*";
    default:
      return "VARIANT";
  }
}

class Writer {
 public:
  explicit Writer(const ClassRegistry& registry) : registry_(registry) {}

  std::string write() {
    text_ = introduction;
    line("");
    line("[" + uuidAttribute(libraryUuid()) + ", version(" + publishedVersion() + "), " +
         helpAttribute(publishedLibraryHelp()) + "]");
    line("library " + publishedLibrary() + " {");
    line("  importlib(\"stdole2.tlb\");");
    for (const EnumInfo* info : registry_.enumerations()) writeEnumeration(*info);
    line("");
    for (const ClassInfo* info : registry_.classes())
      line("  dispinterface " + callInterfaceName(*info) + ";");
    for (const ClassInfo* info : registry_.classes()) writeClass(*info);
    line("};");
    return std::move(text_);
  }

 private:
  void line(std::string_view text) { text_.append(text) += '\n'; }

  void writeEnumeration(const EnumInfo& info) {
    const std::string name = toUtf8(info.name);
    line("");
    line("  typedef [" + uuidAttribute(enumerationUuid(info)) + "] enum " + name + " {");
    for (const EnumInfo::Value& value : info.values)
      line("    " + toUtf8(value.name) + " = " + std::to_string(value.value) +
           (&value == &info.values.back() ? "" : ","));
    line("  } " + name + ";");
  }

  void writeClass(const ClassInfo& info) {
    line("");
    line("  [" + uuidAttribute(callInterfaceUuid(info)) + ", " + helpAttribute(toUtf8(info.help())) + "]");
    line("  dispinterface " + callInterfaceName(info) + " {");
    line("    properties:");
    line("    methods:");
    for (const Member& member : info.members()) writeMember(member);
    line("  };");
    if (!info.events().empty()) writeEvents(info);
    writeCoclass(info);
  }

  void writeMember(const Member& member) {
    const std::string result = publishedType(member.result, registry_);
    const std::string name = toUtf8(member.name);
    const std::string help = publishedHelp(member.help, member.parameters);
    const std::string parameters = parametersText(member.parameters);
    if (member.id == Member::enumeratorId) {
      function(member.id, "propget, restricted", help, "IUnknown* " + name + "()");
      return;
    }
    function(member.id, member.isProperty ? "propget" : "", help,
             result + " " + name + "(" + parameters + ")");
    const std::string value = (parameters.empty() ? "" : parameters + ", ") + "[in] " + result + " rhs";
    if (member.put) function(member.id, "propput", help, "void " + name + "(" + value + ")");
    if (isPublishedByReference(member))
      function(member.id, "propputref", help, "void " + name + "(" + value + ")");
  }

  void writeEvents(const ClassInfo& info) {
    line("");
    line("  [" + uuidAttribute(eventInterfaceUuid(info)) + ", " +
         helpAttribute("Events of " + toUtf8(info.name()) + ".") + "]");
    line("  dispinterface " + eventInterfaceName(info) + " {");
    line("    properties:");
    line("    methods:");
    for (const EventInfo& event : info.events())
      function(event.id, "", publishedHelp(event.help, event.parameters),
               "void " + toUtf8(event.name) + "(" + parametersText(event.parameters) + ")");
    line("  };");
  }

  void writeCoclass(const ClassInfo& info) {
    std::string attributes = uuidAttribute(classUuid(info)) + ", " + helpAttribute(toUtf8(info.help()));
    if (info.isGlobal()) attributes += ", appobject";
    if (!isPublishedCreatable(info)) attributes += ", noncreatable";
    line("");
    line("  [" + attributes + "]");
    line("  coclass " + toUtf8(info.name()) + " {");
    line("    [default] dispinterface " + callInterfaceName(info) + ";");
    if (!info.events().empty()) line("    [default, source] dispinterface " + eventInterfaceName(info) + ";");
    line("  };");
  }

  void function(std::int32_t id, std::string_view kind, std::string_view help, std::string_view declaration) {
    std::string attributes = "id(" + std::to_string(id) + ")";
    if (!kind.empty()) attributes.append(", ").append(kind);
    line("    [" + attributes + ", " + helpAttribute(help) + "]");
    line("    " + std::string(declaration) + ";");
  }

  std::string parametersText(const std::vector<Parameter>& parameters) {
    std::string text;
    for (const Parameter& parameter : parameters) {
      if (!text.empty()) text += ", ";
      std::string attributes = parameter.type.byReference ? "in, out" : "in";
      if (parameter.optional) attributes += ", optional";
      const std::string value = publishedDefault(parameter);
      if (!value.empty()) attributes += ", defaultvalue(" + value + ")";
      text +=
          "[" + attributes + "] " + publishedType(parameter.type, registry_) + " " + toUtf8(parameter.name);
    }
    return text;
  }

  const ClassRegistry& registry_;
  std::string text_;
};

}  // namespace

std::string publishedType(const TypeInfo& type, const ClassRegistry& registry) {
  std::string text = plainType(type, registry);
  if (type.array) text = "SAFEARRAY(" + text + ")";
  return type.byReference ? text + "*" : text;
}

std::string publishedDefault(const Parameter& parameter) {
  if (!parameter.hasDefault || parameter.type.byReference || parameter.type.array) return {};
  const Variant& value = parameter.defaultValue;
  switch (parameter.type.kind) {
    case VariantKind::Byte:
    case VariantKind::Integer:
    case VariantKind::Long:
      if (parameter.type.enumeration) return enumerationDefault(*parameter.type.enumeration(), toLong(value));
      return std::to_string(toLong(value));
    case VariantKind::Boolean:
      return toBoolean(value) ? "-1" : "0";
    case VariantKind::String:
      return textDefault(Variant(toText(value)));
    case VariantKind::Variant:
      return variantDefault(value);
    default:
      return {};
  }
}

bool isPublishedByReference(const Member& property) {
  const VariantKind kind = property.result.kind;
  return property.putRef || (property.put && (kind == VariantKind::Variant || kind == VariantKind::Object));
}

std::string publishedHelp(const String& help, const std::vector<Parameter>& parameters) {
  std::string text = toUtf8(help);
  for (const Parameter& parameter : parameters) {
    if (!parameter.hasDefault || !publishedDefault(parameter).empty()) continue;
    const Variant& value = parameter.defaultValue;
    const std::string shown = value.isObject() ? "Nothing" : toUtf8(toText(value));
    text += " Default of " + toUtf8(parameter.name) + ": " + shown + ".";
  }
  return text;
}

std::string interfaceDescription(const ClassRegistry& registry) {
  checkPublishedNames(registry);
  return Writer(registry).write();
}

}  // namespace zelUtilities
