#include "system/zelControls.h"

#include <gmock/gmock.h>

#include "automation/ArrayData.h"
#include "automation/Collection.h"
#include "foundation/ErrorWatch.h"
#include "support/RaisedError.h"
#include "support/RecordingDesktop.h"
#include "support/TestControl.h"

namespace zelUtilities {
namespace {

using testing::ElementsAre;

class ZelControls : public testing::Test {
 protected:
  ~ZelControls() override { controls->Clear(); }  // form and controls hold each other

  Ref<TestControl> add(StringView type, const String& name, const Ref<Object>& container) {
    const auto added = control(
        type,
        {{u"Name", name}, {u"Container", container}, {u"Enabled", true}, {u"BackColor", std::int32_t{1}}});
    controls->Add(added);
    return added;
  }
  // The names of the controls that are disabled, in order.
  std::string disabled() const {
    std::string names;
    for (std::int32_t i = 1; i <= controls->Count(); ++i) {
      const auto& one = static_cast<TestControl&>(*controls->Item(i).object());
      if (one.text(u"Enabled") == "False") names += one.text(u"Name") + " ";
    }
    return names;
  }

  const Ref<Collection> controls = make<Collection>();
  // A program's own form, told by its Controls.
  const Ref<TestControl> form =
      control(u"Form1", {{u"Name", u"Form1"}, {u"Controls", controls}, {u"hWnd", std::int32_t{7}}});
  RecordingDesktop desktop;
  std::vector<std::string> logged;
  ErrorWatch watch{[this](const ErrorReport& report) {
    logged.push_back(toUtf8(report.source) + "|" + std::to_string(report.number));
  }};
};

TEST_F(ZelControls, ScrollBarsAreBitsOfTheWindowsStyle) {
  for (const std::int32_t style : {0, 0x00200000, 0x00100000, -1}) {
    desktop.style = style;
    EXPECT_EQ(zel_HasVerticalScroll(7), style == -1 || style == 0x00200000);
    EXPECT_EQ(zel_HasHorizontalScroll(7), style == -1 || style == 0x00100000);
    EXPECT_FALSE(zel_HasVerticalScroll(8) || zel_HasHorizontalScroll(8));
  }
}

TEST_F(ZelControls, WindowsAreStackedByNumberOrByTheirHWnd) {
  zel_SetAlwaysOnTopMode(std::int32_t{12});
  zel_SetAlwaysOnTopMode(form, false);
  zel_SetAlwaysAbove(form, 55);
  EXPECT_EQ(desktop.calls, "12 -1 19\n7 -2 19\n7 55 83\n");
  for (const Variant& other : {Variant(std::int16_t{12}), Variant(u"12"), Variant()})
    EXPECT_EQ(raisedError([&] { zel_SetAlwaysOnTopMode(other); }), "424||Object required");
  EXPECT_EQ(raisedError([&] { zel_SetAlwaysAbove(control(u"Label", {}), 1); }).substr(0, 3), "438");
  EXPECT_EQ(raisedError([&] { zel_SetAlwaysAbove(nullptr, 1); }).substr(0, 2), "91");
}

TEST_F(ZelControls, AlignedButtonsKeepTheirMarginsFromTheEdges) {
  const auto button = control(u"CommandButton", {});
  EXPECT_EQ(zel_AlignButton(button, 6000, 4000), 4800);
  EXPECT_EQ(button->text(u"Left") + " " + button->text(u"Top") + " " + button->text(u"Width") + " " +
                button->text(u"Height"),
            "4800 3565 1080 315");
  EXPECT_EQ(zel_AlignButton(button, 100.5F, 100, 10, 20, 3, 0.25F), 90.25F);
  EXPECT_EQ(button->text(u"Top"), "77");
}

TEST_F(ZelControls, TextAndListControlsShowTheirStatusByColour) {
  for (const StringView type : {u"TextBox", u"ComboBox", u"ListView", u"FOLDERTreeView"}) {
    const auto box = control(type, {{u"Enabled", true}, {u"BackColor", std::int32_t{1}}});
    zel_SetControlStatus(box, false);
    EXPECT_EQ(box->text(u"Enabled") + box->text(u"BackColor"), "False-2147483633");
    zel_SetControlStatus(box, true);
    EXPECT_EQ(box->text(u"Enabled") + box->text(u"BackColor"), "True-2147483643");
  }
  for (const StringView type : {u"Label", u"listview", u"Frame"}) {
    const auto other = control(type, {{u"Enabled", true}, {u"BackColor", std::int32_t{1}}});
    zel_SetControlStatus(other, false);
    EXPECT_EQ(other->text(u"Enabled") + other->text(u"BackColor"), "False1");
  }
  const auto colourOnly = control(u"TextBox", {{u"BackColor", std::int32_t{1}}});
  zel_SetControlStatus(colourOnly, true);
  EXPECT_EQ(colourOnly->text(u"BackColor"), "-2147483643");
  zel_SetControlStatus(nullptr, true);
}

TEST_F(ZelControls, ContainersAreFoundByNameUpToTheForm) {
  const auto frame = add(u"Frame", u"fraOuter", form);
  const auto text = add(u"TextBox", u"txt", add(u"Frame", u"fraInner", frame));
  EXPECT_TRUE(zel_InContainer(text, nullptr) && zel_InContainer(nullptr, nullptr));
  EXPECT_TRUE(zel_InContainer(text, frame) && zel_InContainer(text, form) && zel_InContainer(text, text));
  EXPECT_TRUE(zel_InContainer(text, control(u"Frame", {{u"Name", u"FRAOUTER"}})));
  EXPECT_FALSE(zel_InContainer(text, add(u"Frame", u"other", form)));
  EXPECT_FALSE(zel_InContainer(form, frame));
  EXPECT_EQ(logged.size(), 0u);
  EXPECT_FALSE(zel_InContainer(control(u"Label", {{u"Name", u"lost"}}), frame));
  frame->properties[u"Container"] = text;
  EXPECT_FALSE(zel_InContainer(text, control(u"Frame", {{u"Name", u"none"}})));
  frame->properties[u"Container"] = nullptr;
  EXPECT_FALSE(zel_InContainer(nullptr, frame));
  const std::string source = "zelControls.zel_InContainer|";
  EXPECT_THAT(logged, ElementsAre(source + "438", source + "5", source + "91"));
}

TEST_F(ZelControls, AFrameIsDisabledWithAllThatLiesInIt) {
  const auto outer = add(u"Frame", u"A", form);
  const auto inner = add(u"Frame", u"B", outer);
  const auto text = add(u"TextBox", u"b1", inner);
  add(u"Label", u"a1", outer);
  add(u"Label", u"beside", form);
  zel_EnableFrame(form, outer, false);
  EXPECT_EQ(disabled(), "A B b1 a1 ");
  EXPECT_EQ(text->text(u"BackColor") + inner->text(u"BackColor"), "-21474836331");
  zel_EnableFrame(form, outer, true);
  zel_EnableFrame(controls, inner, false);  // a list of controls in place of the form
  EXPECT_EQ(disabled(), "B b1 ");
  zel_EnableFrame(form, nullptr, false);
  EXPECT_EQ(disabled(), "A B b1 a1 beside ");
  EXPECT_EQ(logged.size(), 0u);
}

TEST_F(ZelControls, FramesOfAnArrayAreOneByTheirName) {
  const auto outer = add(u"Frame", u"A", form);
  const auto elsewhere = add(u"Frame", u"B", form);  // before the one inside
  add(u"Label", u"x", elsewhere);
  add(u"Frame", u"B", outer);
  zel_EnableFrame(form, outer, false);
  EXPECT_EQ(disabled(), "A x B ");
  EXPECT_EQ(elsewhere->text(u"Enabled"), "True");
}

TEST_F(ZelControls, WhatCannotBeEnabledIsLoggedAndTheRestGoesOn) {
  const auto outer = add(u"Frame", u"A", form);
  add(u"Frame", u"B", outer)->properties.erase(u"Enabled");
  add(u"Label", u"", outer)->properties.erase(u"Name");
  add(u"Label", u"a1", outer);
  zel_EnableFrame(form, outer, false);
  EXPECT_EQ(disabled(), "A a1 ");
  outer->properties.erase(u"Enabled");
  zel_EnableFrame(form, outer, true);  // ends with the frame itself
  zel_EnableFrame(nullptr, nullptr, true);
  EXPECT_EQ(disabled(), "a1 ");
  EXPECT_THAT(logged, ElementsAre("zelControls.zel_EnableFrame|438", "zelControls.zel_InContainer|438",
                                  "zelControls.zel_EnableFrame|438", "zelControls.zel_EnableFrame|91"));
}

TEST_F(ZelControls, ItemsAreFoundAtTheirFirstPosition) {
  const auto combo = [](std::vector<Variant> items) {
    const auto count = static_cast<std::int32_t>(items.size());
    const Variant all = ArrayData::ofVariants(std::move(items));
    return control(u"ComboBox", {{u"ListCount", count}, {u"List", all}, {u"ItemData", all}});
  };
  EXPECT_EQ(zel_FindItem(combo({}), u"a"), -1);
  EXPECT_EQ(zel_FindItem(combo({u"Alpha", u"alpha"}), u"ALPHA"), 0);
  EXPECT_EQ(zel_FindItem(combo({u"Alpha", u"\u00C4b"}), u"\u00E4B"), 1);
  EXPECT_EQ(zel_FindItemData(combo({std::int32_t{5}, std::int32_t{-6}}), -6), 1);
  EXPECT_EQ(zel_FindItemData(combo({std::int32_t{5}}), 6), -1);
  std::vector<Variant> items(32767, u"1");
  EXPECT_EQ(zel_FindItem(combo(items), u"2"), -1);
  items.emplace_back(u"2");
  EXPECT_EQ(zel_FindItem(combo(items), u"2"), 32767);
  EXPECT_EQ(zel_FindItemData(combo(items), 2), 32767);
  items.emplace_back(u"3");
  EXPECT_EQ(raisedError([&] { zel_FindItem(combo(items), u"3"); }).substr(0, 2), "6|");
  EXPECT_EQ(raisedError([&] { zel_FindItemData(control(u"Label", {}), 3); }).substr(0, 3), "438");
}

}  // namespace
}  // namespace zelUtilities
