// Lists of nodes: an element's children and attributes, and what a pattern has selected.
#pragma once

#include <cstdint>
#include <vector>

#include "automation/Enumerator.h"
#include "platform/linux/XmlDocumentNode.h"

namespace zelUtilities {

class XmlNodeList : public Object {
 public:
  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  virtual std::int32_t length() const = 0;
  // From 0; nothing outside of the list.
  virtual Ref<XmlNode> item(std::int32_t index) const = 0;
  Ref<Enumerator> NewEnum();
};

class XmlSelectedNodes : public XmlNodeList {
 public:
  explicit XmlSelectedNodes(std::vector<Ref<XmlNode>> nodes) : nodes_(std::move(nodes)) {}
  std::int32_t length() const override { return static_cast<std::int32_t>(nodes_.size()); }
  Ref<XmlNode> item(std::int32_t index) const override;

 private:
  std::vector<Ref<XmlNode>> nodes_;
};

// A chain of nodes that may change. The last place asked for is remembered, so that a walk over the list
// takes constant time for each node.
class XmlNodeChain : public XmlNodeList {
 public:
  explicit XmlNodeChain(Ref<XmlNode> owner) : owner_(std::move(owner)) {}
  Ref<XmlNode> item(std::int32_t index) const override;

 protected:
  virtual _xmlNode* first() const = 0;
  const XmlNode& owner() const { return *owner_; }

 private:
  Ref<XmlNode> owner_;
  mutable _xmlNode* place_ = nullptr;
  mutable std::int32_t index_ = 0;
  mutable std::uint32_t changes_ = 0;  // of the tree, when the place was found
};

class XmlChildNodes : public XmlNodeChain {
 public:
  using XmlNodeChain::XmlNodeChain;
  std::int32_t length() const override { return owner().childCount(); }

 protected:
  _xmlNode* first() const override { return firstChildOf(owner().node()); }
};

class XmlAttributeMap : public XmlNodeChain {
 public:
  using XmlNodeChain::XmlNodeChain;
  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  std::int32_t length() const override;
  Ref<XmlNode> getNamedItem(const String& name) const;

 protected:
  _xmlNode* first() const override;
};

}  // namespace zelUtilities
