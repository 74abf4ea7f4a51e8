// The same tree as XML elements of pugixml with an index over them.
#pragma once

#if HAVE_PUGIXML
#include <memory>
#include <pugixml.hpp>
#include <string>

#include "PeerIndex.h"

namespace zelBenchmarks {

class PugixmlTree {
 public:
  using Char = char;
  using View = std::string_view;
  static constexpr const char* name = "pugixml";

  void add(View parent, View key, View value, View data, View unit) {
    pugi::xml_node above = parent.empty() ? pugi::xml_node(document_) : index_.findParent(parent);
    pugi::xml_node node = above.append_child("n");
    setText(node.append_attribute("Key"), key);
    setText(node.append_attribute("Value"), value);
    setText(node.append_attribute("Data"), data);
    setText(node.append_attribute("Unit"), unit);
    index_.add(keyOf(node), node);
    index_.tellAdded(node);
  }
  std::size_t size() const { return index_.size(); }
  std::size_t dataLength(View key) const {
    return std::char_traits<char>::length(index_.find(key).attribute("Data").value());
  }
  std::unique_ptr<PugixmlTree> clone() const {
    auto copy = std::make_unique<PugixmlTree>();
    copy->document_.reset(document_);
    forEach(copy->document_.first_child(), [&](pugi::xml_node node) { copy->index_.add(keyOf(node), node); });
    return copy;
  }
  bool remove(View key) {
    const pugi::xml_node node = index_.find(key);
    if (!node) return false;
    forEach(node, [this](pugi::xml_node leaving) { index_.remove(keyOf(leaving)); });
    node.parent().remove_child(node);
    return true;
  }
  bool removeFirstChild(View parent) {
    const pugi::xml_node first = index_.find(parent).first_child();
    return first && remove(keyOf(first));
  }
  std::size_t added() const { return index_.added; }
  std::size_t removed() const { return index_.removed; }

 private:
  static void setText(pugi::xml_attribute attribute, View text) {
    attribute.set_value(std::string(text).c_str());  // takes texts with a NUL only
  }
  static View keyOf(pugi::xml_node node) { return node.first_attribute().value(); }

  // The node and all below it.
  template <class Body>
  static void forEach(pugi::xml_node top, const Body& body) {
    pugi::xml_node node = top;
    while (node) {
      body(node);
      pugi::xml_node next = node.first_child();
      while (!next && node != top) {
        next = node.next_sibling();
        if (!next) node = node.parent();
      }
      node = next;
    }
  }

  pugi::xml_document document_;
  PeerIndex<char, pugi::xml_node> index_;
};

}  // namespace zelBenchmarks
#endif
