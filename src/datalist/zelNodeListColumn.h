// zelNodeListColumn: one column of a node list: its identity, the kind of value of its cells, how
// they are formatted and checked, and the settings that a grid or tree reads.
//
//   Ref<zelNodeListColumn> width = list->CreateColumn(u"Width", u"", u"", ZEL_CellType_Double);
//   width->FormatString();                 // "#########0.00", derived from Width 12, Decimals 2
//   width->Validate(u"abc");               // ZEL_ColumnError_NotANumber
//
// A column holds no cell values. Property reads and writes do not fail and know no limits but
// those of their types.
#pragma once

#include "automation/ClassInfo.h"
#include "datalist/Enumerations.h"
#include "datalist/zelCellButtons.h"
#include "datalist/zelUOMNodeListFilter.h"

namespace zelUtilities {

class zelNodeList;

class zelNodeListColumn : public Object {
 public:
  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  zelNodeListColumn();
  ~zelNodeListColumn() override;

  // Identity within the column set; clients cannot change it.
  const String& Key() const { return key_; }
  // The caption; the key when none is set.
  const String& Name() const { return name_.empty() ? key_ : name_; }
  void setName(const String& value) { name_ = value; }
  // Longer text; the name when none is set.
  const String& Description() const { return description_.empty() ? Name() : description_; }
  void setDescription(const String& value) { description_ = value; }

  // Display widths in screen units: the width, what the grid made of it (always 0 here), the least,
  // and the greatest (0: none).
  std::int32_t ColumnWidth() const { return columnWidth_; }
  void setColumnWidth(std::int32_t value) { columnWidth_ = value; }
  std::int32_t ColumnActualWidth() const { return 0; }
  std::int32_t ColumnMinWidth() const { return columnMinWidth_; }
  void setColumnMinWidth(std::int32_t value) { columnMinWidth_ = value; }
  std::int32_t ColumnMaxWidth() const { return columnMaxWidth_; }
  void setColumnMaxWidth(std::int32_t value) { columnMaxWidth_ = value; }
  ZEL_Utilities_ColumnAlignments ColumnAlignment() const { return columnAlignment_; }
  void setColumnAlignment(ZEL_Utilities_ColumnAlignments value) { columnAlignment_ = value; }

  ZEL_Utilities_CellTypes CellType() const { return cellType_; }
  void setCellType(ZEL_Utilities_CellTypes value);
  // Characters: digits of a number, greatest length of a string.
  std::int16_t Width() const { return width_; }
  void setWidth(std::int16_t value);
  // Digits after the decimal point; 0 unless the type is Single or Double, whatever is stored.
  std::int16_t Decimals() const;
  void setDecimals(std::int16_t value);

  bool Selected() const { return selected_; }
  void setSelected(bool value) { selected_ = value; }
  bool Visible() const { return visible_; }
  void setVisible(bool value) { visible_ = value; }
  bool Editable() const { return editable_; }
  void setEditable(bool value) { editable_ = value; }
  bool HasCheckbox() const { return hasCheckbox_; }
  void setHasCheckbox(bool value) { hasCheckbox_ = value; }
  const Ref<zelCellButtons>& CellButtons() const { return cellButtons_; }
  void setCellButtons(const Ref<zelCellButtons>& value) { cellButtons_ = value; }

  // The format set by a client, else one derived from type, width and decimals; "" for types that
  // are neither numbers nor dates. A failure is logged under "zelNodeListColumn.FormatString Get".
  String FormatString() const;
  void setFormatString(const String& value) { formatString_ = value; }

  // The pick list or unit list of the column's cells; held.
  Ref<zelNodeList> NodeList() const;
  void setNodeList(const Ref<zelNodeList>& value);

  // The value that stands for a missing one. An object counts as its default member's value.
  const Variant& MissingValue() const { return missingValue_; }
  void setMissingValue(const Variant& value);
  // The client's data; objects are held.
  const Variant& Tag() const { return tag_; }
  void setTag(const Variant& value) { tag_ = value; }

  // Whether a value suits the column. Ranges are not checked: a Byte column accepts 300.
  ZEL_Utilities_ColumnErrors Validate(const Variant& vValue) const;
  // True for Byte, Short, Long, Single and Double.
  bool IsNumeric() const;

  bool PickListAsUpperCase() const { return pickListAsUpperCase_; }
  void setPickListAsUpperCase(bool value) { pickListAsUpperCase_ = value; }
  bool SortPickList() const { return sortPickList_; }
  void setSortPickList(bool value) { sortPickList_ = value; }
  bool UserSort() const { return userSort_; }
  void setUserSort(bool value) { userSort_ = value; }

  void SetUOMProperties(bool bSimple, bool bComposite, bool bFavorites, bool bCanCustom,
                        std::int32_t eNumeratorDomains, std::int32_t eDenominatorDomains);
  const Ref<zelUOMNodeListFilter>& UOMNodeListFilter() const { return uomFilter_; }

  // A column has no XML of its own: "" and False. ImportXML logs a failure under
  // "zelNodeListColumn.ImportXML".
  String ExportXML(const String& sMargin = {}) const;
  bool ImportXML(const String& sXML);
  bool ImportXMLNode(const Ref<Object>& oNode);

  // For the library's own use.

  // Only before the column is added to a set.
  void SetKey(StringView sKey) { key_ = sKey; }
  // A new column with what CopyFrom copies. Failures are logged under "zelNodeListColumn.Clone".
  Ref<zelNodeListColumn> Clone() const;
  // Widths, alignment, type, decimals, description, key, name, selection, visibility, tag; read
  // through the properties, so that fallbacks are stored. Logged under "zelNodeListColumn.CopyFrom".
  void CopyFrom(const zelNodeListColumn& oSource);
  // The value as the column's type; Empty where it does not convert, which is logged under
  // "zelNodeListColumn.ConvertValue", as is a string longer than Width, which comes back whole.
  Variant ConvertValue(const Variant& vValue) const;

 private:
  String deriveFormat() const;
  Variant converted(const Variant& vValue, VariantKind kind) const;

  String key_;
  String name_;
  String description_;
  ZEL_Utilities_CellTypes cellType_ = ZEL_CellType_Double;
  std::int16_t width_ = 10;
  std::int16_t decimals_ = 2;
  bool editable_ = false;
  bool selected_ = true;
  bool visible_ = true;
  bool hasCheckbox_ = false;
  bool pickListAsUpperCase_ = false;
  bool sortPickList_ = true;
  bool userSort_ = false;
  Variant tag_ = u"";
  std::int32_t columnWidth_ = 0;
  std::int32_t columnMinWidth_ = 1440;
  std::int32_t columnMaxWidth_ = 0;
  ZEL_Utilities_ColumnAlignments columnAlignment_ = ZEL_ColumnAlignment_Left;
  Ref<Object> nodeList_;
  String formatString_;
  mutable String derivedFormat_;  // follows type, width and decimals
  Variant missingValue_;
  Ref<zelUOMNodeListFilter> uomFilter_ = make<zelUOMNodeListFilter>();
  Ref<zelCellButtons> cellButtons_;
};

}  // namespace zelUtilities
