#include "platform/linux/XmlDocumentNode.h"

#include <libxml/hash.h>
#include <libxml/tree.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>

#include <charconv>

#include "automation/Error.h"
#include "platform/linux/XmlDocumentEncoding.h"
#include "platform/linux/XmlDocumentMembers.h"
#include "platform/linux/XmlDocumentPattern.h"
#include "platform/linux/XmlDocumentText.h"
#include "platform/linux/XmlDocumentWriter.h"

namespace zelUtilities {

namespace {

constexpr std::int32_t documentType = 10;
constexpr const char16_t* typeNames[] = {u"",
                                         u"element",
                                         u"attribute",
                                         u"text",
                                         u"cdatasection",
                                         u"entityreference",
                                         u"entity",
                                         u"processinginstruction",
                                         u"comment",
                                         u"document",
                                         u"documenttype"};

[[noreturn]] void fail(StringView sentence) { throw Error(XmlErrorNumber::Failed, {}, sentence); }
[[noreturn]] void refuseArgument(StringView sentence) {
  throw Error(XmlErrorNumber::InvalidArgument, {}, sentence);
}

// Nodes that hold their text themselves.
bool isLeaf(const xmlNode* node) {
  return node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE ||
         node->type == XML_COMMENT_NODE || node->type == XML_PI_NODE;
}

bool endsEarly(const xmlNode* node, const std::string& text) {
  if (node->type == XML_PI_NODE) return text.find("?>") != std::string::npos;
  return node->type == XML_COMMENT_NODE && (text.find("--") != std::string::npos || text.ends_with('-'));
}

bool isNamed(const xmlNode* node) {
  return node->type == XML_ELEMENT_NODE || node->type == XML_ATTRIBUTE_NODE || node->type == XML_PI_NODE ||
         node->type == XML_DTD_NODE;
}

std::string nameOf(const xmlNode* node) {
  switch (node->type) {
    case XML_TEXT_NODE:
      return "#text";
    case XML_CDATA_SECTION_NODE:
      return "#cdata-section";
    case XML_COMMENT_NODE:
      return "#comment";
    case XML_DOCUMENT_NODE:
      return "#document";
    default:
      return std::string(viewOf(node->name));
  }
}

// "" where the name has none.
std::string prefixOf(const xmlNode* node) {
  const std::string name =
      node->type == XML_ELEMENT_NODE || node->type == XML_ATTRIBUTE_NODE ? nameOf(node) : "";
  const std::size_t colon = name.find(':');
  return colon == std::string::npos ? "" : name.substr(0, colon);
}

std::string addressOf(const xmlNode* node) {
  const std::string prefix = prefixOf(node);
  const std::string name = nameOf(node);
  if (prefix == "xml") return "http://www.w3.org/XML/1998/namespace";
  if (prefix == "xmlns" || (node->type == XML_ATTRIBUTE_NODE && name == "xmlns"))
    return "http://www.w3.org/2000/xmlns/";
  if (node->type == XML_ATTRIBUTE_NODE && prefix.empty()) return {};
  const std::string declaration = prefix.empty() ? "xmlns" : "xmlns:" + prefix;
  for (; node; node = node->parent)
    if (xmlNode* attribute = attributeOf(node, declaration)) return textOf(attribute, false);
  return {};
}

template <class T>
Variant numberIn(const std::string& text, StringView type) {
  T number = 0;
  const char* const end = text.data() + text.size();
  if (std::from_chars(text.data(), end, number).ptr != end || text.empty())
    throw Error(ErrorNumber::TypeMismatch, {}, u"The text is no value of the type " + String(type) + u".");
  return number;
}

Variant typedValue(const std::string& text, StringView type) {
  const auto isOneOf = [&](std::initializer_list<StringView> types) {
    return std::find(types.begin(), types.end(), type) != types.end();
  };
  if (isOneOf({u"int", u"i4", u"i2", u"i1", u"ui2", u"ui1"})) return numberIn<std::int32_t>(text, type);
  if (isOneOf({u"r8", u"r4", u"float", u"number"})) return numberIn<double>(text, type);
  if (type == u"boolean") return text == "1" || text == "true";
  return fromUtf8(text);
}

// Some axes lead into the declarations of a document type, and to name spaces that are no nodes.
bool isHidden(const xmlNode* node) {
  if (node->type == XML_NAMESPACE_DECL) return true;
  if (!node->doc->intSubset) return false;
  for (const xmlNode* above = node->parent; above; above = above->parent)
    if (above->type == XML_DTD_NODE) return true;
  return false;
}

struct FreeContext {
  void operator()(xmlXPathContext* context) const { xmlXPathFreeContext(context); }
};
struct FreeResult {
  void operator()(xmlXPathObject* object) const { xmlXPathFreeObject(object); }
};

void ignoreError(void*, xmlError*) {}

// libxml2 itself writes to standard error when it meets a function that it does not know.
void failOnFunction(xmlXPathParserContext* context, int) { xmlXPathErr(context, XPATH_UNKNOWN_FUNC_ERROR); }
xmlXPathFunction functionNamed(void* context, const xmlChar* name, const xmlChar*) {
  const bool isKnown = xmlHashLookup(static_cast<xmlXPathContext*>(context)->funcHash, name) != nullptr;
  return isKnown ? nullptr : failOnFunction;
}

}  // namespace

XmlNode::XmlNode(Ref<XmlDocument> document, std::shared_ptr<XmlTree> tree, xmlNode* node)
    : document_(std::move(document)), tree_(std::move(tree)), node_(node) {
  node_->_private = this;
}

XmlNode::~XmlNode() { tree_->released(node_); }

void XmlNode::become(std::shared_ptr<XmlTree> tree, xmlNode* node) {
  tree_->released(node_);
  tree_ = std::move(tree);
  node_ = node;
  node_->_private = this;
  childCount_ = -1;
}

Ref<XmlDocument> XmlNode::document() const { return document_; }

Ref<XmlNode> XmlNode::objectOf(xmlNode* node) const {
  if (!node) return {};
  if (node->type == XML_DOCUMENT_NODE) return document();
  if (node->_private) return static_cast<XmlNode*>(node->_private);
  if (node->type == XML_ELEMENT_NODE) return make<XmlElement>(document(), tree_, node);
  if (node->type == XML_ATTRIBUTE_NODE) return make<XmlAttribute>(document(), tree_, node);
  return make<XmlNode>(document(), tree_, node);
}

String XmlNode::nodeName() const { return fromUtf8(nameOf(node_)); }

String XmlNode::baseName() const {
  if (!isNamed(node_)) return {};
  const std::string prefix = prefixOf(node_);
  return fromUtf8(nameOf(node_).substr(prefix.empty() ? 0 : prefix.size() + 1));
}

String XmlNode::prefix() const { return fromUtf8(prefixOf(node_)); }

String XmlNode::namespaceURI() const {
  const bool canHave = node_->type == XML_ELEMENT_NODE || node_->type == XML_ATTRIBUTE_NODE;
  return canHave ? fromUtf8(addressOf(node_)) : String();
}

std::int32_t XmlNode::nodeType() const { return node_->type == XML_DTD_NODE ? documentType : node_->type; }
String XmlNode::nodeTypeString() const { return typeNames[nodeType()]; }

Variant XmlNode::nodeValue() const {
  if (isLeaf(node_)) return fromUtf8(viewOf(node_->content));
  return node_->type == XML_ATTRIBUTE_NODE ? Variant(text()) : Variant::null();
}

void XmlNode::setNodeValue(const String& value) {
  if (!isLeaf(node_) && node_->type != XML_ATTRIBUTE_NODE)
    fail(u"This kind of node has no value of its own.");
  setText(value);
}

Variant XmlNode::nodeTypedValue() const {
  if (node_->type == XML_DOCUMENT_NODE) return Variant::null();
  xmlNode* type = attributeOf(node_, "dt:dt");
  return type ? typedValue(textOf(node_, true), fromUtf8(textOf(type, false))) : Variant(text());
}

String XmlNode::text() const { return fromUtf8(textOf(node_, !document()->preserveWhiteSpace())); }

void XmlNode::setText(const String& text) {
  const std::string utf8 = xmlCharacters(text);
  if (endsEarly(node_, utf8)) fail(u"The text would end the comment or the processing instruction.");
  if (isLeaf(node_)) return xmlNodeSetContent(node_, asXml(utf8));
  if (node_->type != XML_ELEMENT_NODE && node_->type != XML_ATTRIBUTE_NODE)
    fail(u"This kind of node has no text.");
  tree_->discardChildren(node_);
  childCount_ = -1;
  if (!utf8.empty()) tree_->append(node_, tree_->own(xmlNewDocText(node_->doc, asXml(utf8))));
}

// The text of a whole document has no bytes any more that could be in an encoding.
String XmlNode::xml() const {
  const std::string markup = markupOf(node_);
  return fromUtf8(node_->type == XML_DOCUMENT_NODE ? withoutEncoding(markup) : markup);
}

Ref<XmlNode> XmlNode::parentNode() const {
  return node_->type == XML_ATTRIBUTE_NODE ? Ref<XmlNode>() : objectOf(node_->parent);
}
Ref<XmlNode> XmlNode::firstChild() const { return objectOf(firstChildOf(node_)); }
Ref<XmlNode> XmlNode::lastChild() const {
  return firstChildOf(node_) ? objectOf(node_->last) : Ref<XmlNode>();
}
Ref<XmlNode> XmlNode::nextSibling() const {
  return node_->type == XML_ATTRIBUTE_NODE ? Ref<XmlNode>() : objectOf(node_->next);
}
Ref<XmlNode> XmlNode::previousSibling() const {
  return node_->type == XML_ATTRIBUTE_NODE ? Ref<XmlNode>() : objectOf(node_->prev);
}

Ref<XmlDocument> XmlNode::ownerDocument() const { return document_; }
bool XmlNode::hasChildNodes() const { return firstChildOf(node_) != nullptr; }
Ref<XmlNodeList> XmlNode::childNodes() { return make<XmlChildNodes>(Ref<XmlNode>(this)); }

Ref<XmlNodeList> XmlNode::attributes() {
  if (node_->type != XML_ELEMENT_NODE) return {};
  return make<XmlAttributeMap>(Ref<XmlNode>(this));
}

std::int32_t XmlNode::childCount() const {
  if (childCount_ < 0) {
    childCount_ = 0;
    for (const xmlNode* child = firstChildOf(node_); child; child = child->next) ++childCount_;
  }
  return childCount_;
}

void XmlNode::childrenChanged(std::int32_t by) {
  if (childCount_ >= 0) childCount_ += by;
}

void XmlNode::requireAcceptable(const XmlNode& child) const {
  const xmlElementType type = child.node_->type;
  if (child.tree_ != tree_) refuseArgument(u"The node belongs to another document.");
  const bool isMarkup = type == XML_COMMENT_NODE || type == XML_PI_NODE;
  const bool isText = type == XML_TEXT_NODE || type == XML_CDATA_SECTION_NODE;
  if (node_->type == XML_DOCUMENT_NODE) {
    if (type == XML_ELEMENT_NODE && xmlDocGetRootElement(tree_->document()))
      fail(u"Only one top level element is allowed in an XML document.");
    if (type == XML_ELEMENT_NODE || isMarkup) return;
  } else if (type == XML_PI_NODE && nameOf(child.node_) == "xml") {
    fail(u"The declaration stands at the head of a document.");
  } else if (node_->type == XML_ELEMENT_NODE) {
    // A node without children is nobody's parent.
    for (const xmlNode* above = node_; above && child.hasChildNodes(); above = above->parent)
      if (above == child.node_) fail(u"A node cannot be put below itself.");
    if ((type == XML_ELEMENT_NODE && &child != this) || isMarkup || isText) return;
  } else if (node_->type == XML_ATTRIBUTE_NODE && type == XML_TEXT_NODE) {
    return;
  }
  fail(u"This kind of node cannot be put here.");
}

Ref<XmlNode> XmlNode::appendChild(const Ref<XmlNode>& newChild) {
  if (!newChild) refuseArgument(u"There is no node to append.");
  requireAcceptable(*newChild);
  xmlNode* parent = newChild->node_->parent;
  if (parent && parent->_private) static_cast<XmlNode*>(parent->_private)->childrenChanged(-1);
  tree_->append(node_, newChild->node_);
  childrenChanged(+1);
  return newChild;
}

Ref<XmlNode> XmlNode::removeChild(const Ref<XmlNode>& oldChild) {
  const bool isChild =
      oldChild && oldChild->node_->parent == node_ && oldChild->node_->type != XML_ATTRIBUTE_NODE;
  if (!isChild) refuseArgument(u"The node is no child of this one.");
  tree_->remove(oldChild->node_);
  childrenChanged(-1);
  return oldChild;
}

std::vector<xmlNode*> XmlNode::select(const String& pattern) const {
  // From here libxml2 gets lost.
  if ((node_->type == XML_ATTRIBUTE_NODE && !node_->parent) || node_->type == XML_DTD_NODE) return {};
  const std::unique_ptr<xmlXPathContext, FreeContext> context(xmlXPathNewContext(tree_->document()));
  if (!context) throw std::bad_alloc();
  context->node = node_;
  context->error = ignoreError;
  xmlXPathRegisterFuncLookup(context.get(), functionNamed, context.get());
  const std::string expression = xpathOf(toUtf8(pattern));
  const std::unique_ptr<xmlXPathObject, FreeResult> result(xmlXPathEval(asXml(expression), context.get()));
  if (!result || result->type != XPATH_NODESET) fail(u"\"" + pattern + u"\" selects no nodes.");
  if (!result->nodesetval) return {};
  xmlNode** const first = result->nodesetval->nodeTab;
  std::vector<xmlNode*> nodes(first, first + result->nodesetval->nodeNr);
  std::erase_if(nodes, isHidden);
  return nodes;
}

Ref<XmlNode> XmlNode::selectSingleNode(const String& queryString) const {
  const std::vector<xmlNode*> nodes = select(queryString);
  return nodes.empty() ? Ref<XmlNode>() : objectOf(nodes.front());
}

Ref<XmlNodeList> XmlNode::selectNodes(const String& queryString) const {
  std::vector<Ref<XmlNode>> selected;
  for (xmlNode* node : select(queryString)) selected.push_back(objectOf(node));
  return make<XmlSelectedNodes>(std::move(selected));
}

Variant XmlElement::getAttribute(const String& name) const {
  xmlNode* attribute = attributeOf(node(), toUtf8(name));
  return attribute ? Variant(fromUtf8(textOf(attribute, false))) : Variant::null();
}

void XmlElement::setAttribute(const String& name, const String& value) {
  const std::string utf8 = xmlName(name);
  static_cast<void>(xmlCharacters(value));
  xmlNode* attribute = attributeOf(node(), utf8);
  if (!attribute) {
    // Without a value, which might be taken for markup.
    attribute = reinterpret_cast<xmlNode*>(xmlNewProp(node(), asXml(utf8), nullptr));
    if (!attribute) throw std::bad_alloc();
    changeable().noteChange();
  }
  objectOf(attribute)->setText(value);
}

void XmlElement::removeAttribute(const String& name) {
  if (xmlNode* attribute = attributeOf(node(), toUtf8(name))) changeable().discard(attribute);
}

const ClassInfo& XmlNode::describeClass() {
  static const ClassInfo info = describeNode<XmlNode>("IXMLDOMNode", "A node of a document.");
  return info;
}

const ClassInfo& XmlElement::describeClass() {
  using T = XmlElement;
  static const ClassInfo info =
      describeNode<T>("IXMLDOMElement", "An element.")
          .property("tagName", &T::nodeName, "The name as written.")
          .method("getAttribute", &T::getAttribute, {"name"}, "An attribute's text, or Null.")
          .method("setAttribute", &T::setAttribute, {"name", "value"}, "Adds or changes an attribute.")
          .method("removeAttribute", &T::removeAttribute, {"name"}, "Removes an attribute if it is there.");
  return info;
}

const ClassInfo& XmlAttribute::describeClass() {
  using T = XmlAttribute;
  static const ClassInfo info = describeNode<T>("IXMLDOMAttribute", "An attribute.")
                                    .property("name", &T::nodeName, "The name as written.")
                                    .property("value", &T::text, &T::setText, "The text.");
  return info;
}

}  // namespace zelUtilities
