// XmlNode: a node of an XmlDocument, as clients see it.
//
// A node has one object while anybody holds it. It keeps its document alive; out of the document (removed, or
// not yet appended) it stays usable. A missing node is nothing.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "automation/ClassInfo.h"
#include "automation/Object.h"
#include "automation/String.h"
#include "platform/linux/XmlDocumentTree.h"

namespace zelUtilities {

class XmlDocument;
class XmlNodeList;

class XmlNode : public Object {
 public:
  XmlNode(Ref<XmlDocument> document, std::shared_ptr<XmlTree> tree, _xmlNode* node);

  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  // Names as written, prefix included; "#text" and the like for nodes that have none.
  String nodeName() const;
  String baseName() const;
  String prefix() const;
  String namespaceURI() const;
  std::int32_t nodeType() const;  // 1 element, 2 attribute, 3 text, ... 9 document
  String nodeTypeString() const;

  // Null for elements and documents, which refuse one with E_FAIL.
  Variant nodeValue() const;
  void setNodeValue(const String& value);
  // The text, or what an element's attribute dt:dt makes of it: a number or a Boolean.
  Variant nodeTypedValue() const;
  // The text of the node and all below it. Without white space at the ends unless that is preserved.
  // Written, it takes the place of all children.
  String text() const;
  void setText(const String& text);
  String xml() const;

  Ref<XmlNode> parentNode() const;  // of an attribute: nothing
  Ref<XmlNode> firstChild() const;
  Ref<XmlNode> lastChild() const;
  Ref<XmlNode> nextSibling() const;
  Ref<XmlNode> previousSibling() const;
  Ref<XmlDocument> ownerDocument() const;
  bool hasChildNodes() const;
  Ref<XmlNodeList> childNodes();  // changes with the children
  Ref<XmlNodeList> attributes();  // nothing but for elements

  // Both return the child. Raise E_FAIL where the document would not be well-formed, and E_INVALIDARG for
  // nothing, a node of another document or a node that is no child.
  Ref<XmlNode> appendChild(const Ref<XmlNode>& newChild);
  Ref<XmlNode> removeChild(const Ref<XmlNode>& oldChild);

  // The first or all nodes, in document order, that a pattern selects from here (see XmlDocumentPattern.h).
  // Raise E_FAIL for what is no pattern, or selects no nodes but a value. From a removed attribute
  // and a document type there is nothing to select.
  Ref<XmlNode> selectSingleNode(const String& queryString) const;
  Ref<XmlNodeList> selectNodes(const String& queryString) const;

  // For the lists of nodes.
  _xmlNode* node() const { return node_; }
  const XmlTree& tree() const { return *tree_; }
  std::int32_t childCount() const;
  Ref<XmlNode> objectOf(_xmlNode* node) const;  // nothing for nothing

 protected:
  ~XmlNode() override;

  virtual Ref<XmlDocument> document() const;
  XmlTree& changeable() { return *tree_; }
  // Only a document changes what it stands for.
  void become(std::shared_ptr<XmlTree> tree, _xmlNode* node);

 private:
  std::vector<_xmlNode*> select(const String& pattern) const;
  void requireAcceptable(const XmlNode& child) const;
  // Counted once, kept up to date after.
  void childrenChanged(std::int32_t by);

  Ref<XmlDocument> document_;  // a document itself holds nothing here
  std::shared_ptr<XmlTree> tree_;
  _xmlNode* node_;
  mutable std::int32_t childCount_ = -1;
};

class XmlElement : public XmlNode {
 public:
  using XmlNode::XmlNode;
  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  Variant getAttribute(const String& name) const;  // Null where there is none
  void setAttribute(const String& name, const String& value);
  void removeAttribute(const String& name);
};

class XmlAttribute : public XmlNode {
 public:
  using XmlNode::XmlNode;
  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }
};

}  // namespace zelUtilities
