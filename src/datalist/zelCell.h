// zelCell: the value of one node in one column, with settings of its own that fall back to the
// column where they are left at use-the-column.
//
//   node->Cells().Item(u"Data")->setValue(u"12");
//   cell->EffectiveCellType();        // the cell's own type, else the column's
//
// A cell lies inside its node and keeps it alive while somebody holds the cell. After its node has
// left the list, Key, Value and the cell's own settings stay readable; Column and Node are nothing.
// Reading what needs a column that is not there raises 91.
#pragma once

#include "automation/ClassInfo.h"
#include "datalist/Enumerations.h"
#include "datalist/NodePart.h"
#include "datalist/zelCellButtons.h"
#include "datalist/zelUOMNodeListFilter.h"

namespace zelUtilities {

class CellLayout;
class zelNode;
class zelNodeList;
class zelNodeListColumn;
struct CellSettings;

class zelCell final : public NodePart {
 public:
  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  // The key of the cell's column.
  const String& Key() const;
  // The owning node. Setting another one changes only what this property answers.
  Ref<zelNode> Node() const;
  void setNode(const Ref<zelNode>& value);
  Ref<zelNodeListColumn> Column() const;

  // Stored as it is: nothing is converted or checked.
  const Variant& Value() const { return value_; }
  void setValue(Variant value) { value_ = std::move(value); }
  // The value by the column's FormatString, or as text when that is empty. "" without a column, for a
  // missing value and for a zero date. A failure is logged under "zelCell.FormattedValue Get".
  String FormattedValue() const;

  // The cell's own pick list or unit list.
  Ref<zelNodeList> NodeList() const;
  void setNodeList(const Ref<zelNodeList>& value);
  // The cell's own list, else the column's; nothing unless the cell is a pick list or a unit.
  Ref<zelNodeList> EffectiveNodeList() const;

  const String& ToolTipText() const;
  void setToolTipText(const String& value);
  // What is stored; but a pick list left at use-the-column answers, where the cell has a list of its
  // own, whether the column is editable.
  ZEL_Utilities_CellBoolean Editable() const;
  void setEditable(ZEL_Utilities_CellBoolean value);
  ZEL_Utilities_CellTypes CellType() const;
  void setCellType(ZEL_Utilities_CellTypes value);
  // ZEL_CellType_UseColumn for a cell without a column.
  ZEL_Utilities_CellTypes EffectiveCellType() const;
  ZEL_Utilities_CellBoolean HasCheckbox() const;
  void setHasCheckbox(ZEL_Utilities_CellBoolean value);
  bool EffectiveHasCheckbox() const;
  Ref<zelCellButtons> CellButtons() const;
  void setCellButtons(const Ref<zelCellButtons>& value);
  Ref<zelCellButtons> EffectiveCellButtons() const;
  bool Checked() const;
  void setChecked(bool value);
  // The client's data; objects are held.
  const Variant& Tag() const;
  void setTag(const Variant& value);
  // Without fallback to the column: initially False and True.
  bool PickListAsUpperCase() const;
  void setPickListAsUpperCase(bool value);
  bool SortPickList() const;
  void setSortPickList(bool value);
  const String& SortKey() const;
  void setSortKey(const String& value);

  void SetUOMProperties(bool bSimple, bool bComposite, bool bFavorites, bool bCanCustom,
                        std::int32_t eNumeratorDomains, std::int32_t eDenominatorDomains);
  // Never nothing.
  Ref<zelUOMNodeListFilter> UOMNodeListFilter();
  // Of a pick list: the entry whose key or position is the value, or nothing.
  Ref<zelNode> SelectedNode() const;

  // For the library's own use.

  // Type, editability, list, tool tip and value; nothing else is copied.
  void copyFrom(const zelCell& source);

 private:
  friend class zelNode;

  // Cells are made and ended by their node.
  explicit zelCell(const zelNode& node);
  ~zelCell() override = default;

  zelNode& owner() const;
  std::uint32_t position() const;
  zelNodeListColumn* column() const;
  zelNodeListColumn& requiredColumn() const;
  ZEL_Utilities_CellBoolean storedEditable() const;
  // What is set, or the initial settings that all cells share.
  const CellSettings& settings() const;
  CellSettings& ownSettings();
  template <class T, class Setting>
  void change(T CellSettings::*setting, const Setting& value);

  Variant value_;
};

}  // namespace zelUtilities
