// NodeIndex: every node of a list, in creation order and by key.
#pragma once

#include "automation/KeyIndex.h"
#include "automation/SlotList.h"
#include "datalist/zelNode.h"

namespace zelUtilities {

class NodeIndex {
 public:
  using Slots = SlotList<zelNode, &zelNode::indexSlot_>;

  NodeIndex() = default;
  ~NodeIndex() { releaseAll(); }
  NodeIndex(const NodeIndex&) = delete;
  NodeIndex& operator=(const NodeIndex&) = delete;

  zelNode* find(StringView key) const { return keys_.find(key); }
  zelNode* find(StringView key, std::uint32_t hash) const { return keys_.find(key, hash); }
  // Position from 1; nothing when out of range.
  zelNode* at(std::int32_t position) const {
    const bool inRange = position >= 1 && static_cast<std::size_t>(position) <= nodes_.size();
    return inRange ? nodes_.at(static_cast<std::size_t>(position) - 1) : nullptr;
  }
  std::size_t size() const { return nodes_.size(); }
  Slots& slots() const { return nodes_; }

  // Makes room for so many nodes in all.
  void reserve(std::size_t count) {
    keys_.reserve(count);
    nodes_.reserve(count);
  }
  // Tells that the key of that folded hash will be looked up soon.
  [[gnu::always_inline]] void prefetch(std::uint32_t hash) const { keys_.prefetch(hash); }

  // The key, whose folded hash is given, must not be present.
  void add(zelNode* node, std::uint32_t hash) {
    keys_.insert(node, hash);
    nodes_.append(node);
    node->retain();
  }
  // The node, whose key's folded hash is given, must be here.
  void remove(zelNode* node, std::uint32_t hash) {
    keys_.erase(node, hash);
    nodes_.remove(node);
    node->release();
  }
  // Dereferences and removes every node.
  void clear() {
    std::uint32_t slot = nodes_.startSlot();
    while (zelNode* node = nodes_.nextFrom(slot)) node->DeReference();
    releaseAll();
  }

 private:
  void releaseAll() {
    Slots leaving;
    leaving.swap(nodes_);
    keys_.clear();
    std::uint32_t slot = leaving.startSlot();
    while (zelNode* node = leaving.nextFrom(slot)) node->release();
  }

  mutable Slots nodes_;  // counted
  KeyIndex<zelNode> keys_;
};

}  // namespace zelUtilities
