#include "datalist/NodeListFixture.h"

namespace zelUtilities {
namespace {

Ref<zelNodeListColumn> columnOf(ZEL_Utilities_CellTypes type, std::int16_t width, std::int16_t decimals = 0) {
  auto column = make<zelNodeListColumn>();
  column->SetKey(u"K");
  column->setCellType(type);
  column->setWidth(width);
  column->setDecimals(decimals);
  return column;
}

zelNodeListColumns::Definition defined(StringView key) {
  zelNodeListColumns::Definition definition;
  definition.sKey = key;
  return definition;
}

TEST(Column, StartsAsANumberNamedByItsKey) {
  auto column = make<zelNodeListColumn>();
  column->SetKey(u"Size");
  EXPECT_TRUE(column->Name() == u"Size" && column->Description() == u"Size");
  column->setName(u"Size in mm");
  EXPECT_EQ(column->Description(), u"Size in mm");
  EXPECT_EQ(column->CellType(), ZEL_CellType_Double);
  EXPECT_EQ(column->FormatString(), u"######0.00");
  EXPECT_TRUE(column->Selected() && column->Visible() && column->SortPickList());
  EXPECT_FALSE(column->Editable() || column->HasCheckbox() || column->UserSort());
  EXPECT_EQ(column->ColumnMinWidth(), 1440);
  EXPECT_TRUE(column->Tag().text().empty() && column->UOMNodeListFilter());
}

TEST(Column, DerivesItsFormatFromTypeWidthAndStoredDecimals) {
  struct Row {
    ZEL_Utilities_CellTypes type;
    std::int16_t width, decimals;
    StringView format;
    std::string logged = {};
  };
  for (const Row& row :
       {Row{ZEL_CellType_Double, 3, 2, u"0.00"}, Row{ZEL_CellType_Double, 5, 0, u"####0"},
        Row{ZEL_CellType_Single, 1, -3, u"0"}, Row{ZEL_CellType_Double, -7, 1, u"0.0"},
        Row{ZEL_CellType_Long, 11, 2, u"#######0.00"}, Row{ZEL_CellType_Long, 11, 0, u"##########0"},
        Row{ZEL_CellType_Date, 3, 2, u"MMM DD, YYYY"}, Row{ZEL_CellType_String, 9, 2, u""},
        Row{ZEL_CellType_Double, 5, 32766, u"", "zelNodeListColumn.FormatString Get 6\n"}}) {
    ErrorLog errors;
    EXPECT_EQ(columnOf(row.type, row.width, row.decimals)->FormatString(), row.format);
    EXPECT_EQ(errors.text(), row.logged);
  }
  auto column = columnOf(ZEL_CellType_Double, 5);
  for (const String& format : {String(u"0.0"), String()}) {
    column->setFormatString(format);
    column->setWidth(9);
    EXPECT_EQ(column->FormatString(), format.empty() ? u"########0" : format);
  }
  EXPECT_EQ(columnOf(ZEL_CellType_Long, 5, 2)->Decimals(), 0) << "only Single and Double have decimals";
}

TEST(Column, ValidatesByItsType) {
  struct Row {
    ZEL_Utilities_CellTypes type;
    Variant value;
    ZEL_Utilities_ColumnErrors found;
  };
  ErrorLog errors;
  for (const Row& row : {Row{ZEL_CellType_Double, u"abc", ZEL_ColumnError_NotANumber},
                         Row{ZEL_CellType_Byte, std::int32_t{300}, ZEL_ColumnError_None},
                         Row{ZEL_CellType_String, u"abcdef", ZEL_ColumnError_StringTooLong},
                         Row{ZEL_CellType_String, u"abcde", ZEL_ColumnError_None},
                         Row{ZEL_CellType_String, Variant::null(), ZEL_ColumnError_UnknownError},
                         Row{ZEL_CellType_Date, u"soon", ZEL_ColumnError_NotDate},
                         Row{ZEL_CellType_Date, u"2007-03-05", ZEL_ColumnError_None},
                         Row{ZEL_CellType_Boolean, u"True", ZEL_ColumnError_NotBoolean},
                         Row{ZEL_CellType_Boolean, true, ZEL_ColumnError_None},
                         Row{ZEL_CellType_PickList, u"anything", ZEL_ColumnError_None}})
    EXPECT_EQ(columnOf(row.type, 5)->Validate(row.value), row.found) << row.type;
  EXPECT_EQ(errors.text(), "");
}

TEST(Column, ConvertsValuesAndNeverCutsAText) {
  EXPECT_EQ(columnOf(ZEL_CellType_Byte, 4)->ConvertValue(u"").byte(), 0);
  EXPECT_EQ(columnOf(ZEL_CellType_Short, 4)->ConvertValue(u"12").integer(), 12);
  EXPECT_EQ(columnOf(ZEL_CellType_Date, 4)->ConvertValue(u"").dateValue(), 0.0);
  EXPECT_EQ(columnOf(ZEL_CellType_Boolean, 4)->ConvertValue(u"").boolean(), false);
  EXPECT_EQ(columnOf(ZEL_CellType_Color, 4)->ConvertValue(u"red").text(), u"red");
  ErrorLog errors;
  EXPECT_EQ(columnOf(ZEL_CellType_String, 3)->ConvertValue(u"abcd").text(), u"abcd");
  EXPECT_EQ(errors.lastDescription(), "String too long");
  EXPECT_TRUE(columnOf(ZEL_CellType_Byte, 3)->ConvertValue(std::int32_t{256}).isEmpty());
  EXPECT_TRUE(columnOf(ZEL_CellType_Long, 3)->ConvertValue(Variant::null()).isEmpty());
  EXPECT_EQ(errors.text(),
            "zelNodeListColumn.ConvertValue -2147221502\nzelNodeListColumn.ConvertValue 6\n"
            "zelNodeListColumn.ConvertValue 94\n");
}

TEST(Column, CloneStoresFallbacksAndLeavesTheRestAtItsStart) {
  auto column = columnOf(ZEL_CellType_Long, 7, 3);
  column->setEditable(true);
  column->setFormatString(u"0");
  column->setTag(std::int32_t{5});
  auto copy = column->Clone();
  column->SetKey(u"Other");
  EXPECT_TRUE(copy->Name() == u"K" && copy->Description() == u"K");
  EXPECT_EQ(copy->Width(), 7);
  EXPECT_EQ(copy->Tag().longInteger(), 5);
  EXPECT_FALSE(copy->Editable());
  EXPECT_EQ(copy->FormatString(), u"######0") << "the decimals of a Long read 0 and are copied as that";
}

TEST(ColumnSet, ChoosesWidthAndDecimalsByType) {
  struct Row {
    ZEL_Utilities_CellTypes type;
    std::int16_t decimals, width, decimalsRead;
  };
  for (const Row& row : {Row{ZEL_CellType_Double, 0, 12, 2}, Row{ZEL_CellType_Double, 4, 12, 4},
                         Row{ZEL_CellType_Single, 4, 8, 2}, Row{ZEL_CellType_String, 0, 64, 0},
                         Row{ZEL_CellType_Date, 0, 16, 0}, Row{ZEL_CellType_UOM, 0, 0, 0}}) {
    auto definition = defined(u"K");
    definition.eCellType = row.type;
    definition.lDecimals = row.decimals;
    auto column = make<zelNodeListColumns>()->Create(definition);
    EXPECT_EQ(column->Width(), row.width) << row.type;
    EXPECT_EQ(column->Decimals(), row.decimalsRead) << row.type;
  }
}

TEST(ColumnSet, RefusesAColumnWithoutLosingTheOthers) {
  auto columns = make<zelNodeListColumns>();
  ASSERT_TRUE(columns->Create(defined(u"A")));
  ErrorLog errors;
  EXPECT_FALSE(columns->Create(defined(u"a"))) << "keys are compared without regard to case";
  EXPECT_EQ(errors.text(), "");
  auto definition = defined(u"B");
  definition.lWidth = definition.lDecimals = 2;
  EXPECT_FALSE(columns->Create(definition));
  EXPECT_EQ(errors.lastDescription(), "Width must exceed decimals by at least one digit");
  definition.lDecimals = 32767;
  EXPECT_FALSE(columns->Create(definition)) << "decimals + 1 overflows";
  definition = defined(u"B");
  definition.vTag = Variant(columns);
  EXPECT_FALSE(columns->Create(definition)) << "an object tag cannot be given on creation";
  EXPECT_EQ(errors.text(),
            "zelNodeListColumns.Create 2\nzelNodeListColumns.Create 6\nzelNodeListColumns.Create 424\n");
  EXPECT_EQ(keysOf(*columns), "A");
}

TEST(ColumnSet, AnswersUnknownKeysAndPositionsWithNothing) {
  auto columns = make<zelNodeListColumns>();
  EXPECT_FALSE(columns->FirstItem() || columns->LastItem());
  columns->Create(defined(u"A"));
  for (const Variant& key : {Variant(u"x"), Variant(std::int32_t{0}), Variant(std::int32_t{2}), Variant(),
                             Variant::null(), Variant(1e300), Variant(true)})
    EXPECT_FALSE(columns->Item(key));
  EXPECT_EQ(columns->Item(1.4), columns->LastItem());
}

TEST(ColumnSet, ClonesTheColumnsAskedFor) {
  auto columns = make<zelNodeListColumns>();
  for (StringView key : {u"A", u"B", u"C"}) {
    auto definition = defined(key);
    definition.bVisible = key != u"B";
    columns->Create(definition);
  }
  EXPECT_EQ(keysOf(*columns->CloneVisible(true)), "A C");
  EXPECT_EQ(keysOf(*columns->CloneAll()), "A B C");
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
}

TEST(CellButtons, CreateTheUsualButtonOnce) {
  auto buttons = make<zelCellButtons>();
  auto button = buttons->Create();
  EXPECT_EQ(button->Key() + button->Image(), u"...Default");
  EXPECT_EQ(button->Alignment(), ZEL_ColumnAlignment_Right);
  EXPECT_EQ(button->ShortCutKeyCode(), 113);
  EXPECT_FALSE(buttons->Create() || buttons->Add(nullptr) || buttons->Remove(u"x"));
  EXPECT_EQ(buttons->Item(u"..."), button);
  EXPECT_TRUE(buttons->Remove(std::int32_t{1}));
  EXPECT_EQ(buttons->Count(), 0);
}

TEST(UomFilter, StartsWithTheUsualDomains) {
  auto filter = make<zelUOMNodeListFilter>();
  EXPECT_TRUE(filter->SimpleUnits() && filter->CompositeUnits() && filter->FavoriteUnits());
  EXPECT_EQ(filter->NumeratorDomains(), 16447);
  EXPECT_EQ(filter->DenominatorDomains(), 32767);
  filter->set(false, true, false, true, 1, 2);
  EXPECT_TRUE(filter->CanCustom() && !filter->SimpleUnits() && filter->DenominatorDomains() == 2);
}

}  // namespace
}  // namespace zelUtilities
