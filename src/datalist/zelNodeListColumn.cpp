#include "datalist/zelNodeListColumn.h"

#include "automation/Binder.h"
#include "automation/LateProperty.h"
#include "datalist/zelNodeList.h"
#include "foundation/Handled.h"
#include "foundation/mLog.h"
#include "text/mXMLDocument.h"

namespace zelUtilities {

namespace {

constexpr StringView className = u"zelNodeListColumn";

bool isEmptyText(const Variant& value) { return value.isString() && value.text().empty(); }

}  // namespace

zelNodeListColumn::zelNodeListColumn() { mLog::TrackerIncr(className); }

zelNodeListColumn::~zelNodeListColumn() { mLog::TrackerDecr(className); }

void zelNodeListColumn::setCellType(ZEL_Utilities_CellTypes value) {
  cellType_ = value;
  derivedFormat_.clear();
}

void zelNodeListColumn::setWidth(std::int16_t value) {
  width_ = value;
  derivedFormat_.clear();
}

std::int16_t zelNodeListColumn::Decimals() const {
  const bool hasDecimals = cellType_ == ZEL_CellType_Single || cellType_ == ZEL_CellType_Double;
  return hasDecimals ? decimals_ : std::int16_t{0};
}

void zelNodeListColumn::setDecimals(std::int16_t value) {
  decimals_ = value;
  derivedFormat_.clear();
}

bool zelNodeListColumn::IsNumeric() const {
  return cellType_ >= ZEL_CellType_Byte && cellType_ <= ZEL_CellType_Double;
}

String zelNodeListColumn::FormatString() const {
  if (!formatString_.empty()) return formatString_;
  if (derivedFormat_.empty())
    handled(u"zelNodeListColumn.FormatString Get", [&] { derivedFormat_ = deriveFormat(); });
  return derivedFormat_;
}

String zelNodeListColumn::deriveFormat() const {
  if (cellType_ == ZEL_CellType_Date) return u"MMM DD, YYYY";
  if (!IsNumeric()) return {};
  if (decimals_ > 0) {
    const std::int16_t least = checkedShort(decimals_ + 2);  // "0." and the decimals
    const std::int16_t width = width_ < least ? least : width_;
    return String(static_cast<std::size_t>(width - least), u'#') + u"0." +
           String(static_cast<std::size_t>(decimals_), u'0');
  }
  return width_ >= 2 ? String(static_cast<std::size_t>(width_ - 1), u'#') + u"0" : String(u"0");
}

Ref<zelNodeList> zelNodeListColumn::NodeList() const {
  return Ref<zelNodeList>(static_cast<zelNodeList*>(nodeList_.get()));
}

void zelNodeListColumn::setNodeList(const Ref<zelNodeList>& value) { nodeList_ = value; }

void zelNodeListColumn::setMissingValue(const Variant& value) {
  if (!value.isObject()) {
    missingValue_ = value;
    return;
  }
  if (!value.object()) throw Error(ErrorNumber::ObjectNotSet);
  missingValue_ = value.object()->Invoke({}, InvokeKind::Get, {});
}

ZEL_Utilities_ColumnErrors zelNodeListColumn::Validate(const Variant& vValue) const {
  try {
    if (IsNumeric()) return isNumeric(vValue) ? ZEL_ColumnError_None : ZEL_ColumnError_NotANumber;
    switch (cellType_) {
      case ZEL_CellType_String: {
        const bool fits = static_cast<std::int64_t>(toText(vValue).size()) <= width_;
        return fits ? ZEL_ColumnError_None : ZEL_ColumnError_StringTooLong;
      }
      case ZEL_CellType_Date:
        return isDate(vValue) ? ZEL_ColumnError_None : ZEL_ColumnError_NotDate;
      case ZEL_CellType_Boolean:
        return vValue.isBoolean() ? ZEL_ColumnError_None : ZEL_ColumnError_NotBoolean;
      default:
        return ZEL_ColumnError_None;
    }
  } catch (...) {
    return ZEL_ColumnError_UnknownError;
  }
}

Variant zelNodeListColumn::converted(const Variant& vValue, VariantKind kind) const {
  return isEmptyText(vValue) ? convertTo(std::int32_t{0}, kind) : convertTo(vValue, kind);
}

Variant zelNodeListColumn::ConvertValue(const Variant& vValue) const {
  Variant result;
  handled(u"zelNodeListColumn.ConvertValue", [&] {
    switch (cellType_) {
      case ZEL_CellType_Byte:
        result = converted(vValue, VariantKind::Byte);
        return;
      case ZEL_CellType_Short:
        result = converted(vValue, VariantKind::Integer);
        return;
      case ZEL_CellType_Long:
        result = converted(vValue, VariantKind::Long);
        return;
      case ZEL_CellType_Single:
        result = converted(vValue, VariantKind::Single);
        return;
      case ZEL_CellType_Double:
        result = converted(vValue, VariantKind::Double);
        return;
      case ZEL_CellType_Date:
        result = converted(vValue, VariantKind::Date);
        return;
      case ZEL_CellType_Boolean:
        result = converted(vValue, VariantKind::Boolean);
        return;
      case ZEL_CellType_String:
        result = convertTo(vValue, VariantKind::String);
        // Told, but never cut: the text comes back whole.
        if (static_cast<std::int64_t>(result.text().size()) > width_)
          throw Error(objectErrorBase + 2, u"ConvertValue", u"String too long");
        return;
      default:
        result = vValue;
        return;
    }
  });
  return result;
}

void zelNodeListColumn::SetUOMProperties(bool bSimple, bool bComposite, bool bFavorites, bool bCanCustom,
                                         std::int32_t eNumeratorDomains, std::int32_t eDenominatorDomains) {
  uomFilter_->set(bSimple, bComposite, bFavorites, bCanCustom, eNumeratorDomains, eDenominatorDomains);
}

String zelNodeListColumn::ExportXML(const String&) const { return {}; }

bool zelNodeListColumn::ImportXML(const String& sXML) {
  bool imported = false;
  handled(u"zelNodeListColumn.ImportXML", [&] {
    if (const Ref<Object> document = mXML::LoadXMLDocument(sXML, false, false))
      imported = ImportXMLNode(objectProperty(*document, u"documentElement"));
  });
  return imported;
}

bool zelNodeListColumn::ImportXMLNode(const Ref<Object>&) { return false; }

Ref<zelNodeListColumn> zelNodeListColumn::Clone() const {
  Ref<zelNodeListColumn> copy;
  handled(u"zelNodeListColumn.Clone", [&] {
    copy = make<zelNodeListColumn>();
    copy->CopyFrom(*this);
  });
  return copy;
}

void zelNodeListColumn::CopyFrom(const zelNodeListColumn& oSource) {
  handled(u"zelNodeListColumn.CopyFrom", [&] {
    setColumnWidth(oSource.ColumnWidth());
    setColumnMinWidth(oSource.ColumnMinWidth());
    setColumnMaxWidth(oSource.ColumnMaxWidth());
    setColumnAlignment(oSource.ColumnAlignment());
    setCellType(oSource.CellType());
    setDecimals(oSource.Decimals());
    setDescription(oSource.Description());
    SetKey(oSource.Key());
    setName(oSource.Name());
    setSelected(oSource.Selected());
    setVisible(oSource.Visible());
    setWidth(oSource.Width());
    setTag(oSource.Tag());
  });
}

const ClassInfo& zelNodeListColumn::describeClass() {
  using T = zelNodeListColumn;
  static const ClassInfo info =
      describe<T>("zelNodeListColumn", "A column of a node list.")
          .property("Key", &T::Key, "The column's key.")
          .property("Name", &T::Name, &T::setName, "The caption; the key when none is set.")
          .property("Description", &T::Description, &T::setDescription,
                    "The description; the name when none is set.")
          .property("ColumnWidth", &T::ColumnWidth, &T::setColumnWidth, "The display width in screen units.")
          .property("ColumnActualWidth", &T::ColumnActualWidth, "Always 0.")
          .property("ColumnMinWidth", &T::ColumnMinWidth, &T::setColumnMinWidth, "The least display width.")
          .property("ColumnMaxWidth", &T::ColumnMaxWidth, &T::setColumnMaxWidth,
                    "The greatest display width; 0 for none.")
          .property("ColumnAlignment", &T::ColumnAlignment, &T::setColumnAlignment, "How values are aligned.")
          .property("CellType", &T::CellType, &T::setCellType, "The kind of value of the column's cells.")
          .property("Width", &T::Width, &T::setWidth, "The width of a value in characters.")
          .property("Decimals", &T::Decimals, &T::setDecimals,
                    "The digits after the decimal point; 0 unless the type is Single or Double.")
          .property("Selected", &T::Selected, &T::setSelected, "Whether the column takes part in exports.")
          .property("Visible", &T::Visible, &T::setVisible, "Whether the column is shown.")
          .property("Editable", &T::Editable, &T::setEditable, "Whether the column's cells can be edited.")
          .property("HasCheckbox", &T::HasCheckbox, &T::setHasCheckbox, "Whether cells show a check box.")
          .propertyRef("CellButtons", &T::CellButtons, &T::setCellButtons,
                       "The buttons of the column's cells.")
          .property("FormatString", &T::FormatString, &T::setFormatString,
                    "The display format; derived from type, width and decimals when none is set.")
          .propertyRef("NodeList", &T::NodeList, &T::setNodeList, "The pick list or unit list of the cells.")
          .property("MissingValue", &T::MissingValue, &T::setMissingValue,
                    "The value that stands for a missing one.")
          .property("Tag", &T::Tag, &T::setTag, "The client's data.")
          .method("Validate", &T::Validate, {"vValue"}, "Whether a value suits the column.")
          .property("IsNumeric", &T::IsNumeric, "Whether the column holds numbers.")
          .property("PickListAsUpperCase", &T::PickListAsUpperCase, &T::setPickListAsUpperCase,
                    "Whether pick-list entries are shown in upper case.")
          .property("SortPickList", &T::SortPickList, &T::setSortPickList,
                    "Whether pick-list entries are sorted.")
          .property("UserSort", &T::UserSort, &T::setUserSort, "Whether the user may sort by the column.")
          .method("SetUOMProperties", &T::SetUOMProperties,
                  {"bSimple", "bComposite", "bFavorites", "bCanCustom", "eNumeratorDomains",
                   "eDenominatorDomains"},
                  "Writes all settings of the unit-of-measure filter.")
          .property("UOMNodeListFilter", &T::UOMNodeListFilter, "The unit-of-measure filter.")
          .method("ExportXML", &T::ExportXML, {arg("sMargin") = u""}, "Always the empty text.")
          .method("ImportXML", &T::ImportXML, {"sXML"}, "Always False.")
          .method("ImportXMLNode", &T::ImportXMLNode, {"oNode"}, "Always False.");
  return info;
}

}  // namespace zelUtilities
