#include "datalist/zelNodes.h"

#include "automation/Binder.h"
#include "datalist/KeyedObjects.h"
#include "datalist/NodeIndex.h"
#include "datalist/NodeWalk.h"
#include "foundation/Handled.h"

namespace zelUtilities {

namespace {

// A collection without a list's index looks at each node up to this many.
constexpr std::size_t fewNodes = 8;

}  // namespace

zelNodes::~zelNodes() { releaseAll(); }

void zelNodes::releaseAll() {
  Slots leaving;
  leaving.swap(nodes_);
  ownIndex_.reset();
  std::uint32_t slot = leaving.startSlot();
  while (zelNode* node = leaving.nextFrom(slot)) {
    if (node->siblings_ == this) node->siblings_ = nullptr;
    node->release();
  }
}

zelNode* zelNodes::find(StringView key) const {
  if (index_) {
    zelNode* found = index_->find(key);
    return found && found->siblings_ == this ? found : nullptr;
  }
  if (nodes_.size() > fewNodes && !ownIndex_) {
    ownIndex_ = std::make_unique<KeyIndex<zelNode>>();
    std::uint32_t slot = startSlot();
    while (zelNode* node = nextFrom(slot)) ownIndex_->insert(node, node->keyHash());
  }
  if (ownIndex_) return ownIndex_->find(key);
  std::uint32_t slot = startSlot();
  zelNode* node = nextFrom(slot);
  while (node && !equalFolded(node->Key(), key)) node = nextFrom(slot);
  return node;
}

zelNode* zelNodes::at(std::int32_t position) const {
  const bool inRange = position >= 1 && position <= Count();
  return inRange ? nodes_.at(static_cast<std::size_t>(position) - 1) : nullptr;
}

zelNode* zelNodes::item(const Variant& vKey) const {
  if (vKey.isString()) return find(vKey.text());
  const std::optional<std::int32_t> position = positionOf(vKey);
  return position ? at(*position) : nullptr;
}

void zelNodes::append(zelNode* node, const NodeIndex* index) {
  index_ = index;
  ownIndex_.reset();
  nodes_.append(node);
  node->retain();
  node->siblings_ = this;
  if (owner_) owner_->cleared_ = false;
}

bool zelNodes::Remove(StringView key) {
  zelNode* node = find(key);
  if (node) remove(*node);
  return node != nullptr;
}

void zelNodes::remove(zelNode& node) {
  node.DeReference();
  ownIndex_.reset();
  nodes_.remove(&node);
  node.release();
}

void zelNodes::Clear() {
  handled(u"zelNodes.Clear", [&] {
    std::uint32_t slot = startSlot();
    while (zelNode* node = nextFrom(slot)) node->DeReference();
    releaseAll();
  });
}

Ref<Enumerator> zelNodes::NewEnum() const {
  return make<NodeWalk<zelNodes>>(Ref<zelNodes>(const_cast<zelNodes*>(this)));
}

const ClassInfo& zelNodes::describeClass() {
  using T = zelNodes;
  static const ClassInfo info =
      describe<T>("zelNodes", "Nodes in order: the children of a node, or the root nodes of a list.")
          .item("Item", &T::Item, {"vKey"}, "The node under a key or at a position, or nothing.")
          .enumerator(&T::NewEnum)
          .property("Count", &T::Count, "The number of nodes.");
  return info;
}

}  // namespace zelUtilities
