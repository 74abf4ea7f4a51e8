#include "datalist/NodeListFixture.h"

namespace zelUtilities {
namespace {

struct Cell : testing::Test {
  Ref<zelNodeList> list = make<zelNodeList>();
  Ref<zelCell> cell;

  zelNodeListColumn& withColumn(ZEL_Utilities_CellTypes type) {
    Ref<zelNodeListColumn> column = addColumn(*list, u"C", type);
    cell = list->Create(u"", u"n", u"")->Cells()->Item(u"c");
    return *column;
  }
};

TEST_F(Cell, FallsBackToItsColumnUntilItHasASettingOfItsOwn) {
  zelNodeListColumn& column = withColumn(ZEL_CellType_Long);
  EXPECT_EQ(cell->CellType(), ZEL_CellType_UseColumn);
  EXPECT_EQ(cell->EffectiveCellType(), ZEL_CellType_Long);
  cell->setCellType(ZEL_CellType_Double);
  EXPECT_EQ(cell->EffectiveCellType(), ZEL_CellType_Double);

  column.setHasCheckbox(true);
  EXPECT_TRUE(cell->EffectiveHasCheckbox());
  cell->setHasCheckbox(ZEL_CellBoolean_False);
  EXPECT_FALSE(cell->EffectiveHasCheckbox());

  column.setCellButtons(make<zelCellButtons>());
  EXPECT_EQ(cell->EffectiveCellButtons(), column.CellButtons());
  cell->setCellButtons(make<zelCellButtons>());
  EXPECT_EQ(cell->EffectiveCellButtons(), cell->CellButtons());

  EXPECT_TRUE(cell->SortPickList());
  EXPECT_FALSE(cell->PickListAsUpperCase());
  EXPECT_EQ(cell->UOMNodeListFilter(), cell->UOMNodeListFilter());
}

TEST_F(Cell, ShowsItsValueByTheColumnsFormat) {
  zelNodeListColumn& column = withColumn(ZEL_CellType_Double);
  cell->setValue(1234.5);
  EXPECT_EQ(cell->FormattedValue(), u"1234.50");
  cell->setValue(Variant::missing());
  EXPECT_EQ(cell->FormattedValue(), u"");
  column.setCellType(ZEL_CellType_String);
  cell->setValue(std::int32_t{0});
  EXPECT_EQ(cell->FormattedValue(), u"0");
  column.setCellType(ZEL_CellType_Date);
  EXPECT_EQ(cell->FormattedValue(), u"") << "a zero date is blank";
  cell->setValue(Variant());
  EXPECT_EQ(cell->FormattedValue(), u"");
  cell->setValue(Variant::date(39146));
  EXPECT_EQ(cell->FormattedValue(), u"Mar 05, 2007");
}

TEST_F(Cell, LogsAValueThatCannotBeShown) {
  withColumn(ZEL_CellType_String);
  cell->setValue(Variant::null());
  ErrorLog errors;
  EXPECT_EQ(cell->FormattedValue(), u"");
  EXPECT_EQ(errors.text(), "zelCell.FormattedValue Get 94\n");
  EXPECT_EQ(raised([&] { list->Item(u"n")->Text(); }), 94) << "reading the text raises";
}

TEST_F(Cell, PickListsNameANodeOfTheirList) {
  zelNodeListColumn& column = withColumn(ZEL_CellType_PickList);
  EXPECT_EQ(raised([&] { cell->SelectedNode(); }), 91) << "a pick list without a list";
  auto units = make<zelNodeList>();
  units->Create(u"", u"mm", u"Millimetres");
  column.setNodeList(units);
  cell->setValue(u"MM");
  EXPECT_EQ(cell->SelectedNode()->Text(), u"Millimetres");
  cell->setValue(u"inch");
  EXPECT_FALSE(cell->SelectedNode());

  EXPECT_EQ(cell->Editable(), ZEL_CellBoolean_UseColumn) << "without a list of its own";
  cell->setNodeList(make<zelNodeList>());
  EXPECT_EQ(cell->Editable(), ZEL_CellBoolean_False) << "what the column says";
  column.setEditable(true);
  EXPECT_EQ(cell->Editable(), ZEL_CellBoolean_True);
  cell->setCellType(ZEL_CellType_String);
  EXPECT_EQ(cell->Editable(), ZEL_CellBoolean_UseColumn);
  EXPECT_FALSE(cell->EffectiveNodeList()) << "only pick lists and units have one";
  EXPECT_FALSE(cell->SelectedNode());
}

TEST_F(Cell, StaysReadableWhenItsNodeHasLeftTheList) {
  withColumn(ZEL_CellType_Long);
  cell->setValue(std::int32_t{7});
  cell->setToolTipText(u"tip");
  EXPECT_EQ(cell->Node()->Key(), u"n");
  list->Clear();
  list = nullptr;
  EXPECT_EQ(cell->Key(), u"C");
  EXPECT_EQ(cell->Value().longInteger(), 7);
  EXPECT_EQ(cell->ToolTipText(), u"tip");
  EXPECT_FALSE(cell->Node() || cell->Column());
  EXPECT_EQ(cell->EffectiveCellType(), ZEL_CellType_UseColumn);
  EXPECT_EQ(cell->FormattedValue(), u"");
  EXPECT_EQ(raised([&] { cell->EffectiveHasCheckbox(); }), 91);
  EXPECT_EQ(raised([&] { cell->EffectiveCellButtons(); }), 91);
}

TEST_F(Cell, NamesAnotherNodeWhenAClientSaysSo) {
  withColumn(ZEL_CellType_Long);
  Ref<zelNode> own = cell->Node();
  cell->setNode(list->Create(u"", u"other", u""));
  EXPECT_EQ(cell->Node()->Key(), u"other");
  cell->setNode(own);
  EXPECT_EQ(cell->Node(), own) << "and does not keep itself alive by that";
}

TEST_F(Cell, AreFoundByColumnKeyAndPosition) {
  for (int i = 1; i <= 20; ++i) addColumn(*list, u"Col" + decimalText(i));
  Ref<zelCells> cells = list->Create(u"", u"n", u"")->Cells();
  EXPECT_EQ(cells->Count(), 20);
  EXPECT_EQ(cells->Item(u"COL17"), cells->Item(std::int32_t{17}));
  EXPECT_EQ(cells->FirstItem(), list->Item(u"n")->DefaultCell());
  EXPECT_EQ(cells->LastItem()->Key(), u"Col20");
  for (const Variant& key :
       {Variant(u"Col21"), Variant(std::int32_t{0}), Variant(std::int32_t{21}), Variant::null()})
    EXPECT_FALSE(cells->Item(key));
  EXPECT_EQ(keysOf(*cells).substr(0, 9), "Col1 Col2");
}

}  // namespace
}  // namespace zelUtilities
