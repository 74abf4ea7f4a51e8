#include "platform/linux/XmlDocumentTree.h"

#include <libxml/tree.h>

#include <new>

#include "automation/Error.h"

namespace zelUtilities {

namespace {

template <class T>
T* allocated(T* made) {
  return made ? made : throw std::bad_alloc();
}

void linkLast(xmlNode* parent, xmlNode* child) {
  child->parent = parent;
  child->prev = parent->last;
  child->next = nullptr;
  (parent->last ? parent->last->next : parent->children) = child;
  parent->last = child;
}

bool isAttributeUsed(const xmlAttr* attribute) {
  for (const xmlNode* text = attribute->children; text; text = text->next)
    if (text->_private) return true;
  return attribute->_private != nullptr;
}

bool isAnyUsed(xmlNode* top) {
  for (xmlNode* node = top; node; node = nextBelow(top, node)) {
    if (node->_private) return true;
    if (node->type != XML_ELEMENT_NODE) continue;
    for (const xmlAttr* attribute = node->properties; attribute; attribute = attribute->next)
      if (isAttributeUsed(attribute)) return true;
  }
  return false;
}

bool isAllowed(char32_t code) {
  return code >= 0x20 ? code != 0xFFFE && code != 0xFFFF : code == '\t' || code == '\n' || code == '\r';
}

}  // namespace

XmlTree::XmlTree() : document_(allocated(xmlNewDoc(BAD_CAST "1.0"))) {}

XmlTree::~XmlTree() {
  for (xmlNode* node : loose_) xmlFreeNode(node);
  xmlFreeDoc(document_);
}

xmlNode* XmlTree::own(xmlNode* node) {
  loose_.insert(allocated(node));
  return node;
}

void XmlTree::append(xmlNode* parent, xmlNode* child) {
  xmlUnlinkNode(child);
  loose_.erase(child);
  linkLast(parent, child);
  ++changes_;
}

void XmlTree::remove(xmlNode* node) {
  loose_.insert(node);
  xmlUnlinkNode(node);
  ++changes_;
}

void XmlTree::discard(xmlNode* node) {
  remove(node);
  endUnlessUsed(node);
}

void XmlTree::discardChildren(xmlNode* node) {
  while (xmlNode* child = firstChildOf(node)) discard(child);
}

void XmlTree::released(xmlNode* node) noexcept {
  node->_private = nullptr;
  // Below a loose node, what is still there ends with the document.
  if (loose_.contains(node)) endUnlessUsed(node);
}

void XmlTree::endUnlessUsed(xmlNode* root) noexcept {
  if (isAnyUsed(root)) return;
  loose_.erase(root);
  xmlFreeNode(root);
}

xmlNode* firstChildOf(const xmlNode* node) {
  switch (node->type) {
    case XML_ELEMENT_NODE:
    case XML_ATTRIBUTE_NODE:
    case XML_DOCUMENT_NODE:
      return node->children;
    default:
      return nullptr;
  }
}

xmlNode* nextBelow(const xmlNode* top, xmlNode* node) {
  if (xmlNode* child = firstChildOf(node)) return child;
  while (node != top && !node->next) node = node->parent;
  return node == top ? nullptr : node->next;
}

xmlNode* attributeOf(const xmlNode* element, const std::string& name) {
  if (element->type != XML_ELEMENT_NODE) return nullptr;
  for (xmlAttr* attribute = element->properties; attribute; attribute = attribute->next)
    if (viewOf(attribute->name) == name) return reinterpret_cast<xmlNode*>(attribute);
  return nullptr;
}

std::string xmlCharacters(StringView text) {
  const auto isSurrogate = [&](std::size_t i, char16_t first) {
    return i < text.size() && (text[i] & 0xFC00) == first;
  };
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isPair = isSurrogate(i, 0xD800) && isSurrogate(i + 1, 0xDC00);
    if (!isPair && ((text[i] & 0xF800) == 0xD800 || !isAllowed(text[i])))
      throw Error(ErrorNumber::InvalidProcedureCall, {},
                  u"The text holds a character that XML does not allow.");
    if (isPair) ++i;
  }
  return toUtf8(text);
}

std::string xmlName(StringView name) {
  std::string utf8 = xmlCharacters(name);
  if (xmlValidateQName(asXml(utf8), 0) != 0)
    throw Error(XmlErrorNumber::Failed, {},
                u"\"" + String(name) + u"\" is no name of an element or attribute.");
  return utf8;
}

}  // namespace zelUtilities
