// zelNodeListColumns: the columns of a node list in order, each under its key.
//
// Clients look columns up, walk them and switch them all at once; columns come and go through
// the node list only. A column set can also be created on its own, as a list of languages is.
#pragma once

#include "datalist/KeyedObjects.h"
#include "datalist/zelNodeListColumn.h"

namespace zelUtilities {

class zelNodeListColumns : public Object {
 public:
  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  zelNodeListColumns();
  ~zelNodeListColumns() override;

  // Always False: nothing locks a set.
  bool Locked() const { return false; }
  // The column under a key (any letter case) or at a position from 1; nothing when there is none.
  Ref<zelNodeListColumn> Item(const Variant& vKey) const { return columns_.item(vKey); }
  Ref<Enumerator> NewEnum() const { return columns_.newEnum(); }
  std::int32_t Count() const { return columns_.count(); }
  // Nothing when the set is empty.
  Ref<zelNodeListColumn> FirstItem() const { return columns_.at(1); }
  Ref<zelNodeListColumn> LastItem() const { return columns_.at(Count()); }
  void SetAllSelected(bool bSelected);
  void SetAllVisibility(bool bVisible);

  // "<Columns>" and "</Columns>" on lines of their own: columns write nothing of themselves.
  String ExportXML(const String& sMargin = {}) const;
  // Always False, and the set is empty afterwards unless the text is not well-formed: columns are
  // made by code. Failures are logged under "zelNodeListColumns.ImportXML" and ".ImportXMLNode".
  bool ImportXML(const String& sXML);
  bool ImportXMLNode(const Ref<Object>& oNode);

  // For the library's own use.

  // What a new column is made from; the defaults are those of zelNodeList.CreateColumn.
  struct Definition {
    String sKey;
    String sName;
    String sDescription;
    ZEL_Utilities_CellTypes eCellType = ZEL_CellType_Double;
    ZEL_Utilities_ColumnAlignments eColumnAlignment = ZEL_ColumnAlignment_Left;
    std::int32_t lColumnWidth = 0;
    std::int32_t lColumnMinWidth = 1440;
    std::int32_t lColumnMaxWidth = 0;
    std::int16_t lWidth = 0;  // 0: width and decimals follow from the type
    std::int16_t lDecimals = 0;
    bool bVisible = true;
    bool bSelected = true;
    bool bEditable = false;
    Ref<zelNodeList> oNodeList;
    Variant vTag = Variant::missing();
  };

  // Makes and adds a column; nothing when the key is taken, the width does not exceed the decimals
  // (error 2) or the tag is an object. Failures are logged under "zelNodeListColumns.Create".
  Ref<zelNodeListColumn> Create(const Definition& definition);
  // Adds it under its key; False when the key is taken.
  bool Add(const Ref<zelNodeListColumn>& oColumn);
  bool Remove(const Variant& vKey) {
    ++revision_;
    return columns_.remove(vKey);
  }
  void Clear() {
    ++revision_;
    columns_.clear();
  }
  // Another number after every change of what the set holds.
  std::uint32_t revision() const { return revision_; }
  // Adds copies of the source's columns, but for those whose key is taken.
  void CopyFrom(const zelNodeListColumns& oSource);
  // New sets of clones.
  Ref<zelNodeListColumns> CloneSelected(bool bSelected) const;
  Ref<zelNodeListColumns> CloneVisible(bool bVisible) const;
  Ref<zelNodeListColumns> CloneAll() const;
  bool AddClone(const zelNodeListColumn& oColumn) { return Add(oColumn.Clone()); }

  template <class Body>
  void forEach(const Body& body) const {
    columns_.forEach(body);
  }

 private:
  KeyedObjects<zelNodeListColumn> columns_;
  std::uint32_t revision_ = 0;
};

}  // namespace zelUtilities
