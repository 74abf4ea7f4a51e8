// zelNodes: nodes in insertion order, each under its key: the children of a node, or the root
// nodes of a list. Clients read it; nodes come and go through the node list.
#pragma once

#include <memory>

#include "automation/Enumerator.h"
#include "automation/KeyIndex.h"
#include "automation/SlotList.h"
#include "datalist/zelNode.h"

namespace zelUtilities {

class NodeIndex;

class zelNodes final : public Object {
 public:
  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  // Children of that node, or root nodes where there is none.
  explicit zelNodes(zelNode* owner) : owner_(owner) {}

  // The node under a key (any letter case) or at a position from 1; nothing when there is none.
  Ref<zelNode> Item(const Variant& vKey) const { return Ref<zelNode>(item(vKey)); }
  std::int32_t Count() const { return static_cast<std::int32_t>(nodes_.size()); }
  // Nodes added and removed meanwhile are respected.
  Ref<Enumerator> NewEnum() const;

  // For the library's own use.

  // Adds a node that stands in no collection and whose key is not here. The index, where one is
  // given, is that of the list that holds the node too; it answers look-ups from then on.
  void append(zelNode* node, const NodeIndex* index);
  // Dereferences and removes it; False when there is none.
  bool Remove(StringView key);
  void remove(zelNode& node);
  // Dereferences and removes all.
  void Clear();
  zelNode* item(const Variant& vKey) const;
  zelNode* find(StringView key) const;
  zelNode* at(std::int32_t position) const;
  // The owning node, while it lives.
  zelNode* owner() const { return owner_; }
  void ownerEnds() {
    owner_ = nullptr;
    index_ = nullptr;
  }
  // The list's index is gone, or the nodes have left it.
  void leaveIndex() { index_ = nullptr; }

  std::uint32_t startSlot() const { return nodes_.startSlot(); }
  zelNode* nextFrom(std::uint32_t& slot) const { return nodes_.nextFrom(slot); }
  using Slots = SlotList<zelNode, &zelNode::siblingSlot_>;
  Slots& slots() const { return nodes_; }

 private:
  ~zelNodes() override;
  void releaseAll();

  mutable Slots nodes_;  // counted
  zelNode* owner_;
  const NodeIndex* index_ = nullptr;
  mutable std::unique_ptr<KeyIndex<zelNode>> ownIndex_;  // of a larger collection without a list
};

}  // namespace zelUtilities
