#include "platform/linux/XmlDocumentLists.h"

#include <libxml/tree.h>

#include "automation/Binder.h"

namespace zelUtilities {

namespace {

class XmlListWalk : public Enumerator {
 public:
  explicit XmlListWalk(Ref<XmlNodeList> list, std::int32_t next = 0) : list_(std::move(list)), next_(next) {}

  bool next(Variant& item) override {
    const Ref<XmlNode> node = list_->item(next_);
    if (!node) return false;
    ++next_;
    item = node;
    return true;
  }
  void reset() override { next_ = 0; }
  Ref<Enumerator> clone() const override { return make<XmlListWalk>(list_, next_); }

 private:
  Ref<XmlNodeList> list_;
  std::int32_t next_;
};

template <class T>
ClassBuilder<T> describeList(const char* name, const char* help) {
  ClassBuilder<T> members(name, help);
  members.item("item", &T::item, {"index"}, "The node at a position from 0, or nothing.")
      .property("length", &T::length, "The number of nodes.")
      .enumerator(&T::NewEnum);
  return members;
}

}  // namespace

Ref<Enumerator> XmlNodeList::NewEnum() { return make<XmlListWalk>(Ref<XmlNodeList>(this)); }

Ref<XmlNode> XmlSelectedNodes::item(std::int32_t index) const {
  return index >= 0 && index < length() ? nodes_[static_cast<std::size_t>(index)] : Ref<XmlNode>();
}

Ref<XmlNode> XmlNodeChain::item(std::int32_t index) const {
  if (index < 0) return {};
  if (!place_ || changes_ != owner().tree().changes() || index < index_ - index) {
    place_ = first();
    index_ = 0;
    changes_ = owner().tree().changes();
  }
  for (; place_ && index_ < index; ++index_) place_ = place_->next;
  for (; place_ && index_ > index; --index_) place_ = place_->prev;
  return owner().objectOf(place_);
}

std::int32_t XmlAttributeMap::length() const {
  std::int32_t count = 0;
  for (const xmlNode* attribute = first(); attribute; attribute = attribute->next) ++count;
  return count;
}

xmlNode* XmlAttributeMap::first() const { return reinterpret_cast<xmlNode*>(owner().node()->properties); }

Ref<XmlNode> XmlAttributeMap::getNamedItem(const String& name) const {
  return owner().objectOf(attributeOf(owner().node(), toUtf8(name)));
}

const ClassInfo& XmlNodeList::describeClass() {
  static const ClassInfo info = describeList<XmlNodeList>("IXMLDOMNodeList", "Nodes in order.");
  return info;
}

const ClassInfo& XmlAttributeMap::describeClass() {
  static const ClassInfo info =
      describeList<XmlAttributeMap>("IXMLDOMNamedNodeMap", "An element's attributes.")
          .method("getNamedItem", &XmlAttributeMap::getNamedItem, {"name"}, "The attribute, or nothing.");
  return info;
}

}  // namespace zelUtilities
