// CellSettings: what a cell may have beside its value. Few cells have any, so they are made when
// something is first set.
#pragma once

#include "datalist/zelCell.h"
#include "datalist/zelNodeList.h"

namespace zelUtilities {

struct CellSettings {
  // Which node the cell names as its own: its owner, or what a client has set.
  enum class NamedNode : std::uint8_t { Owner, OwnerAlways, Other };

  Ref<zelNodeList> nodeList;
  Ref<zelNode> otherNode;
  NamedNode namedNode = NamedNode::Owner;
  bool isChecked = false;
  bool pickListAsUpperCase = false;
  bool sortPickList = true;
  ZEL_Utilities_CellBoolean editable = ZEL_CellBoolean_UseColumn;
  ZEL_Utilities_CellTypes cellType = ZEL_CellType_UseColumn;
  ZEL_Utilities_CellBoolean hasCheckbox = ZEL_CellBoolean_UseColumn;
  String toolTipText;
  String sortKey;
  Variant tag;
  Ref<zelUOMNodeListFilter> uomFilter;  // made when first asked for
  Ref<zelCellButtons> buttons;
};

}  // namespace zelUtilities
