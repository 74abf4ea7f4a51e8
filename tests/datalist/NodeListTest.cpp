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
  ~SampleList() override { expectSound(*list); }
  std::string tree() const { return outline(*list->RootNodes()); }

  Ref<zelNodeList> list = sampleList();  // a(b c(d)) e
  EventLog events{*list};
  Reports reports{"zelNodeList.", Reports::Description};
};

TEST(NodeList, GivesItselfATextColumnBeforeTheFirstNode) {
  auto list = make<zelNodeList>();
  EventLog events(*list);
  auto node = list->Create(u"", u"a", u"Text", 5, u"image", u"tip");
  EXPECT_EQ(events.take(), "+| +a ");
  EXPECT_EQ(list->Columns()->FirstItem()->CellType(), ZEL_CellType_String);
  EXPECT_EQ(propertiesOf(*node, u"Text Tag ImageKey ToolTipText Expanded Changed"),
            "Text|5|image|tip|True|False");
  list->setDefaultExpandedState(false);
  EXPECT_EQ(propertiesOf(*list->Create(u"", u"b", u""), u"Tag Expanded"), "Empty|False");
}

TEST_F(SampleList, KeepsTheFirstNodeOfAKeyInAnyLetterCase) {
  EXPECT_EQ(list->Create(u"e", u"B", u"other"), list->Item(u"b"));
  EXPECT_EQ(events.take(), "");
  EXPECT_EQ(propertiesOf(*list->Item(u"B"), u"Text ParentKey"), "text b|a");
  EXPECT_EQ(list->Create(u"nobody", u"x", u"")->ParentKey(), u"");
  EXPECT_EQ(tree(), "a(b c(d)) e x") << "the child of an unknown parent is a root node";
}

TEST_F(SampleList, FindsNodesByKeyAndPositionAndRefreshesThoseThatExist) {
  EXPECT_EQ(keysOf(*list), "a b c d e") << "in creation order, not by hierarchy";
  EXPECT_EQ(keysOf(*list->RootNodes()), "a e");
  EXPECT_EQ(list->Item(4)->Key(), u"d");
  EXPECT_EQ(list->Item(u"A")->Nodes()->Item(u"C"), list->Item(u"c"));
  EXPECT_FALSE(list->Item(u"a")->Nodes()->Item(u"d")) << "a grandchild is no child";
  EXPECT_FALSE(list->RootNodes()->Item(u"b"));
  for (const Variant& key : {Variant(u"z"), Variant(0), Variant(6), Variant(), Variant::null(), Variant(-1)})
    EXPECT_FALSE(list->Item(key) || list->RootNodes()->Item(key));
  list->RefreshedNode(u"D");
  list->RefreshedNode(u"nobody");
  EXPECT_EQ(events.take(), "!d ");
}

TEST_F(SampleList, RemovesAParentAfterItsDescendantsUnlessCancelled) {
  events.cancelled = {"a"};
  EXPECT_FALSE(list->Remove(u"a"));
  EXPECT_EQ(events.take() + tree(), "?a a(b c(d)) e");
  expectSound(*list);
  events.cancelled = {};
  EXPECT_TRUE(list->Remove(u"A"));
  EXPECT_EQ(events.take() + tree(), "?a ?b -b ?c ?d -d -c -a e");
  EXPECT_FALSE(list->Remove(u"a") || list->Remove(9));
  EXPECT_EQ(events.take(), "");
}

TEST_F(SampleList, CancellingForAChildLeavesItBehindWithoutAParent) {
  auto c = list->Item(u"c");
  events.cancelled = {"c"};
  EXPECT_TRUE(list->Remove(u"a"));
  EXPECT_EQ(events.take() + tree(), "?a ?b -b ?c -a e") << "no root node";
  EXPECT_EQ(list->Item(u"c"), c) << "but still in the list";
  EXPECT_FALSE(c->Parent() || c->DefaultCell()->Column());
  events.cancelled = {};
  EXPECT_EQ(list->Create(u"c", u"new", u"")->ParentKey(), u"c");
  EXPECT_TRUE(list->Remove(u"c"));
  EXPECT_EQ(keysOf(*list), "e");
  EXPECT_EQ(keysOf(*c->Nodes()), "d") << "whose parent had been cleared with its own";
}

TEST_F(SampleList, RemovesChildNodesFromTheFrontAndKeepsTheParent) {
  EXPECT_FALSE(list->RemoveChildNodes(u"nobody"));
  EXPECT_TRUE(list->RemoveChildNodes(u"a"));
  EXPECT_EQ(events.take() + tree(), "?b -b ?c ?d -d -c a e");
  EXPECT_TRUE(list->RemoveChildNodes(u"a")) << "nothing to remove is no failure";
}

TEST_F(SampleList, ColumnsChangeOnlyWhileItIsEmpty) {
  EXPECT_FALSE(list->CreateColumn(defined(u"New")) || list->RemoveColumn(u""));
  list->ClearColumns();
  const std::string refused = "|-2147221503|Columns can only be modified with an empty node list. ";
  EXPECT_EQ(events.take() + reports.taken(),
            "CreateColumn" + refused + "RemoveColumn" + refused + "ClearColumns" + refused);
  EXPECT_EQ(list->Columns()->Count(), 1);

  list->Clear();
  EXPECT_TRUE(list->CreateColumn(defined(u"New")));
  EXPECT_FALSE(list->RemoveColumn(u"nobody"));
  bool wasThere = false;
  Subscription watch = list->onColumnRemoved.subscribe(
      [&](StringView key) { wasThere = bool(list->Columns()->Item(Variant(key))); });
  EXPECT_TRUE(list->RemoveColumn(u"NEW") && wasThere) << "still there when the event is raised";
  list->ClearColumns();
  EXPECT_EQ(events.take(), "clear +|New -|New clear| ");
}

TEST(NodeList, WhatClientsHoldStaysReadableWithoutTheList) {
  auto list = sampleList();
  const auto c = list->Item(u"c"), d = list->Item(u"d");
  const auto roots = list->RootNodes(), children = list->Item(u"a")->Nodes();
  const auto walk = list->NewEnum();
  list->Clear();
  EXPECT_EQ(spelled({list->Count(), c->Parent(), d->Parent(), d->ParentKey()}), "0|Nothing|Nothing|");
  list->Create(u"", u"d", u"another");
  EXPECT_TRUE(c->Nodes()->Item(u"D") == d && c->Nodes()->Item(1) == d) << "a child of a removed node";
  list->Clear();
  list = nullptr;
  EXPECT_EQ(spelled({d->Key(), d->Text(), children->Item(u"B")->Text()}), "d|text d|text b");
  EXPECT_EQ(outline(*children) + outline(*roots), "b c(d)");
  Variant item;
  EXPECT_FALSE(walk->next(item));
}

TEST(NodeList, ClonesColumnsNodesAndWhatTheirCellsCarry) {
  auto list = make<zelNodeList>(), shared = make<zelNodeList>();
  list->CreateColumn(defined(u"Name", ZEL_CellType_String))->setFormatString(u"@@@");
  list->CreateColumn(defined(u"Size"))->setNodeList(shared);
  list->setDefaultExpandedState(false);
  auto a = list->Create(u"", u"a", u"A", shared, u"image", u"tip");
  setProperties(*list->Create(u"a", u"b", u"B")->Cells()->Item(u"Size"),
                u"Value ToolTipText CellType SortKey Checked", {2.5, u"cell tip", 3, u"k", true});

  auto clone = list->Clone();
  a->setText(u"changed");
  EXPECT_EQ(outline(*clone->RootNodes()), "a(b)");
  const auto size = clone->Columns()->Item(u"Size"), name = clone->Columns()->Item(u"Name");
  EXPECT_EQ(size->Description(), u"2") << "the decimals, in the description's place";
  EXPECT_EQ(name->FormatString(), u"") << "not carried over";
  EXPECT_TRUE(size->NodeList() == shared && clone->Item(u"a")->Tag().object() == shared.get());
  EXPECT_EQ(propertiesOf(*clone->Item(u"a"), u"Text ImageKey ToolTipText Expanded"), "A|image|tip|True");
  EXPECT_EQ(
      propertiesOf(*clone->Item(u"b")->Cells()->Item(u"Size"), u"Value ToolTipText CellType SortKey Checked"),
      "2.5|cell tip|3||False");
  expectSound(*clone);
}

TEST_F(SampleList, EndsAPartialCloneAtATextThatIsNone) {
  list->Item(u"c")->DefaultCell()->setValue(Variant::null());
  EXPECT_EQ(keysOf(*list->Clone()), "a b");
  EXPECT_EQ(reports.taken(), "Clone|94|Invalid use of Null ");
}

TEST_F(SampleList, LeavesAColumnWithAnObjectTagOutOfItsClone) {
  list->Clear();
  list->CreateColumn(defined(u"B"))->setTag(list->RootNodes());
  list->Create(u"", u"n", u"N");
  const auto clone = list->Clone();
  EXPECT_EQ(spelled({clone->Columns()->Count(), clone->Item(u"n")->Text()}), "1|N");
  EXPECT_EQ(reports.taken(),
            "zelNodeListColumns.Create|424|Object required zelNode.CopyCells|91|Object variable not set ");
}

TEST_F(SampleList, LogsAListenerThatThrowsAndGoesOn) {
  Subscription bad = list->onNodeAdded.subscribe([](const Ref<zelNode>&) { throw Error(5); });
  Subscription worse = list->onRemovingNode.subscribe([](const Ref<zelNode>&, bool&) { throw 1; });
  EXPECT_TRUE(list->Create(u"", u"f", u"") && list->Remove(u"f"));
  EXPECT_EQ(events.take(), "+f ?f -f ");
  EXPECT_EQ(reports.taken(), "Create|5|Invalid procedure call or argument Remove|51|Internal error ");
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
  EXPECT_EQ(spelled({list->Item(21)->Key(), list->RootNodes()->Item(71)->Key()}), "n150|last");
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
  EXPECT_EQ(spelled({clone->Count(), clone->Item(Variant(parent))->ParentKey()}), "1000000|999998");
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
  list(u"createcolumn", u"Data", Variant::missing(), Variant::missing(), 8);
  list(u"Create", u"", u"a", u"A");
  const LateBound column = list.object(u"Columns", u"data");
  EXPECT_EQ(column.number(u"Width"), 64);
  EXPECT_EQ(raised([&] { column.put(u"Width", 70000); }), 6);
  EXPECT_EQ(list.object(u"", u"A").text(u"Text"), u"A");
}

}  // namespace
}  // namespace zelUtilities
