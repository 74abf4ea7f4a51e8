#include "datalist/NodeListFixture.h"

namespace zelUtilities {
namespace {

struct Cell : testing::Test {
  zelNodeListColumn& withColumn(ZEL_Utilities_CellTypes type) {
    Ref<zelNodeListColumn> column = list->CreateColumn(defined(u"C", type));
    cell = list->Create(u"", u"n", u"")->Cells()->Item(u"c");
    return *column;
  }
  std::string formatted(const Variant& value) {
    cell->setValue(value);
    return toUtf8(cell->FormattedValue());
  }

  Ref<zelNodeList> list = make<zelNodeList>();
  Ref<zelCell> cell;
};

TEST_F(Cell, FallsBackToItsColumnUntilItHasASettingOfItsOwn) {
  zelNodeListColumn& column = withColumn(ZEL_CellType_Long);
  column.setHasCheckbox(true);
  column.setCellButtons(make<zelCellButtons>());
  constexpr auto settings = u"CellType EffectiveCellType EffectiveHasCheckbox";
  EXPECT_EQ(propertiesOf(*cell, settings), "0|3|True");
  EXPECT_EQ(cell->EffectiveCellButtons(), column.CellButtons());
  setProperties(*cell, u"CellType HasCheckbox", {ZEL_CellType_Double, ZEL_CellBoolean_False});
  cell->setCellButtons(make<zelCellButtons>());
  EXPECT_EQ(propertiesOf(*cell, settings), "5|5|False");
  EXPECT_EQ(cell->EffectiveCellButtons(), cell->CellButtons());
  EXPECT_EQ(propertiesOf(*cell, u"SortPickList PickListAsUpperCase"), "True|False");
  EXPECT_EQ(cell->UOMNodeListFilter(), cell->UOMNodeListFilter());
}

TEST_F(Cell, ShowsItsValueByTheColumnsFormat) {
  zelNodeListColumn& column = withColumn(ZEL_CellType_Double);
  EXPECT_EQ(formatted(1234.5) + "|" + formatted(Variant::missing()), "1234.50|");
  column.setCellType(ZEL_CellType_Date);  // a zero date is blank
  EXPECT_EQ(formatted(0) + "|" + formatted({}) + "|" + formatted(Variant::date(39146)), "||Mar 05, 2007");
  column.setCellType(ZEL_CellType_String);
  EXPECT_EQ(formatted(0), "0");
  Reports reports{"zelCell."};
  EXPECT_EQ(formatted(Variant::null()), "");
  EXPECT_EQ(reports.taken(), "FormattedValue Get|94 ");
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
  cell->setCellType(ZEL_CellType_String);  // only pick lists and units have a list
  EXPECT_EQ(propertiesOf(*cell, u"Editable EffectiveNodeList SelectedNode"), "0|Nothing|Nothing");
}

TEST_F(Cell, StaysReadableWhenItsNodeHasLeftTheList) {
  withColumn(ZEL_CellType_Long);
  setProperties(*cell, u"Value ToolTipText", {7, u"tip"});
  EXPECT_EQ(cell->Node()->Key(), u"n");
  list->Clear();
  list = nullptr;
  EXPECT_EQ(propertiesOf(*cell, u"Key Value ToolTipText Node Column EffectiveCellType FormattedValue"),
            "C|7|tip|Nothing|Nothing|0|");
  EXPECT_EQ(raised([&] { cell->EffectiveHasCheckbox(); }), 91);
  EXPECT_EQ(raised([&] { cell->EffectiveCellButtons(); }), 91);
}

TEST_F(Cell, NamesAnotherNodeWhenAClientSaysSo) {
  withColumn(ZEL_CellType_Long);
  const Ref<zelNode> own = cell->Node(), other = list->Create(u"", u"other", u"");
  for (const Ref<zelNode>& node : {other, own}) {  // nor does it keep itself alive by its own one
    cell->setNode(node);
    EXPECT_EQ(cell->Node(), node);
  }
}

TEST_F(Cell, AreFoundByColumnKeyAndPosition) {
  for (int i = 1; i <= 20; ++i) list->CreateColumn(defined(u"Col" + decimalText(i)));
  const Ref<zelNode> node = list->Create(u"", u"n", u"");
  const Ref<zelCells> cells = node->Cells();
  EXPECT_EQ(spelled({cells->Count(), cells->LastItem()->Key()}), "20|Col20");
  EXPECT_EQ(cells->Item(u"COL17"), cells->Item(17));
  EXPECT_EQ(cells->FirstItem(), node->DefaultCell());
  for (const Variant& key : {Variant(u"Col21"), Variant(0), Variant(21), Variant::null()})
    EXPECT_FALSE(cells->Item(key));
  EXPECT_EQ(keysOf(*cells).substr(0, 9), "Col1 Col2");
}

}  // namespace
}  // namespace zelUtilities
