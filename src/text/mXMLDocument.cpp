#include "text/mXMLDocument.h"

#include <span>

#include "automation/Conversions.h"
#include "automation/LateProperty.h"
#include "automation/LeadingNumber.h"
#include "foundation/Handled.h"
#include "foundation/bas_Main.h"

namespace zelUtilities::mXML {

namespace {

constexpr StringView lineEnd = u"\r\n";

Object& required(const Ref<Object>& object) {
  if (!object) throw Error(ErrorNumber::ObjectNotSet);
  return *object;
}

// As a script's call does: what takes arguments may be a property.
Variant call(const Ref<Object>& object, StringView name, Variant argument) {
  return required(object).Invoke(name, InvokeKind::MethodOrGet, std::span(&argument, 1));
}

bool hasChildNodes(const Ref<Object>& node) {
  return toBoolean(required(node).Invoke(u"hasChildNodes", InvokeKind::Method, {}));
}

void setIfSupported(const Ref<Object>& document, StringView name, bool setting) {
  Variant value[] = {setting};
  try {
    required(document).Invoke(name, InvokeKind::Put, value);
  } catch (const Error&) {  // a parser without the setting loads as it does
  }
}

// Loads what the caller names and nothing that the text names.
bool loads(const Ref<Object>& document, StringView source, bool isFileName, bool preservesWhiteSpace) {
  setIfSupported(document, u"async", false);
  setIfSupported(document, u"resolveExternals", false);
  if (preservesWhiteSpace) setIfSupported(document, u"preserveWhiteSpace", true);
  return toBoolean(call(document, isFileName ? u"load" : u"loadXML", source));
}

// What a parser does not support counts as Empty.
Variant supported(const Ref<Object>& object, StringView name) {
  try {
    Variant value = property(required(object), name);
    return value.isNull() ? Variant() : value;
  } catch (const Error&) {
    return {};
  }
}

// A line of label, value and what follows; "" for an empty value.
String lineOf(StringView label, const Variant& value, StringView end) {
  const String text = toText(value);
  return text.empty() ? String() : String(label).append(text).append(end).append(lineEnd);
}

[[noreturn]] void raiseMissing(StringView what, StringView name) {
  throw Error(xmlError, u"zelUtilities.XMLFunctions", String(what).append(name));
}

Variant dateOrNull(StringView text) {
  const double days = toDate(text);
  return days == 0 ? Variant::null() : Variant::date(days);
}

Variant elementValue(StringView text, VariantKind kind) {
  switch (kind) {
    case VariantKind::Boolean:
      return toBoolean(text);
    case VariantKind::Date:
      return dateOrNull(text);
    case VariantKind::Double:
    case VariantKind::Single:
    case VariantKind::Integer:
    case VariantKind::Long:
      return leadingNumber(text);
    default:
      return text;
  }
}

// Empty, too, asks for a number here.
Variant attributeValue(StringView text, VariantKind kind) {
  switch (kind) {
    case VariantKind::String:
    case VariantKind::Error:
      return text;
    case VariantKind::Boolean:
    case VariantKind::Date:
      return elementValue(text, kind);
    default:
      return leadingNumber(text);
  }
}

Ref<Object> attributeOf(const Ref<Object>& node, StringView name) {
  const Ref<Object> attributes = objectProperty(required(node), u"attributes");
  return attributes ? objectIn(call(attributes, u"getNamedItem", name)) : nullptr;
}

}  // namespace

Ref<Object> LoadXMLDocument(StringView sXMLSource, bool bIsFileName, bool bRaiseError,
                            bool bPreserveWhiteSpace) {
  String reason;
  try {
    Ref<Object> document = CreateNamedObject(u"MSXML.DOMDocument", u"Missing Component");
    if (loads(document, sXMLSource, bIsFileName, bPreserveWhiteSpace)) return document;
    reason = XMLParseErrorText(document);
  } catch (...) {
    if (bRaiseError) raiseChained(u"mXML.LoadXMLDocument");
    return {};
  }
  if (bRaiseError) throw Error(xmlError, {}, reason);
  return {};
}

String XMLParseErrorText(const Ref<Object>& oDocument) {
  return chained(u"mXML.XMLParseErrorText", [&]() -> String {
    required(oDocument);
    const Ref<Object> error = objectIn(supported(oDocument, u"parseError"));
    if (!error) return {};
    String text = u"XML Error: " + toText(supported(error, u"reason"));
    text += lineOf(u"XML Source: \"", supported(error, u"srcText"), u"\"");
    text += lineOf(u"URL: \"", supported(error, u"url"), u"\"");
    const Variant line = supported(error, u"line");
    if (toLong(line) != 0) {
      text += u"Line number " + toText(line) + u", column number ";
      text += toText(supported(error, u"linepos")).append(u".").append(lineEnd);
    }
    return text.append(u"MSXML Error Code: ").append(toText(supported(error, u"errorCode"))).append(u".");
  });
}

Ref<Object> SearchForChild(StringView sKey, const Ref<Object>& oNode) {
  return chained(u"mXML.SearchForChild", [&] { return objectIn(call(oNode, u"selectSingleNode", sKey)); });
}

Variant ValueFromElement(StringView sElement, const Ref<Object>& oNode, const Variant& vDefault) {
  return chained(u"mXML.ValueFromElement", [&]() -> Variant {
    const Ref<Object> element = objectIn(call(oNode, u"selectSingleNode", sElement));
    if (!element && vDefault.isMissing()) raiseMissing(u"Missing Element: ", sElement);
    if (!element) return vDefault;
    if (!hasChildNodes(element)) return u"";
    const Ref<Object> child = objectProperty(required(element), u"firstChild");
    const String text = toText(property(required(child), hasChildNodes(child) ? u"xml" : u"text"));
    return elementValue(text, vDefault.kind());
  });
}

Variant ValueFromChildElement(StringView sParentElement, StringView sChildElement, const Ref<Object>& oNode,
                              const Variant& vDefault) {
  return chained(u"mXML.ValueFromChildElement", [&]() -> Variant {
    const Ref<Object> parent = SearchForChild(sParentElement, oNode);
    if (parent) return ValueFromElement(sChildElement, parent, vDefault);
    if (vDefault.isMissing()) raiseMissing(u"Missing Element: ", sParentElement);
    return vDefault;
  });
}

Variant ValueFromAttribute(StringView sAttrName, const Ref<Object>& oNode, const Variant& vDefault) {
  return chained(u"mXML.ValueFromAttribute", [&]() -> Variant {
    const Ref<Object> attribute = attributeOf(oNode, sAttrName);
    if (!attribute && vDefault.isMissing()) raiseMissing(u"Missing Attribute: ", sAttrName);
    if (!attribute) return vDefault;
    return attributeValue(toText(property(required(attribute), u"nodeValue")), vDefault.kind());
  });
}

String XMLParseErrorMessage(StringView sXML) {
  return chained(u"mXML.XMLParseErrorMessage", [sXML]() -> String {
    if (sXML.find(u"<Error") == StringView::npos) return {};
    const Ref<Object> document = LoadXMLDocument(sXML, false, false);
    if (!document) return {};
    const Ref<Object> errors = objectIn(call(document, u"selectNodes", u"//Error"));
    const std::int32_t count = toLong(property(required(errors), u"length"));
    if (count == 0) return {};
    // Each one's description takes the place of the one before, so only the last one's is of interest.
    const Ref<Object> last = objectIn(call(errors, u"item", count - 1));
    return u"Description:\t" + toText(ValueFromAttribute(u"Description", last, u""));
  });
}

}  // namespace zelUtilities::mXML
