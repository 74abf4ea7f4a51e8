// The same tree as XML elements of libxml2 with an index over them.
#pragma once

#if HAVE_LIBXML2
#include <libxml/tree.h>

#include <memory>
#include <string>

#include "PeerIndex.h"

namespace zelBenchmarks {

class Libxml2Tree {
 public:
  using Char = char;
  using View = std::string_view;
  static constexpr const char* name = "libxml2";

  Libxml2Tree() : Libxml2Tree(xmlNewDoc(text("1.0"))) {}
  ~Libxml2Tree() { xmlFreeDoc(document_); }

  void add(View parent, View key, View value, View data, View unit) {
    xmlNode* node = xmlNewDocNode(document_, nullptr, text("n"), nullptr);
    setText(node, "Key", key);
    setText(node, "Value", value);
    setText(node, "Data", data);
    setText(node, "Unit", unit);
    if (parent.empty()) {
      xmlDocSetRootElement(document_, node);
    } else {
      xmlAddChild(index_.findParent(parent), node);
    }
    index_.add(keyOf(node), node);
    index_.tellAdded(node);
  }
  std::size_t size() const { return index_.size(); }
  std::size_t dataLength(View key) const {
    const xmlAttr* found = xmlHasProp(index_.find(key), text("Data"));
    return std::char_traits<char>::length(content(found));
  }
  std::unique_ptr<Libxml2Tree> clone() const {
    std::unique_ptr<Libxml2Tree> copy(new Libxml2Tree(xmlCopyDoc(document_, 1)));
    forEach(xmlDocGetRootElement(copy->document_),
            [&](xmlNode* node) { copy->index_.add(keyOf(node), node); });
    return copy;
  }
  bool remove(View key) {
    xmlNode* node = index_.find(key);
    if (!node) return false;
    forEach(node, [this](xmlNode* leaving) { index_.remove(keyOf(leaving)); });
    xmlUnlinkNode(node);
    xmlFreeNode(node);
    return true;
  }
  bool removeFirstChild(View parent) {
    const xmlNode* first = index_.find(parent)->children;
    return first && remove(keyOf(first));
  }
  std::size_t added() const { return index_.added; }
  std::size_t removed() const { return index_.removed; }

 private:
  explicit Libxml2Tree(xmlDoc* document) : document_(document) {}

  static const xmlChar* text(const char* bytes) { return reinterpret_cast<const xmlChar*>(bytes); }
  static const char* content(const xmlAttr* attribute) {
    return reinterpret_cast<const char*>(attribute->children->content);
  }
  static void setText(xmlNode* node, const char* attribute, View value) {
    xmlNewProp(node, text(attribute), text(std::string(value).c_str()));
  }
  static View keyOf(const xmlNode* node) { return content(node->properties); }

  // The node and all below it.
  template <class Body>
  static void forEach(xmlNode* top, const Body& body) {
    xmlNode* node = top;
    while (node) {
      body(node);
      xmlNode* next = node->children;
      while (!next && node != top) {
        next = node->next;
        if (!next) node = node->parent;
      }
      node = next;
    }
  }

  xmlDoc* document_;
  PeerIndex<char, xmlNode*> index_;
};

}  // namespace zelBenchmarks
#endif
