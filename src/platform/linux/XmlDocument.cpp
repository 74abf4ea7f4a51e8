#include "platform/linux/XmlDocument.h"

#include <libxml/parser.h>

#include "automation/Error.h"
#include "platform/Files.h"
#include "platform/Objects.h"
#include "platform/linux/XmlDocumentEncoding.h"
#include "platform/linux/XmlDocumentMembers.h"
#include "platform/linux/XmlDocumentWriter.h"

namespace zelUtilities {

namespace {

constexpr std::int32_t objectNotFound = static_cast<std::int32_t>(0x800C0006);

xmlNode* topOf(const XmlTree& tree) { return reinterpret_cast<xmlNode*>(tree.document()); }

bool isMissing(const Error& error) {
  return error.number() == ErrorNumber::BadFileName || error.number() == ErrorNumber::FileNotFound ||
         error.number() == ErrorNumber::PathNotFound;
}

DecodedXml readDocument(const String& path) {
  try {
    return decodeXml(files().readWhole(path));
  } catch (const Error& error) {
    if (isMissing(error))
      return {{}, XmlFault::of(objectNotFound, u"The system cannot locate the object specified.")};
    return {{}, XmlFault::of(XmlErrorNumber::Failed, error.description())};
  }
}

}  // namespace

XmlDocument::XmlDocument() : XmlDocument(std::make_shared<XmlTree>()) {}

XmlDocument::XmlDocument(const std::shared_ptr<XmlTree>& tree) : XmlNode(nullptr, tree, topOf(*tree)) {}

// The object counts its references itself, so that asking for one changes nothing.
Ref<XmlDocument> XmlDocument::document() const { return const_cast<XmlDocument*>(this); }

bool XmlDocument::take(ParsedXml parsed) {
  const bool isRead = parsed.tree != nullptr;
  const std::shared_ptr<XmlTree> tree = isRead ? std::move(parsed.tree) : std::make_shared<XmlTree>();
  fault_ = std::move(parsed.fault);
  become(tree, topOf(*tree));
  return isRead;
}

bool XmlDocument::load(const String& xmlSource) {
  source_ = xmlSource;
  DecodedXml decoded = readDocument(xmlSource);
  if (decoded.fault.code != 0) return take({nullptr, std::move(decoded.fault)});
  return take(parseXml(std::move(decoded.utf8), preserveWhiteSpace_));
}

bool XmlDocument::loadXML(const String& bstrXML) {
  source_.clear();
  return take(parseXml(StringView(bstrXML), preserveWhiteSpace_));
}

void XmlDocument::save(const String& destination) {
  files().replaceWhole(destination, encodedMarkupOf(node()));
}

Ref<XmlParseError> XmlDocument::parseError() const { return make<XmlParseError>(fault_, source_); }

Ref<XmlNode> XmlDocument::documentElement() const {
  return objectOf(xmlDocGetRootElement(tree().document()));
}

Ref<XmlNode> XmlDocument::createElement(const String& tagName) {
  const std::string name = xmlName(tagName);
  return objectOf(changeable().own(xmlNewDocNode(tree().document(), nullptr, asXml(name), nullptr)));
}

Ref<XmlNode> XmlDocument::createTextNode(const String& data) {
  const std::string text = xmlCharacters(data);
  return objectOf(changeable().own(xmlNewDocText(tree().document(), asXml(text))));
}

const ClassInfo& XmlDocument::describeClass() {
  using T = XmlDocument;
  static const ClassInfo info =
      describeNode<T>("DOMDocument", "An XML document.")
          .creatable()
          .method("load", &T::load, {"xmlSource"}, "Reads a file; False where it is none.")
          .method("loadXML", &T::loadXML, {"bstrXML"}, "Reads a text; False where it is none.")
          .method("save", &T::save, {"destination"}, "Writes a file.")
          .property("parseError", &T::parseError, "Why the last loading failed.")
          .property("documentElement", &T::documentElement, "The top level element, or nothing.")
          .method("createElement", &T::createElement, {"tagName"}, "A new element.")
          .method("createTextNode", &T::createTextNode, {"data"}, "A new text.")
          .property("async", &T::async, &T::setAsync, "Loading is always done on return.")
          .property("preserveWhiteSpace", &T::preserveWhiteSpace, &T::setPreserveWhiteSpace,
                    "Whether texts of nothing but white space are kept.")
          .property("validateOnParse", &T::validateOnParse, &T::setValidateOnParse, "Without effect.")
          .property("resolveExternals", &T::resolveExternals, &T::setResolveExternals, "Without effect.");
  return info;
}

const ClassInfo& XmlParseError::describeClass() {
  using T = XmlParseError;
  static const ClassInfo info = describe<T>("IXMLDOMParseError", "Why a document was not read.")
                                    .property("errorCode", &T::errorCode, "0 where it was read.")
                                    .property("reason", &T::reason, "A sentence and a line end.")
                                    .property("srcText", &T::srcText, "The line of the document.")
                                    .property("url", &T::url, "The file.")
                                    .property("line", &T::line, "The line's number.")
                                    .property("linepos", &T::linepos, "The position in the line.")
                                    .property("filepos", &T::filepos, "The position in the document.");
  return info;
}

void registerXmlDocument() {
  xmlInitParser();  // before several threads may parse
  const ObjectFactory factory = [] { return Ref<Object>(make<XmlDocument>()); };
  for (const char16_t* name :
       {u"MSXML.DOMDocument", u"Microsoft.XMLDOM", u"MSXML2.DOMDocument", u"MSXML2.DOMDocument.3.0"})
    registerStandIn(name, factory);
}

}  // namespace zelUtilities
