// zelCells: the cells of one node, in the order of the columns, each under its column's key.
#pragma once

#include "automation/ClassInfo.h"
#include "automation/Enumerator.h"
#include "datalist/zelCell.h"

namespace zelUtilities {

class zelCells final : public NodePart {
 public:
  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  // The cell under a column key (any letter case) or at a position from 1; nothing when there is none.
  Ref<zelCell> Item(const Variant& vKey) const;
  std::int32_t Count() const;
  // Cells in column order.
  Ref<Enumerator> NewEnum() const;
  // Nothing when there are no cells.
  Ref<zelCell> FirstItem() const;
  Ref<zelCell> LastItem() const;

  // For the library's own use: without counting, nothing when there is none.
  zelCell* find(StringView key) const;

 private:
  friend class zelNode;

  // The collection lies inside its node, as the cells do.
  explicit zelCells(const zelNode& node);
  ~zelCells() override = default;
  zelNode& owner() const;
};

}  // namespace zelUtilities
