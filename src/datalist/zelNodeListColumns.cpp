#include "datalist/zelNodeListColumns.h"

#include "automation/Binder.h"
#include "automation/LateProperty.h"
#include "datalist/zelNodeList.h"
#include "foundation/Handled.h"
#include "foundation/mLog.h"
#include "text/mXMLDocument.h"

namespace zelUtilities {

namespace {

constexpr StringView className = u"zelNodeListColumns";
constexpr StringView lineEnd = u"\r\n";
constexpr std::int32_t objectRequired = 424;

struct Measures {
  std::int16_t width;
  std::optional<std::int16_t> decimals;  // nothing: stays as the column has it
};

Measures measuresOf(ZEL_Utilities_CellTypes type, std::int16_t wantedDecimals) {
  switch (type) {
    case ZEL_CellType_Byte:
      return {4, 0};
    case ZEL_CellType_Short:
      return {5, 0};
    case ZEL_CellType_Long:
      return {11, 0};
    case ZEL_CellType_Single:
      return {8, 2};
    case ZEL_CellType_Double:
      return {12, wantedDecimals >= 1 ? wantedDecimals : std::int16_t{2}};
    case ZEL_CellType_Date:
      return {16, std::nullopt};
    case ZEL_CellType_String:
      return {64, 0};
    default:
      return {0, std::nullopt};
  }
}

void requireWidthBeyondDecimals(std::int16_t width, std::int16_t decimals) {
  if (width >= 1 && width < checkedShort(decimals + 1))
    throw Error(2, u"zelNodeListColumns.Create", u"Width must exceed decimals by at least one digit");
}

void setMeasures(zelNodeListColumn& column, std::int16_t width, std::int16_t decimals) {
  const Measures measures = width != 0 ? Measures{width, decimals} : measuresOf(column.CellType(), decimals);
  column.setWidth(measures.width);
  if (measures.decimals) column.setDecimals(*measures.decimals);
}

void setInitialTag(zelNodeListColumn& column, const Variant& tag) {
  // An object would be assigned to the default member of the tag that is there, a text, which has
  // none; clients set an object tag on the finished column.
  if (tag.isObject()) throw Error(objectRequired, {}, u"Object required");
  if (!tag.isMissing()) column.setTag(tag);
}

}  // namespace

zelNodeListColumns::zelNodeListColumns() { mLog::TrackerIncr(className); }

zelNodeListColumns::~zelNodeListColumns() { mLog::TrackerDecr(className); }

void zelNodeListColumns::SetAllSelected(bool bSelected) {
  forEach([&](zelNodeListColumn& column) { column.setSelected(bSelected); });
}

void zelNodeListColumns::SetAllVisibility(bool bVisible) {
  forEach([&](zelNodeListColumn& column) { column.setVisible(bVisible); });
}

Ref<zelNodeListColumn> zelNodeListColumns::Create(const Definition& definition) {
  Ref<zelNodeListColumn> created;
  handled(u"zelNodeListColumns.Create", [&] {
    requireWidthBeyondDecimals(definition.lWidth, definition.lDecimals);
    const auto column = make<zelNodeListColumn>();
    column->SetKey(definition.sKey);
    column->setName(definition.sName);
    column->setDescription(definition.sDescription);
    column->setCellType(definition.eCellType);
    column->setColumnAlignment(definition.eColumnAlignment);
    column->setColumnWidth(definition.lColumnWidth);
    column->setColumnMaxWidth(definition.lColumnMaxWidth);
    column->setColumnMinWidth(definition.lColumnMinWidth);
    column->setEditable(definition.bEditable);
    column->setNodeList(definition.oNodeList);
    setMeasures(*column, definition.lWidth, definition.lDecimals);
    column->setVisible(definition.bVisible);
    column->setSelected(definition.bSelected);
    setInitialTag(*column, definition.vTag);
    if (Add(column)) created = column;
  });
  return created;
}

bool zelNodeListColumns::Add(const Ref<zelNodeListColumn>& oColumn) {
  ++revision_;
  return oColumn && columns_.add(oColumn, oColumn->Key());
}

void zelNodeListColumns::CopyFrom(const zelNodeListColumns& oSource) {
  handled(u"zelNodeListColumns.CopyFrom", [&] {
    // A set copied from itself has all the keys already.
    oSource.forEach([&](const zelNodeListColumn& source) {
      const auto column = make<zelNodeListColumn>();
      column->CopyFrom(source);
      Add(column);
    });
  });
}

Ref<zelNodeListColumns> zelNodeListColumns::CloneSelected(bool bSelected) const {
  auto clones = make<zelNodeListColumns>();
  forEach([&](const zelNodeListColumn& column) {
    if (column.Selected() == bSelected) clones->AddClone(column);
  });
  return clones;
}

Ref<zelNodeListColumns> zelNodeListColumns::CloneVisible(bool bVisible) const {
  auto clones = make<zelNodeListColumns>();
  forEach([&](const zelNodeListColumn& column) {
    if (column.Visible() == bVisible) clones->AddClone(column);
  });
  return clones;
}

Ref<zelNodeListColumns> zelNodeListColumns::CloneAll() const {
  auto clones = make<zelNodeListColumns>();
  forEach([&](const zelNodeListColumn& column) { clones->AddClone(column); });
  return clones;
}

String zelNodeListColumns::ExportXML(const String& sMargin) const {
  String xml = sMargin;
  xml.append(u"<Columns>").append(lineEnd);
  forEach([&](const zelNodeListColumn& column) {
    if (column.Selected()) xml.append(column.ExportXML(sMargin + u"  "));
  });
  return xml.append(sMargin).append(u"</Columns>").append(lineEnd);
}

bool zelNodeListColumns::ImportXML(const String& sXML) {
  bool imported = false;
  handled(u"zelNodeListColumns.ImportXML", [&] {
    if (const Ref<Object> document = mXML::LoadXMLDocument(sXML, false, false))
      imported = ImportXMLNode(mXML::SearchForChild(u"//Columns", document));
  });
  return imported;
}

bool zelNodeListColumns::ImportXMLNode(const Ref<Object>& oNode) {
  handled(u"zelNodeListColumns.ImportXMLNode", [&] {
    Clear();
    if (!oNode) return;
    for (Ref<Object> child = objectProperty(*oNode, u"firstChild"); child;
         child = objectProperty(*child, u"nextSibling")) {
      const auto column = make<zelNodeListColumn>();
      if (column->ImportXMLNode(child)) Add(column);
    }
  });
  return false;
}

const ClassInfo& zelNodeListColumns::describeClass() {
  using T = zelNodeListColumns;
  static const ClassInfo info =
      describe<T>("zelNodeListColumns", "The columns of a node list.")
          .creatable()
          .property("Locked", &T::Locked, "Always False.")
          .item("Item", &T::Item, {"Key"}, "The column under a key or at a position, or nothing.")
          .enumerator(&T::NewEnum)
          .property("Count", &T::Count, "The number of columns.")
          .property("FirstItem", &T::FirstItem, "The first column, or nothing.")
          .property("LastItem", &T::LastItem, "The last column, or nothing.")
          .method("SetAllSelected", &T::SetAllSelected, {"bSelected"}, "Selects or deselects all columns.")
          .method("SetAllVisibility", &T::SetAllVisibility, {"bVisible"}, "Shows or hides all columns.")
          .method("ExportXML", &T::ExportXML, {arg("sMargin") = u""}, "The set's XML text.")
          .method("ImportXML", &T::ImportXML, {"sXML"}, "Empties the set; always False.")
          .method("ImportXMLNode", &T::ImportXMLNode, {"oNode"}, "Empties the set; always False.");
  return info;
}

}  // namespace zelUtilities
