#include <gmock/gmock.h>

#include "automation/Binder.h"
#include "automation/Collection.h"
#include "foundation/ErrorWatch.h"
#include "globalization/zelGlobalization.h"

namespace zelUtilities {
namespace {

// A control of any class: properties by name; reading one that it lacks, and writing "Fixed" ones, fails.
class Control : public Object {
 public:
  using Properties = std::map<std::string, Variant>;

  Control(const char* type, Properties properties)
      : type_(describe<Control>(type, "")), properties_(std::move(properties)) {}

  const ClassInfo* classInfo() const override { return &type_; }
  Variant Invoke(StringView name, InvokeKind kind, std::span<Variant> arguments) override {
    const auto found = properties_.find(toUtf8(name));
    if (found == properties_.end()) throw Error(ErrorNumber::ObjectDoesNotSupport);
    if (kind == InvokeKind::Put) {
      if (properties_.contains("Fixed")) throw Error(ErrorNumber::PermissionDenied);
      found->second = arguments.back();
    }
    return found->second;
  }
  std::string operator[](const char* name) const { return toUtf8(toText(properties_.at(name))); }

 private:
  ClassInfo type_;
  Properties properties_;
};

Ref<Control> control(const char* type, Control::Properties properties) {
  return make<Control>(type, std::move(properties));
}

Ref<Collection> collection(std::initializer_list<Ref<Object>> items) {
  auto all = make<Collection>();
  for (const Ref<Object>& item : items) all->Add(item);
  return all;
}

// A collection without an enumerator.
struct CountedItems : Object {
  static const ClassInfo& describeClass() {
    static const ClassInfo info = describe<CountedItems>("CountedItems", "")
                                      .property("Count", &CountedItems::Count, "")
                                      .item("Item", &CountedItems::Item, {"Index"}, "");
    return info;
  }
  const ClassInfo* classInfo() const override { return &describeClass(); }
  std::int32_t Count() const { return items->Count(); }
  Variant Item(std::int32_t Index) const { return items->Item(Index); }
  Ref<Collection> items;
};

// Every text that is asked for becomes "<section|control|part|use>", whatever stands there.
Ref<zelGlobalization> answering(std::initializer_list<const char16_t*> keys) {
  auto texts = make<zelGlobalization>();
  texts->setCreateIfMissing(true);
  for (StringView key : keys) {
    StringView fields[4];
    for (StringView& field : fields) {
      field = key.substr(0, key.find(u'|'));
      key.remove_prefix(std::min(key.size(), field.size() + 1));
    }
    texts->Translate(fields[0], fields[1], fields[2], fields[3],
                     u"<" + String(fields[2]) + u"|" + String(fields[3]) + u">");
  }
  texts->setCreateIfMissing(false);
  return texts;
}

TEST(ControlTexts, PropertiesThatAControlHasAreTranslated) {
  auto texts = answering({u"F|ok||Caption", u"F|ok||ToolTipText", u"F|ok||prefix", u"F|box||ToolTipText"});
  const auto ok = control("CommandButton",
                          {{"Name", u"ok"}, {"Caption", u""}, {"ToolTipText", u"tip"}, {"prefix", u"p"}});
  const auto box = control("TextBox", {{"Name", u"BOX"}, {"ToolTipText", u""}, {"Text", u"typed"}});
  const auto unknown = control("Label", {{"Name", u"unknown"}, {"Caption", u"stays"}});
  const auto nameless = control("Label", {{"Caption", u"stays"}});
  const auto fixed = control("Label", {{"Name", u"ok"}, {"Caption", u"stays"}, {"Fixed", true}});
  texts->TranslateControls(u"F", collection({nameless, fixed, ok, {}, unknown, box}));
  EXPECT_EQ((*ok)["Caption"] + (*ok)["ToolTipText"] + (*ok)["prefix"], "<|Caption><|ToolTipText><|prefix>");
  EXPECT_EQ((*box)["ToolTipText"] + (*box)["Text"], "typed");  // an empty tool tip stays empty
  EXPECT_EQ((*unknown)["Caption"] + (*nameless)["Caption"] + (*fixed)["Caption"], "staysstaysstays");
}

TEST(ControlTexts, ItemsAreTranslatedByTheControlsClass) {
  struct Row {
    const char* type;
    const char* items;
    const char* expected;  // of Caption, ToolTipText and Text
  };
  const Row rows[] = {{"TabStrip", "Tabs", "<k|Caption><k|ToolTipText>text"},
                      {"SSTAB", "Tabs", "<k|Caption><k|ToolTipText>text"},
                      {"Toolbar", "Buttons", "<k|Caption><k|ToolTipText>text"},
                      {"ListView", "ColumnHeaders", "captiontip<k|Text>"},
                      {"ListView", "Tabs", "captiontiptext"},
                      {"TreeView", "Tabs", "captiontiptext"}};
  auto texts = answering({u"F|c|k|Caption", u"F|c|k|ToolTipText", u"F|c|k|Text", u"F|c|none|ToolTipText"});
  for (const Row& row : rows) {
    const auto item =
        control("Item", {{"Key", u"k"}, {"Caption", u"caption"}, {"ToolTipText", u"tip"}, {"Text", u"text"}});
    const auto silent = control("Item", {{"Key", u"none"}, {"ToolTipText", u""}});
    const auto counted = make<CountedItems>();
    counted->items = collection({control("Item", {}), silent, item});
    texts->TranslateControls(u"F", collection({control(row.type, {{"Name", u"c"}, {row.items, counted}})}));
    EXPECT_EQ((*item)["Caption"] + (*item)["ToolTipText"] + (*item)["Text"], row.expected) << row.type;
    EXPECT_EQ((*silent)["ToolTipText"], "");
  }
}

TEST(ControlTexts, OfANodeListTheColumnsAreNamed) {
  auto texts = answering({u"F|grid|A|Caption", u"F|grid|k|Caption"});
  const auto list = make<zelNodeList>();
  zelNodeListColumns::Definition column;
  column.sName = u"old";
  for (const char16_t* key : {u"a", u"b"}) {
    column.sKey = key;
    list->CreateColumn(column);
  }
  const auto tab = control("Tab", {{"Key", u"k"}, {"Caption", u"old"}});
  const auto named = [&](const char* name, const Variant& nodeList) {
    return control("TabStrip",
                   {{"Name", fromUtf8(name)}, {"NodeList", nodeList}, {"Tabs", collection({tab})}});
  };
  texts->TranslateControls(u"F", collection({named("grid", list)}));
  EXPECT_EQ(list->Columns()->Item(1)->Name(), u"<A|Caption>");
  EXPECT_EQ(list->Columns()->Item(2)->Name(), u"old");
  EXPECT_EQ((*tab)["Caption"], "old");
  texts->TranslateControls(u"F", collection({named("grid", u"no list")}));
  EXPECT_EQ((*tab)["Caption"], "<k|Caption>");
}

TEST(ControlTexts, CreateIfMissingTakesTheTextsThatStandThere) {
  auto texts = make<zelGlobalization>();
  texts->setCreateIfMissing(true);
  texts->AddLanguage(u"en", u"");
  texts->AddLanguage(u"de", u"");
  texts->TranslateControls(u"F", collection({control("Label", {{"Name", u"l"}, {"Caption", u"Name:"}})}));
  EXPECT_EQ(texts->Translate(u"F", u"l"), u"Name:");
  texts->SelectLanguage(u"de");
  EXPECT_EQ(texts->Translate(u"F", u"l"), u"Missing");
}

TEST(ControlTexts, WhatIsNoCollectionIsLogged) {
  std::string log;
  const ErrorWatch watch([&](const ErrorReport& report) {
    log += toUtf8(report.source) + " " + std::to_string(report.number) + "\n";
  });
  make<zelGlobalization>()->TranslateControls(u"F", {});
  make<zelGlobalization>()->TranslateControls(u"F", control("Label", {}));
  EXPECT_EQ(log, "zelTranslates.TranslateControls 91\nzelTranslates.TranslateControls 438\n");
}

}  // namespace
}  // namespace zelUtilities
