// The tree somebody would write by hand: a struct with a parent, children, a key and three texts,
// beside an index.
#pragma once

#include <algorithm>
#include <array>
#include <string>

#include "PeerIndex.h"

namespace zelBenchmarks {

class StructTree {
 public:
  using Char = char16_t;
  using View = std::u16string_view;
  static constexpr const char* name = "structs";

  ~StructTree() { end(root_); }

  void add(View parent, View key, View value, View data, View unit) {
    auto* node = new Node{parent.empty() ? nullptr : index_.findParent(parent), {}, String(key), {}};
    node->cells = {String(value), String(data), String(unit)};
    (node->parent ? node->parent->children : root_.children).push_back(node);
    index_.add(node->key, node);
    index_.tellAdded(node);
  }
  std::size_t size() const { return index_.size(); }
  std::size_t dataLength(View key) const { return index_.find(key)->cells[1].size(); }
  std::unique_ptr<StructTree> clone() const {
    auto copy = std::make_unique<StructTree>();
    std::vector<std::pair<const Node*, Node*>> open{{&root_, &copy->root_}};
    while (!open.empty()) {
      const auto [from, to] = open.back();
      open.pop_back();
      to->children.reserve(from->children.size());
      for (const Node* child : from->children) {
        auto* made = new Node{from == &root_ ? nullptr : to, {}, child->key, child->cells};
        to->children.push_back(made);
        copy->index_.add(made->key, made);
        if (!child->children.empty()) open.emplace_back(child, made);
      }
    }
    return copy;
  }
  bool remove(View key) {
    Node* node = index_.find(key);
    if (!node) return false;
    auto& siblings = node->parent ? node->parent->children : root_.children;
    siblings.erase(std::find(siblings.begin(), siblings.end(), node));
    end(*node, [this](const Node& leaving) { index_.remove(leaving.key); });
    delete node;
    return true;
  }
  bool removeFirstChild(View parent) {
    const Node* found = index_.find(parent);
    return !found->children.empty() && remove(found->children.front()->key);
  }
  std::size_t added() const { return index_.added; }
  std::size_t removed() const { return index_.removed; }

 private:
  using String = std::u16string;
  struct Node {
    Node* parent = nullptr;
    std::vector<Node*> children;
    String key;
    std::array<String, 3> cells;
  };

  // Ends all below the node, and tells of each and of the node itself.
  template <class Tell>
  static void end(Node& top, const Tell& tell) {
    tell(top);
    std::vector<Node*> open(std::move(top.children));
    while (!open.empty()) {
      Node* node = open.back();
      open.pop_back();
      open.insert(open.end(), node->children.begin(), node->children.end());
      tell(*node);
      delete node;
    }
  }
  static void end(Node& top) {
    end(top, [](const Node&) {});
  }

  Node root_;
  PeerIndex<char16_t, Node*> index_;
};

}  // namespace zelBenchmarks
