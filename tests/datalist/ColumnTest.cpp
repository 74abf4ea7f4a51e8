#include "datalist/NodeListFixture.h"

namespace zelUtilities {
namespace {

Ref<zelNodeListColumn> columnOf(ZEL_Utilities_CellTypes type, std::int16_t width, std::int16_t decimals = 0) {
  auto column = make<zelNodeListColumn>();
  column->SetKey(u"K");
  setProperties(*column, u"CellType Width Decimals", {type, width, decimals});
  return column;
}

TEST(Column, StartsAsANumberNamedByItsKey) {
  auto column = make<zelNodeListColumn>();
  column->SetKey(u"Size");
  EXPECT_EQ(propertiesOf(*column, u"Name Description CellType IsNumeric FormatString Tag MissingValue"),
            "Size|Size|5|True|######0.00||Empty");
  EXPECT_EQ(
      propertiesOf(*column, u"ColumnWidth ColumnActualWidth ColumnMinWidth ColumnMaxWidth ColumnAlignment"),
      "0|0|1440|0|0");
  EXPECT_EQ(propertiesOf(*column, u"Selected Visible SortPickList Editable HasCheckbox UserSort"),
            "True|True|True|False|False|False");
  column->setName(u"Size in mm");
  EXPECT_EQ(column->Description(), u"Size in mm");
}

TEST(Column, DerivesItsFormatFromTypeWidthAndStoredDecimals) {
  Reports reports{"zelNodeListColumn."};
  const std::tuple<ZEL_Utilities_CellTypes, std::int16_t, std::int16_t, StringView> rows[] = {
      {ZEL_CellType_Double, 3, 2, u"0.00"},       {ZEL_CellType_Double, 5, 0, u"####0"},
      {ZEL_CellType_Single, 1, -3, u"0"},         {ZEL_CellType_Double, -7, 1, u"0.0"},
      {ZEL_CellType_Long, 11, 2, u"#######0.00"}, {ZEL_CellType_Long, 11, 0, u"##########0"},
      {ZEL_CellType_Date, 3, 2, u"MMM DD, YYYY"}, {ZEL_CellType_String, 9, 2, u""},
      {ZEL_CellType_Double, 5, 32766, u""}};  // overflows
  for (const auto& [type, width, decimals, format] : rows)
    EXPECT_EQ(columnOf(type, width, decimals)->FormatString(), format);
  EXPECT_EQ(reports.taken(), "FormatString Get|6 ");
  auto column = columnOf(ZEL_CellType_Double, 5);
  for (const String& format : {String(u"0.0"), String()}) {
    column->setFormatString(format);
    column->setWidth(9);
    EXPECT_EQ(column->FormatString(), format.empty() ? u"########0" : format);
  }
  EXPECT_EQ(columnOf(ZEL_CellType_Long, 5, 2)->Decimals(), 0) << "only Single and Double have decimals";
}

TEST(Column, ValidatesByItsType) {
  const std::tuple<ZEL_Utilities_CellTypes, Variant, ZEL_Utilities_ColumnErrors> rows[] = {
      {ZEL_CellType_Double, u"abc", ZEL_ColumnError_NotANumber},
      {ZEL_CellType_Byte, 300, ZEL_ColumnError_None},
      {ZEL_CellType_String, u"abcdef", ZEL_ColumnError_StringTooLong},
      {ZEL_CellType_String, u"abcde", ZEL_ColumnError_None},
      {ZEL_CellType_String, Variant::null(), ZEL_ColumnError_UnknownError},
      {ZEL_CellType_Date, u"soon", ZEL_ColumnError_NotDate},
      {ZEL_CellType_Date, u"2007-03-05", ZEL_ColumnError_None},
      {ZEL_CellType_Boolean, u"True", ZEL_ColumnError_NotBoolean},
      {ZEL_CellType_Boolean, true, ZEL_ColumnError_None},
      {ZEL_CellType_PickList, u"anything", ZEL_ColumnError_None}};
  Reports reports{""};
  for (const auto& [type, value, found] : rows) EXPECT_EQ(columnOf(type, 5)->Validate(value), found) << type;
}

TEST(Column, ConvertsValuesAndNeverCutsAText) {
  const std::tuple<ZEL_Utilities_CellTypes, Variant, const char*> rows[] = {
      {ZEL_CellType_Byte, u"", "Byte 0"},     {ZEL_CellType_Short, u"12", "Integer 12"},
      {ZEL_CellType_Date, u"", "Date 0"},     {ZEL_CellType_Boolean, u"", "Boolean 0"},
      {ZEL_CellType_Color, u"7", "String 7"}, {ZEL_CellType_String, u"1234", "String 1234"},
      {ZEL_CellType_Byte, 256, "Empty 0"},    {ZEL_CellType_Long, Variant::null(), "Empty 0"}};
  Reports reports{"zelNodeListColumn.", Reports::Description};
  for (const auto& [type, value, expected] : rows) {
    const Variant converted = columnOf(type, 3)->ConvertValue(value);
    EXPECT_EQ(toUtf8(typeName(converted) + u" " + decimalText(toLong(converted))), expected);
  }
  EXPECT_EQ(reports.taken(),
            "ConvertValue|-2147221502|String too long ConvertValue|6|Overflow "
            "ConvertValue|94|Invalid use of Null ");
}

TEST(Column, CloneStoresFallbacksAndLeavesTheRestAtItsStart) {
  auto column = columnOf(ZEL_CellType_Long, 7, 3);
  setProperties(*column, u"Editable FormatString Tag", {true, u"0", 5});
  auto copy = column->Clone();
  column->SetKey(u"Other");
  // The decimals of a Long read 0 and are copied as that.
  EXPECT_EQ(propertiesOf(*copy, u"Name Description Width Tag Editable FormatString"),
            "K|K|7|5|False|######0");
}

TEST(ColumnSet, ChoosesWidthAndDecimalsByType) {
  const std::tuple<ZEL_Utilities_CellTypes, std::int16_t, const char*> rows[] = {
      {ZEL_CellType_Double, 0, "12|2"}, {ZEL_CellType_Double, 4, "12|4"}, {ZEL_CellType_Single, 4, "8|2"},
      {ZEL_CellType_String, 0, "64|0"}, {ZEL_CellType_Date, 0, "16|0"},   {ZEL_CellType_UOM, 0, "0|0"}};
  for (const auto& [type, decimals, expected] : rows) {
    auto definition = defined(u"K", type);
    definition.lDecimals = decimals;
    const auto column = make<zelNodeListColumns>()->Create(definition);
    EXPECT_EQ(propertiesOf(*column, u"Width Decimals"), expected) << type;
  }
}

TEST(ColumnSet, RefusesAColumnWithoutLosingTheOthers) {
  auto columns = make<zelNodeListColumns>();
  ASSERT_TRUE(columns->Create(defined(u"A")));
  Reports reports{"zelNodeListColumns.", Reports::Description};
  EXPECT_FALSE(columns->Create(defined(u"a"))) << "keys are compared without regard to case";
  auto definition = defined(u"B");
  definition.lWidth = definition.lDecimals = 2;
  EXPECT_FALSE(columns->Create(definition));
  definition.lDecimals = 32767;
  EXPECT_FALSE(columns->Create(definition)) << "decimals + 1 overflows";
  definition = defined(u"B");
  definition.vTag = columns;
  EXPECT_FALSE(columns->Create(definition)) << "an object tag cannot be given on creation";
  EXPECT_EQ(reports.taken(),
            "Create|2|Width must exceed decimals by at least one digit Create|6|Overflow "
            "Create|424|Object required ");
  EXPECT_EQ(keysOf(*columns), "A");
}

TEST(ColumnSet, AnswersUnknownKeysAndPositionsWithNothing) {
  auto columns = make<zelNodeListColumns>();
  EXPECT_FALSE(columns->FirstItem() || columns->LastItem());
  columns->Create(defined(u"A"));
  for (const Variant& key :
       {Variant(u"x"), Variant(0), Variant(2), Variant(), Variant::null(), Variant(1e300), Variant(true)})
    EXPECT_FALSE(columns->Item(key));
  EXPECT_EQ(columns->Item(1.4), columns->LastItem());
}

TEST(ColumnSet, ClonesTheColumnsAskedFor) {
  auto columns = make<zelNodeListColumns>();
  for (StringView key : {u"A", u"B", u"C"}) columns->Create(defined(key))->setVisible(key != u"B");
  EXPECT_EQ(keysOf(*columns->CloneVisible(true)), "A C");
  EXPECT_EQ(keysOf(*columns->CloneAll()), "A B C");
  columns->SetAllVisibility(false);
  EXPECT_EQ(keysOf(*columns->CloneVisible(false)), "A B C");
  columns->SetAllSelected(false);
  EXPECT_EQ(keysOf(*columns->CloneSelected(true)), "");
  columns->CopyFrom(*columns);
  EXPECT_EQ(columns->Count(), 3);
}

TEST(ColumnSet, WritesABareElementAndReadsNone) {
  auto columns = make<zelNodeListColumns>();
  columns->Create(defined(u"A"));
  EXPECT_EQ(columns->ExportXML(u"  "), u"  <Columns>\r\n  </Columns>\r\n");
  EXPECT_FALSE(columns->ImportXML(u"<Columns><Column"));
  EXPECT_EQ(columns->Count(), 1) << "malformed text changes nothing";
  EXPECT_FALSE(columns->ImportXML(u"<a><Columns><Column/></Columns></a>"));
  EXPECT_EQ(columns->Count(), 0);
  columns->Create(defined(u"A"));
  EXPECT_FALSE(columns->ImportXMLNode(nullptr));
  EXPECT_EQ(columns->Count(), 0);
}

TEST(CellButtons, CreateTheUsualButtonOnce) {
  auto buttons = make<zelCellButtons>();
  auto button = buttons->Create();
  EXPECT_EQ(propertiesOf(*button, u"Key Image Alignment ShortCutKeyCode"), "...|Default|1|113");
  EXPECT_FALSE(buttons->Create() || buttons->Add(nullptr) || buttons->Remove(u"x"));
  EXPECT_EQ(buttons->Item(u"..."), button);
  EXPECT_TRUE(buttons->Remove(1));
  EXPECT_EQ(buttons->Count(), 0);
}

TEST(UomFilter, StartsWithTheUsualDomains) {
  const auto column = make<zelNodeListColumn>();
  const auto filter = column->UOMNodeListFilter();
  constexpr auto all =
      u"SimpleUnits CompositeUnits FavoriteUnits CanCustom NumeratorDomains DenominatorDomains";
  EXPECT_EQ(propertiesOf(*filter, all), "True|True|True|False|16447|32767");
  column->SetUOMProperties(false, true, false, true, 1, 2);
  EXPECT_EQ(propertiesOf(*filter, all), "False|True|False|True|1|2");
}

}  // namespace
}  // namespace zelUtilities
