#include <gmock/gmock.h>

#include "automation/Binder.h"
#include "automation/Collection.h"
#include "foundation/ErrorWatch.h"
#include "globalization/zelGlobalization.h"

namespace zelUtilities {
namespace {

// A control of any class: properties by name, Item(1) being "Item1". What it lacks, and writing where it is
// "Fixed", fails.
class Control : public Object {
 public:
  using Properties = std::map<std::string, Variant>;

  Control(const char* type, Properties properties)
      : type_(describe<Control>(type, "")), properties_(std::move(properties)) {}

  const ClassInfo* classInfo() const override { return &type_; }
  Variant Invoke(StringView name, InvokeKind kind, std::span<Variant> arguments) override {
    const auto found = properties_.find(toUtf8(name) + (name == u"Item" ? toUtf8(toText(arguments[0])) : ""));
    if (found == properties_.end()) throw Error(ErrorNumber::ObjectDoesNotSupport);
    if (kind == InvokeKind::Put && properties_.contains("Fixed")) throw Error(ErrorNumber::PermissionDenied);
    return kind == InvokeKind::Put ? found->second = arguments.back() : found->second;
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

// Knows these texts of the section F; each is "<part|use>".
Ref<zelGlobalization> knowing(std::initializer_list<std::array<StringView, 3>> names) {
  auto texts = make<zelGlobalization>();
  texts->setCreateIfMissing(true);
  for (const auto& [name, part, use] : names)
    texts->Translate(u"F", name, part, use, u"<" + String(part) + u"|" + String(use) + u">");
  texts->setCreateIfMissing(false);
  return texts;
}

TEST(ControlTexts, PropertiesThatAControlHasAreTranslated) {
  auto texts = knowing({{u"ok", u"", u"Caption"},
                        {u"ok", u"", u"ToolTipText"},
                        {u"ok", u"", u"prefix"},
                        {u"box", u"", u"ToolTipText"}});
  const auto ok =
      control("Label", {{"Name", u"ok"}, {"Caption", u""}, {"ToolTipText", u"tip"}, {"prefix", u"p"}});
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
  constexpr auto labelled = "<k|Caption><k|ToolTipText>text", asIs = "captiontiptext";
  const std::array<const char*, 3> rows[] = {
      {"TabStrip", "Tabs", labelled},   {"SSTAB", "Tabs", labelled},
      {"Toolbar", "Buttons", labelled}, {"ListView", "ColumnHeaders", "captiontip<k|Text>"},
      {"ListView", "Tabs", asIs},       {"TreeView", "Tabs", asIs}};
  auto texts = knowing({{u"c", u"k", u"Caption"}, {u"c", u"k", u"ToolTipText"}, {u"c", u"k", u"Text"}});
  for (const auto& [type, items, expected] : rows) {
    const auto item =
        control("Item", {{"Key", u"k"}, {"Caption", u"caption"}, {"ToolTipText", u"tip"}, {"Text", u"text"}});
    const auto silent = control("Item", {{"Key", u"k"}, {"ToolTipText", u""}});
    const auto counted = control(
        "Items",
        {{"Count", std::int32_t{3}}, {"Item1", control("Item", {})}, {"Item2", silent}, {"Item3", item}});
    texts->TranslateControls(u"F", collection({control(type, {{"Name", u"c"}, {items, counted}})}));
    EXPECT_EQ((*item)["Caption"] + (*item)["ToolTipText"] + (*item)["Text"], expected) << type;
    EXPECT_EQ((*silent)["ToolTipText"], "");
  }
}

TEST(ControlTexts, OfANodeListTheColumnsAreNamed) {
  auto texts = knowing({{u"grid", u"A", u"Caption"}, {u"grid", u"k", u"Caption"}});
  const auto list = make<zelNodeList>();
  zelNodeListColumns::Definition column;
  column.sKey = u"a";
  list->CreateColumn(column);
  const auto tab = control("Tab", {{"Key", u"k"}, {"Caption", u"old"}});
  for (const Variant& nodeList : {Variant(list), Variant(u"no list")}) {
    EXPECT_EQ((*tab)["Caption"], "old");
    texts->TranslateControls(
        u"F", collection({control(
                  "TabStrip", {{"Name", u"grid"}, {"NodeList", nodeList}, {"Tabs", collection({tab})}})}));
  }
  EXPECT_EQ(list->Columns()->Item(1)->Name(), u"<A|Caption>");
  EXPECT_EQ((*tab)["Caption"], "<k|Caption>");
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
