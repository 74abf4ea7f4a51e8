#include "datalist/zelCell.h"

#include "automation/Binder.h"
#include "automation/Comparison.h"
#include "automation/Format.h"
#include "datalist/CellSettings.h"
#include "datalist/zelNode.h"
#include "foundation/Handled.h"

namespace zelUtilities {

zelCell::zelCell(const zelNode& node) : NodePart(node) {}

zelNode& zelCell::owner() const { return static_cast<zelNode&>(node()); }

std::uint32_t zelCell::position() const { return owner().positionOf(*this); }

zelNodeListColumn* zelCell::column() const { return owner().layout().column(position()); }

zelNodeListColumn& zelCell::requiredColumn() const {
  zelNodeListColumn* found = column();
  return found ? *found : throw Error(ErrorNumber::ObjectNotSet);
}

const CellSettings& zelCell::settings() const {
  static const CellSettings initial;
  const CellSettings* own = owner().cellSettings(position());
  return own ? *own : initial;
}

CellSettings& zelCell::ownSettings() { return owner().makeCellSettings(position()); }

template <class T, class Setting>
void zelCell::change(T CellSettings::*setting, const Setting& value) {
  if (!(settings().*setting == value)) ownSettings().*setting = value;
}

const String& zelCell::Key() const { return owner().layout().key(position()); }

Ref<zelNode> zelCell::Node() const {
  const CellSettings& set = settings();
  switch (set.namedNode) {
    case CellSettings::NamedNode::Other:
      return set.otherNode;
    case CellSettings::NamedNode::OwnerAlways:
      return Ref<zelNode>(&owner());
    default:
      return owner().layout().isDetached() ? Ref<zelNode>() : Ref<zelNode>(&owner());
  }
}

void zelCell::setNode(const Ref<zelNode>& value) {
  CellSettings& set = ownSettings();
  // A counted reference to its own node would keep the node alive for ever.
  const bool isOwner = value.get() == &owner();
  set.namedNode = isOwner ? CellSettings::NamedNode::OwnerAlways : CellSettings::NamedNode::Other;
  set.otherNode = isOwner ? Ref<zelNode>() : value;
}

Ref<zelNodeListColumn> zelCell::Column() const { return Ref<zelNodeListColumn>(column()); }

String zelCell::FormattedValue() const {
  String text;
  handled(u"zelCell.FormattedValue Get", [&] {
    const zelNodeListColumn* used = column();
    if (!used || value_.isMissing()) return;
    if (EffectiveCellType() == ZEL_CellType_Date && equals(value_, std::int32_t{0})) return;
    const String pattern = used->FormatString();
    text = pattern.empty() ? toText(value_) : format(value_, pattern);
  });
  return text;
}

Ref<zelNodeList> zelCell::NodeList() const { return settings().nodeList; }

void zelCell::setNodeList(const Ref<zelNodeList>& value) { change(&CellSettings::nodeList, value); }

Ref<zelNodeList> zelCell::EffectiveNodeList() const {
  const ZEL_Utilities_CellTypes type = EffectiveCellType();
  if (type != ZEL_CellType_PickList && type != ZEL_CellType_UOM) return {};
  const Ref<zelNodeList>& own = settings().nodeList;
  return own ? own : requiredColumn().NodeList();
}

const String& zelCell::ToolTipText() const { return settings().toolTipText; }

void zelCell::setToolTipText(const String& value) { change(&CellSettings::toolTipText, value); }

ZEL_Utilities_CellBoolean zelCell::Editable() const {
  const CellSettings& set = settings();
  if (EffectiveCellType() != ZEL_CellType_PickList || set.editable != ZEL_CellBoolean_UseColumn ||
      !set.nodeList)
    return set.editable;
  return requiredColumn().Editable() ? ZEL_CellBoolean_True : ZEL_CellBoolean_False;
}

void zelCell::setEditable(ZEL_Utilities_CellBoolean value) { change(&CellSettings::editable, value); }

ZEL_Utilities_CellTypes zelCell::CellType() const { return settings().cellType; }

void zelCell::setCellType(ZEL_Utilities_CellTypes value) { change(&CellSettings::cellType, value); }

ZEL_Utilities_CellTypes zelCell::EffectiveCellType() const {
  const zelNodeListColumn* used = column();
  if (!used) return ZEL_CellType_UseColumn;
  const ZEL_Utilities_CellTypes own = CellType();
  return own != ZEL_CellType_UseColumn ? own : used->CellType();
}

ZEL_Utilities_CellBoolean zelCell::HasCheckbox() const { return settings().hasCheckbox; }

void zelCell::setHasCheckbox(ZEL_Utilities_CellBoolean value) { change(&CellSettings::hasCheckbox, value); }

bool zelCell::EffectiveHasCheckbox() const {
  const ZEL_Utilities_CellBoolean own = HasCheckbox();
  return own == ZEL_CellBoolean_UseColumn ? requiredColumn().HasCheckbox() : own == ZEL_CellBoolean_True;
}

Ref<zelCellButtons> zelCell::CellButtons() const { return settings().buttons; }

void zelCell::setCellButtons(const Ref<zelCellButtons>& value) { change(&CellSettings::buttons, value); }

Ref<zelCellButtons> zelCell::EffectiveCellButtons() const {
  const Ref<zelCellButtons>& own = settings().buttons;
  return own ? own : requiredColumn().CellButtons();
}

bool zelCell::Checked() const { return settings().isChecked; }

void zelCell::setChecked(bool value) { change(&CellSettings::isChecked, value); }

const Variant& zelCell::Tag() const { return settings().tag; }

void zelCell::setTag(const Variant& value) { ownSettings().tag = value; }

bool zelCell::PickListAsUpperCase() const { return settings().pickListAsUpperCase; }

void zelCell::setPickListAsUpperCase(bool value) { change(&CellSettings::pickListAsUpperCase, value); }

bool zelCell::SortPickList() const { return settings().sortPickList; }

void zelCell::setSortPickList(bool value) { change(&CellSettings::sortPickList, value); }

const String& zelCell::SortKey() const { return settings().sortKey; }

void zelCell::setSortKey(const String& value) { change(&CellSettings::sortKey, value); }

void zelCell::SetUOMProperties(bool bSimple, bool bComposite, bool bFavorites, bool bCanCustom,
                               std::int32_t eNumeratorDomains, std::int32_t eDenominatorDomains) {
  UOMNodeListFilter()->set(bSimple, bComposite, bFavorites, bCanCustom, eNumeratorDomains,
                           eDenominatorDomains);
}

Ref<zelUOMNodeListFilter> zelCell::UOMNodeListFilter() {
  Ref<zelUOMNodeListFilter>& filter = ownSettings().uomFilter;
  if (!filter) filter = make<zelUOMNodeListFilter>();
  return filter;
}

Ref<zelNode> zelCell::SelectedNode() const {
  if (EffectiveCellType() != ZEL_CellType_PickList) return {};
  const Ref<zelNodeList> entries = EffectiveNodeList();
  return entries ? entries->Item(value_) : throw Error(ErrorNumber::ObjectNotSet);
}

void zelCell::copyFrom(const zelCell& source) {
  if (source.owner().cellSettings(source.position()) || owner().cellSettings(position())) {
    setCellType(source.CellType());
    setEditable(source.Editable());
    setNodeList(source.NodeList());
    setToolTipText(source.ToolTipText());
  }
  value_ = source.value_;
}

const ClassInfo& zelCell::describeClass() {
  using T = zelCell;
  static const ClassInfo info =
      describe<T>("zelCell", "The value of one node in one column.")
          .property("Key", &T::Key, "The key of the cell's column.")
          .propertyRef("Node", &T::Node, &T::setNode, "The node that owns the cell.")
          .property("Column", &T::Column, "The cell's column.")
          .property("Value", &T::Value, &T::setValue, "The cell's value.")
          .property("FormattedValue", &T::FormattedValue, "The value as the column formats it.")
          .propertyRef("NodeList", &T::NodeList, &T::setNodeList, "The cell's own pick list or unit list.")
          .property("EffectiveNodeList", &T::EffectiveNodeList, "The cell's own list, else the column's.")
          .property("ToolTipText", &T::ToolTipText, &T::setToolTipText, "The cell's tool tip.")
          .property("Editable", &T::Editable, &T::setEditable, "Whether the cell can be edited.")
          .property("CellType", &T::CellType, &T::setCellType, "The cell's own kind of value.")
          .property("EffectiveCellType", &T::EffectiveCellType,
                    "The cell's own kind of value, else the column's.")
          .property("HasCheckbox", &T::HasCheckbox, &T::setHasCheckbox, "Whether the cell shows a check box.")
          .property("EffectiveHasCheckbox", &T::EffectiveHasCheckbox,
                    "The cell's own setting, else the column's.")
          .propertyRef("CellButtons", &T::CellButtons, &T::setCellButtons, "The cell's own buttons.")
          .property("EffectiveCellButtons", &T::EffectiveCellButtons,
                    "The cell's own buttons, else the column's.")
          .property("Checked", &T::Checked, &T::setChecked, "The state of the check box.")
          .property("Tag", &T::Tag, &T::setTag, "The client's data.")
          .property("PickListAsUpperCase", &T::PickListAsUpperCase, &T::setPickListAsUpperCase,
                    "Whether pick-list entries are shown in upper case.")
          .property("SortPickList", &T::SortPickList, &T::setSortPickList,
                    "Whether pick-list entries are sorted.")
          .property("SortKey", &T::SortKey, &T::setSortKey, "The client's sort key.")
          .method("SetUOMProperties", &T::SetUOMProperties,
                  {"bSimple", "bComposite", "bFavorites", "bCanCustom", "eNumeratorDomains",
                   "eDenominatorDomains"},
                  "Writes all settings of the unit-of-measure filter.")
          .property("UOMNodeListFilter", &T::UOMNodeListFilter, "The unit-of-measure filter.")
          .property("SelectedNode", &T::SelectedNode,
                    "The pick-list entry that the value names, or nothing.");
  return info;
}

}  // namespace zelUtilities
