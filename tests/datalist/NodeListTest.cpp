#include <algorithm>
#include <random>

#include "datalist/NodeListFixture.h"
#include "platform/LateBound.h"

namespace zelUtilities {
namespace {

Ref<zelNodeList> sampleList() {
  auto list = make<zelNodeList>();
  for (const auto& [parent, key] :
       {std::pair(u"", u"a"), {u"a", u"b"}, {u"a", u"c"}, {u"c", u"d"}, {u"", u"e"}})
    list->Create(parent, key, u"text " + String(key));
  return list;
}

class SampleList : public testing::Test {
 protected:
  std::string tree() const { return outline(*list->RootNodes()); }

  Ref<zelNodeList> list = sampleList();  // a(b c(d)) e
  EventLog events{*list};
  ErrorLog errors;
};

TEST(NodeList, GivesItselfATextColumnBeforeTheFirstNode) {
  auto list = make<zelNodeList>();
  EventLog events(*list);
  auto node = list->Create(u"", u"a", u"Text", std::int32_t{5}, u"image", u"tip");
  EXPECT_EQ(events.take(), "ColumnAdded \nNodeAdded a\n");
  EXPECT_EQ(list->Columns()->FirstItem()->CellType(), ZEL_CellType_String);
  EXPECT_TRUE(node->Text() == u"Text" && node->ImageKey() == u"image" && node->ToolTipText() == u"tip");
  EXPECT_EQ(node->Tag().longInteger(), 5);
  EXPECT_TRUE(node->Expanded() && !node->Changed());
  list->setDefaultExpandedState(false);
  node = list->Create(u"", u"b", u"");
  EXPECT_TRUE(!node->Expanded() && node->Tag().isEmpty());
}

TEST_F(SampleList, KeepsTheFirstNodeOfAKeyInAnyLetterCase) {
  EXPECT_EQ(list->Create(u"e", u"B", u"other"), list->Item(u"b"));
  EXPECT_EQ(events.take(), "");
  EXPECT_EQ(list->Item(u"B")->Text(), u"text b");
  EXPECT_EQ(list->Item(u"b")->ParentKey(), u"a");
  EXPECT_EQ(list->Create(u"nobody", u"x", u"")->ParentKey(), u"");
  EXPECT_EQ(tree(), "a(b c(d)) e x") << "the child of an unknown parent is a root node";
}

TEST_F(SampleList, FindsNodesByKeyAndPosition) {
  EXPECT_EQ(keysOf(*list), "a b c d e") << "in creation order, not by hierarchy";
  EXPECT_EQ(keysOf(*list->RootNodes()), "a e");
  EXPECT_EQ(list->Item(std::int32_t{4})->Key(), u"d");
  EXPECT_EQ(list->Item(u"A")->Nodes()->Item(u"C"), list->Item(u"c"));
  EXPECT_FALSE(list->Item(u"a")->Nodes()->Item(u"d")) << "a grandchild is no child";
  EXPECT_FALSE(list->RootNodes()->Item(u"b"));
  for (const Variant& key : {Variant(u"z"), Variant(std::int32_t{0}), Variant(std::int32_t{6}), Variant(),
                             Variant::null(), Variant(std::int32_t{-1})})
    EXPECT_FALSE(list->Item(key) || list->RootNodes()->Item(key));
}

TEST_F(SampleList, RemovesAParentAfterItsDescendantsUnlessCancelled) {
  events.cancelled = {"a"};
  EXPECT_FALSE(list->Remove(u"a"));
  EXPECT_EQ(events.take(), "RemovingNode a\n");
  EXPECT_EQ(tree(), "a(b c(d)) e");
  expectSound(*list);
  events.cancelled = {};
  EXPECT_TRUE(list->Remove(u"A"));
  EXPECT_EQ(events.take(),
            "RemovingNode a\nRemovingNode b\nNodeRemoved b\nRemovingNode c\nRemovingNode d\nNodeRemoved d\n"
            "NodeRemoved c\nNodeRemoved a\n");
  EXPECT_EQ(tree(), "e");
  EXPECT_FALSE(list->Remove(u"a") || list->Remove(std::int32_t{9}));
  EXPECT_EQ(events.take(), "");
  expectSound(*list);
}

TEST_F(SampleList, CancellingForAChildLeavesItBehindWithoutAParent) {
  auto c = list->Item(u"c");
  events.cancelled = {"c"};
  EXPECT_TRUE(list->Remove(u"a"));
  EXPECT_EQ(events.take(), "RemovingNode a\nRemovingNode b\nNodeRemoved b\nRemovingNode c\nNodeRemoved a\n");
  EXPECT_EQ(list->Item(u"c"), c) << "still in the list";
  EXPECT_FALSE(c->Parent() || c->DefaultCell()->Column());
  EXPECT_EQ(tree(), "e") << "but no root node";
  events.cancelled = {};
  EXPECT_EQ(list->Create(u"c", u"new", u"")->ParentKey(), u"c");
  EXPECT_TRUE(list->Remove(u"c"));
  EXPECT_EQ(keysOf(*list), "e");
  EXPECT_EQ(keysOf(*c->Nodes()), "d") << "whose parent had been cleared with its own";
}

TEST_F(SampleList, RemovesChildNodesFromTheFrontAndKeepsTheParent) {
  EXPECT_FALSE(list->RemoveChildNodes(u"nobody"));
  EXPECT_TRUE(list->RemoveChildNodes(u"a"));
  EXPECT_EQ(events.take(),
            "RemovingNode b\nNodeRemoved b\nRemovingNode c\nRemovingNode d\nNodeRemoved d\nNodeRemoved c\n");
  EXPECT_TRUE(list->RemoveChildNodes(u"a")) << "nothing to remove is no failure";
  EXPECT_EQ(tree(), "a e");
}

TEST_F(SampleList, ColumnsChangeOnlyWhileItIsEmpty) {
  EXPECT_FALSE(addColumn(*list, u"New") || list->RemoveColumn(u""));
  list->ClearColumns();
  EXPECT_EQ(events.take(), "");
  EXPECT_EQ(errors.text(),
            "zelNodeList.CreateColumn -2147221503\nzelNodeList.RemoveColumn -2147221503\n"
            "zelNodeList.ClearColumns -2147221503\n");
  EXPECT_EQ(errors.lastDescription(), "Columns can only be modified with an empty node list.");
  EXPECT_EQ(list->Columns()->Count(), 1);

  list->Clear();
  EXPECT_TRUE(addColumn(*list, u"New"));
  EXPECT_FALSE(list->RemoveColumn(u"nobody"));
  bool wasThere = false;
  Subscription watch = list->onColumnRemoved.subscribe(
      [&](StringView key) { wasThere = bool(list->Columns()->Item(Variant(key))); });
  EXPECT_TRUE(list->RemoveColumn(u"NEW") && wasThere) << "still there when the event is raised";
  list->ClearColumns();
  EXPECT_EQ(events.take(), "NodesCleared \nColumnAdded New\nColumnRemoved New\nColumnsCleared \n");
}

TEST_F(SampleList, RefreshingTellsListenersOfNodesThatExist) {
  list->RefreshedNode(u"D");
  list->RefreshedNode(u"nobody");
  EXPECT_EQ(events.take(), "RefreshedNode d\n");
}

TEST(NodeList, RemovedNodesStayReadableButDetached) {
  auto list = sampleList();
  auto c = list->Item(u"c"), d = list->Item(u"d");
  list->Clear();
  EXPECT_EQ(list->Count(), 0);
  EXPECT_FALSE(c->Parent() || d->Parent());
  EXPECT_TRUE(d->ParentKey().empty() && d->Key() == u"d");
  list->Create(u"", u"d", u"another");
  EXPECT_EQ(c->Nodes()->Item(u"D"), d) << "the children of a removed node are still under it";
  EXPECT_EQ(c->Nodes()->Item(std::int32_t{1}), d);
  list = nullptr;
  EXPECT_EQ(d->Text(), u"text d");
}

TEST(NodeList, CollectionsOutliveTheirOwners) {
  auto list = sampleList();
  auto roots = list->RootNodes();
  auto children = list->Item(u"a")->Nodes();
  auto walk = list->NewEnum();
  list->Clear();
  list = nullptr;
  EXPECT_EQ(roots->Count(), 0);
  EXPECT_EQ(outline(*children), "b c(d)");
  EXPECT_EQ(children->Item(u"B")->Text(), u"text b");
  Variant item;
  EXPECT_FALSE(walk->next(item));
}

TEST(NodeList, ClonesColumnsNodesAndWhatTheirCellsCarry) {
  auto list = make<zelNodeList>();
  addColumn(*list, u"Name")->setFormatString(u"@@@");
  zelNodeListColumn& size = *addColumn(*list, u"Size", ZEL_CellType_Double);
  auto shared = make<zelNodeList>();
  size.setNodeList(shared);
  list->setDefaultExpandedState(false);
  auto a = list->Create(u"", u"a", u"A", Variant(shared), u"image", u"tip");
  auto cell = list->Create(u"a", u"b", u"B")->Cells()->Item(u"Size");
  cell->setValue(2.5);
  cell->setToolTipText(u"cell tip");
  cell->setCellType(ZEL_CellType_Long);
  cell->setSortKey(u"sorted");
  cell->setChecked(true);

  auto clone = list->Clone();
  a->setText(u"changed");
  EXPECT_EQ(outline(*clone->RootNodes()), "a(b)");
  const auto columns = clone->Columns();
  EXPECT_EQ(columns->Item(u"Size")->Description(), u"2") << "the decimals, in the description's place";
  EXPECT_EQ(columns->Item(u"Size")->NodeList(), shared);
  EXPECT_EQ(columns->Item(u"Name")->FormatString(), u"") << "not carried over";
  EXPECT_EQ(clone->Item(u"a")->Tag().object(), shared.get());
  EXPECT_EQ(clone->Item(u"a")->Text() + u" " + clone->Item(u"a")->ImageKey(), u"A image");
  EXPECT_TRUE(clone->Item(u"a")->Expanded());
  auto copy = clone->Item(u"b")->Cells()->Item(u"Size");
  EXPECT_EQ(copy->Value().doubleValue(), 2.5);
  EXPECT_EQ(copy->ToolTipText() + u"|" + copy->SortKey(), u"cell tip|");
  EXPECT_EQ(copy->CellType(), ZEL_CellType_Long);
  EXPECT_FALSE(copy->Checked());
  expectSound(*clone);
}

TEST(NodeList, LeavesAColumnWithAnObjectTagOutOfItsClone) {
  auto list = make<zelNodeList>();
  addColumn(*list, u"A");
  addColumn(*list, u"B")->setTag(Variant(list->RootNodes()));
  list->Create(u"", u"n", u"N");
  ErrorLog errors;
  auto clone = list->Clone();
  EXPECT_EQ(keysOf(*clone->Columns()), "A");
  EXPECT_EQ(clone->Item(u"n")->Text(), u"N");
  EXPECT_EQ(errors.text(), "zelNodeListColumns.Create 424\nzelNode.CopyCells 91\n");
}

TEST_F(SampleList, EndsAPartialCloneAtATextThatIsNone) {
  list->Item(u"c")->DefaultCell()->setValue(Variant::null());
  EXPECT_EQ(keysOf(*list->Clone()), "a b");
  EXPECT_EQ(errors.text(), "zelNodeList.Clone 94\n");
}

TEST(NodeList, LogsAListenerThatThrowsAndGoesOn) {
  auto list = make<zelNodeList>();
  Subscription bad = list->onNodeAdded.subscribe([](const Ref<zelNode>&) { throw Error(5); });
  Subscription worse = list->onRemovingNode.subscribe([](const Ref<zelNode>&, bool&) { throw 1; });
  EventLog events(*list);
  ErrorLog errors;
  EXPECT_TRUE(list->Create(u"", u"a", u""));
  EXPECT_TRUE(list->Remove(u"a"));
  EXPECT_EQ(events.take(), "ColumnAdded \nNodeAdded a\nRemovingNode a\nNodeRemoved a\n");
  EXPECT_EQ(errors.text(), "zelNodeList.Create 5\nzelNodeList.Remove 51\n");
}

TEST_F(SampleList, SurvivesListenersThatChangeItMeanwhile) {
  Subscription watch = list->onRemovingNode.subscribe([&](const Ref<zelNode>& node, bool&) {
    if (node->Key() == u"a") list->Remove(u"c");
    if (node->Key() == u"b") list->Create(u"a", u"late", u"");
    if (node->Key() == u"late") list->Remove(u"e");
  });
  EXPECT_TRUE(list->Remove(u"a"));
  EXPECT_EQ(list->Count(), 0);
}

TEST_F(SampleList, SurvivesAListenerThatIsFaster) {
  int calls = 0;
  Subscription watch = list->onRemovingNode.subscribe([&](const Ref<zelNode>& node, bool&) {
    if (calls++ == 0) list->Remove(Variant(node->Key()));
  });
  EXPECT_FALSE(list->Remove(u"e"));
  EXPECT_EQ(tree(), "a(b c(d))");
  expectSound(*list);
}

TEST(NodeList, OutlivesItsLastReferenceWhileItRaisesAnEvent) {
  auto list = sampleList();
  zelNodeList* raw = list.get();
  Subscription watch = raw->onNodeRemoved.subscribe([&](StringView) { list = nullptr; });
  EXPECT_TRUE(raw->Remove(u"e"));
}

TEST(NodeList, EnumerationGoesOnWithTheNodesThatAreThere) {
  auto list = make<zelNodeList>();
  for (int i = 0; i < 200; ++i) list->Create(u"", u"n" + decimalText(i), u"");
  const Ref<Enumerator> walk = list->NewEnum();
  Variant item;
  for (int i = 0; i < 100; ++i) ASSERT_TRUE(walk->next(item));
  for (int i = 20; i < 150; ++i) EXPECT_TRUE(list->Remove(Variant(u"n" + decimalText(i))));
  list->Create(u"", u"last", u"");
  int met = 0;
  while (walk->next(item)) ++met;
  EXPECT_EQ(met, 51) << "n150 to n199 and the new one";
  EXPECT_EQ(list->Item(std::int32_t{21})->Key(), u"n150");
  EXPECT_EQ(list->RootNodes()->Item(std::int32_t{71})->Key(), u"last");
}

TEST(NodeList, AMillionLevelsNeedNoStack) {
  constexpr int levels = 1'000'000;
  auto list = make<zelNodeList>();
  String parent;
  for (int i = 0; i < levels; ++i) {
    String key = decimalText(i);
    list->Create(parent, key, u"x");
    parent = std::move(key);
  }
  auto clone = list->Clone();
  EXPECT_EQ(clone->Count(), levels);
  EXPECT_EQ(clone->Item(Variant(parent))->ParentKey(), decimalText(levels - 2));
  auto top = clone->Item(u"0");
  clone->Clear();
  clone = nullptr;
  EXPECT_EQ(top->Nodes()->Item(u"1")->Text(), u"x") << "a node that is held keeps those below it";
  top = nullptr;
  EXPECT_TRUE(list->Clone());
  EXPECT_TRUE(list->Remove(u"0"));
  EXPECT_EQ(list->Count(), 0);
}

// Random operations next to a plain list of keys and parents; both must agree after each.
TEST(NodeList, AgreesWithAPlainModel) {
  auto list = make<zelNodeList>();
  std::vector<std::pair<String, String>> model;  // key and parent's key, in creation order
  std::minstd_rand random(7);
  for (int step = 0; step < 6000; ++step) {
    const String key = decimalText(static_cast<int>(random() % 400));
    const bool isThere = std::ranges::any_of(model, [&](const auto& node) { return node.first == key; });
    if (random() % 5 < 3) {
      const std::size_t at = random() % 4 == 0 ? 0 : random() % (model.size() + 1);
      const String parent = at == 0 ? String() : model[at - 1].first;
      list->Create(parent, key, u"");
      if (!isThere) model.emplace_back(key, parent);
    } else {
      EXPECT_EQ(list->Remove(Variant(key)), isThere);
      std::set<String> leaving{key};
      std::erase_if(model, [&](const auto& node) {
        if (leaving.contains(node.second)) leaving.insert(node.first);
        return leaving.contains(node.first);
      });
    }
    ASSERT_EQ(static_cast<std::size_t>(list->Count()), model.size());
    if (model.empty()) continue;
    const std::size_t at = random() % model.size();
    const zelNode* node = list->item(static_cast<std::int32_t>(at) + 1);
    ASSERT_EQ(node->Key(), model[at].first);
    ASSERT_EQ(node->ParentKey(), model[at].second);
  }
  expectSound(*list);
}

TEST(NodeList, AnswersLateBoundCallsAsAScriptMakesThem) {
  const LateBound list(zelNodeList::describeClass().create());
  list(u"createcolumn", u"Data", Variant::missing(), Variant::missing(), std::int32_t{8});
  list(u"Create", u"", u"a", u"A");
  const LateBound column = list.object(u"Columns", u"data");
  EXPECT_EQ(column.number(u"Width"), 64);
  EXPECT_EQ(raised([&] { column.put(u"Width", std::int32_t{70000}); }), 6);
  EXPECT_EQ(list.object(u"", u"A").text(u"Text"), u"A");
}

}  // namespace
}  // namespace zelUtilities
