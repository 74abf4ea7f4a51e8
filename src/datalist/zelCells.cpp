#include "datalist/zelCells.h"

#include "automation/Binder.h"
#include "datalist/KeyedObjects.h"
#include "datalist/zelNode.h"

namespace zelUtilities {

namespace {

class CellWalk : public Enumerator {
 public:
  explicit CellWalk(Ref<zelNode> node) : node_(std::move(node)) {}

  bool next(Variant& item) override {
    if (next_ == node_->cellCount()) return false;
    item = Variant(Ref<zelCell>(&node_->cell(next_++)));
    return true;
  }
  void reset() override { next_ = 0; }
  Ref<Enumerator> clone() const override {
    Ref<CellWalk> copy(new CellWalk(node_));
    copy->next_ = next_;
    return copy;
  }

 private:
  Ref<zelNode> node_;
  std::uint32_t next_ = 0;
};

}  // namespace

zelCells::zelCells(const zelNode& node) : NodePart(node) {}

zelNode& zelCells::owner() const { return static_cast<zelNode&>(node()); }

zelCell* zelCells::find(StringView key) const {
  const zelNode& node = owner();
  const std::uint32_t position = node.layout().find(key);
  return position < node.cellCount() ? &node.cell(position) : nullptr;
}

Ref<zelCell> zelCells::Item(const Variant& vKey) const {
  if (vKey.isString()) return Ref<zelCell>(find(vKey.text()));
  const std::optional<std::int32_t> position = positionOf(vKey);
  if (!position || *position < 1 || *position > Count()) return {};
  return Ref<zelCell>(&owner().cell(static_cast<std::uint32_t>(*position) - 1));
}

std::int32_t zelCells::Count() const { return static_cast<std::int32_t>(owner().cellCount()); }

Ref<Enumerator> zelCells::NewEnum() const { return make<CellWalk>(Ref<zelNode>(&owner())); }

Ref<zelCell> zelCells::FirstItem() const { return Item(std::int32_t{1}); }

Ref<zelCell> zelCells::LastItem() const { return Item(Count()); }

const ClassInfo& zelCells::describeClass() {
  using T = zelCells;
  static const ClassInfo info =
      describe<T>("zelCells", "The cells of a node, one for each column.")
          .item("Item", &T::Item, {"vKey"}, "The cell under a column key or at a position, or nothing.")
          .property("Count", &T::Count, "The number of cells.")
          .enumerator(&T::NewEnum)
          .property("FirstItem", &T::FirstItem, "The first cell, or nothing.")
          .property("LastItem", &T::LastItem, "The last cell, or nothing.");
  return info;
}

}  // namespace zelUtilities
