#include "system/zelControls.h"

#include <gtest/gtest.h>

#include "automation/Collection.h"
#include "support/RaisedError.h"
#include "support/RecordingDesktop.h"
#include "support/Reports.h"
#include "support/TestControl.h"

namespace zelUtilities {
namespace {

class ZelControls : public testing::Test {
 protected:
  ~ZelControls() override { controls->Clear(); }  // form and controls hold each other

  static Ref<TestControl> enabled(StringView type, TestControl::Properties more = {}) {
    more.insert({{u"Enabled", true}, {u"BackColor", std::int32_t{1}}});
    return control(type, more);
  }
  // Adds controls, each told by its name and its container's: "A. aA" is a frame on the form, a box in it.
  void grow(StringView pairs) {
    for (; pairs.size() > 1; pairs.remove_prefix(std::min<std::size_t>(3, pairs.size()))) {
      const StringView type = pairs[0] < u'a' ? u"Frame" : u"TextBox";
      at[pairs[0]] = enabled(type, {{u"Name", String(1, pairs[0])}, {u"Container", at[pairs[1]]}});
      controls->Add(at[pairs[0]]);
    }
  }
  static std::string status(const TestControl& one) { return one.text(u"Enabled") + one.text(u"BackColor"); }
  // The names of the controls that are disabled, in order.
  std::string disabled() const {
    std::string names;
    for (std::int32_t i = 1; i <= controls->Count(); ++i) {
      const auto& one = static_cast<TestControl&>(*controls->Item(i).object());
      if (one.text(u"Enabled") == "False") names += one.text(u"Name");
    }
    return names;
  }

  const Ref<Collection> controls = make<Collection>();
  // A program's own form, told by its Controls.
  const Ref<TestControl> form = control(u"Form1", {{u"Name", u"."}, {u"Controls", controls}, {u"hWnd", 7}});
  std::map<char16_t, Ref<TestControl>> at{{u'.', form}};  // the last of each name
  RecordingDesktop desktop;
  Reports reports{"zelControls.zel_"};
};

TEST_F(ZelControls, WindowsAreAskedForTheirStyleAndStackedByNumberOrByTheirHWnd) {
  desktop.style = 0x00200000;
  EXPECT_TRUE(zel_HasVerticalScroll(7) && !zel_HasHorizontalScroll(7) && !zel_HasVerticalScroll(8));
  desktop.style = ~desktop.style;
  EXPECT_TRUE(zel_HasHorizontalScroll(7) && !zel_HasVerticalScroll(7) && !zel_HasHorizontalScroll(8));
  zel_SetAlwaysOnTopMode(std::int32_t{12});
  zel_SetAlwaysOnTopMode(form, false);
  zel_SetAlwaysAbove(form, 55);
  EXPECT_EQ(desktop.calls, "12 -1 19\n7 -2 19\n7 55 83\n");
  for (const Variant& other : {Variant(std::int16_t{12}), Variant(u"12"), Variant()})
    EXPECT_EQ(raisedError([&] { zel_SetAlwaysOnTopMode(other); }), "424||Object required");
  EXPECT_EQ(raisedError([&] { zel_SetAlwaysAbove(nullptr, 1); }).substr(0, 2), "91");
}

TEST_F(ZelControls, AlignedButtonsKeepTheirMarginsFromTheEdges) {
  const auto button = control(u"CommandButton", {});
  EXPECT_EQ(zel_AlignButton(button, 6000, 4000), 4800);
  EXPECT_EQ(button->place(), "4800 3565 1080 315");
  EXPECT_EQ(zel_AlignButton(button, 100.5F, 100, 10, 20, 3, 0.25F), 90.25F);
  EXPECT_EQ(button->place(), "90.25 77 10 20");
}

TEST_F(ZelControls, TextAndListControlsShowTheirStatusByColour) {
  const auto statuses = [](StringView type) {
    const auto one = enabled(type);
    zel_SetControlStatus(one, false);
    const std::string disabled = status(*one);
    zel_SetControlStatus(one, true);
    return disabled + " " + status(*one);
  };
  for (const StringView type : {u"TextBox", u"ComboBox", u"ListView", u"FOLDERTreeView"})
    EXPECT_EQ(statuses(type), "False-2147483633 True-2147483643");
  for (const StringView type : {u"Label", u"listview"}) EXPECT_EQ(statuses(type), "False1 True1");
  const auto colourOnly = control(u"TextBox", {{u"BackColor", std::int32_t{1}}});
  zel_SetControlStatus(colourOnly, true);
  EXPECT_EQ(status(*colourOnly), "--2147483643");
  zel_SetControlStatus(nullptr, true);
}

TEST_F(ZelControls, ContainersAreFoundByNameUpToTheForm) {
  grow(u"\u00C4. B\u00C4 tB C.");
  const auto box = at[u't'];
  for (const auto& container :
       {Ref<TestControl>(), at[u'\u00C4'], form, box, control(u"Frame", {{u"Name", u"\u00E4"}})})
    EXPECT_TRUE(zel_InContainer(box, container));
  EXPECT_TRUE(zel_InContainer(nullptr, nullptr));
  EXPECT_FALSE(zel_InContainer(box, at[u'C']) || zel_InContainer(form, at[u'C']));
  EXPECT_EQ(reports.taken(), "");
  EXPECT_FALSE(zel_InContainer(control(u"Label", {{u"Name", u"lost"}}), at[u'C']));
  at[u'B']->properties[u"Container"] = box;  // in a circle
  EXPECT_FALSE(zel_InContainer(box, at[u'C']));
  at[u'B']->properties[u"Container"] = nullptr;
  EXPECT_FALSE(zel_InContainer(nullptr, at[u'C']));
  EXPECT_EQ(reports.taken(), "InContainer|438 InContainer|5 InContainer|91 ");
}

TEST_F(ZelControls, AFrameIsDisabledWithAllThatLiesInIt) {
  grow(u"A. B. xB BA bB aA");  // both frames B are one by their name, as those of an array are
  zel_EnableFrame(form, at[u'A'], false);
  EXPECT_EQ(disabled(), "AxBba");
  EXPECT_EQ(status(*at[u'b']) + status(*at[u'B']), "False-2147483633False1");
  zel_EnableFrame(form, at[u'A'], true);
  zel_EnableFrame(controls, at[u'B'], false);  // a list of controls in place of the form
  EXPECT_EQ(disabled(), "xBb");
  zel_EnableFrame(form, nullptr, false);
  EXPECT_EQ(disabled(), "ABxBba");
  EXPECT_EQ(reports.taken(), "");
}

TEST_F(ZelControls, WhatCannotBeEnabledIsLoggedAndTheRestGoesOn) {
  grow(u"A. BA nA aA");
  at[u'B']->properties.erase(u"Enabled");
  at[u'n']->properties.erase(u"Name");
  zel_EnableFrame(form, at[u'A'], false);
  EXPECT_EQ(disabled(), "Aa");
  at[u'A']->properties.erase(u"Enabled");
  zel_EnableFrame(form, at[u'A'], true);  // ends with the frame itself
  zel_EnableFrame(nullptr, nullptr, true);
  EXPECT_EQ(disabled(), "a");
  EXPECT_EQ(reports.taken(), "EnableFrame|438 InContainer|438 EnableFrame|438 EnableFrame|91 ");
}

TEST_F(ZelControls, ItemsAreFoundAtTheirFirstPosition) {
  const auto combo = [](std::vector<Variant> items) {
    const auto count = static_cast<std::int32_t>(items.size());
    const Variant all = ArrayData::ofVariants(std::move(items));
    return control(u"ComboBox", {{u"ListCount", count}, {u"List", all}, {u"ItemData", all}});
  };
  EXPECT_EQ(zel_FindItem(combo({}), u"a"), -1);
  EXPECT_EQ(zel_FindItem(combo({u"x", u"\u00C4b", u"\u00E4b"}), u"\u00E4B"), 1);
  EXPECT_EQ(zel_FindItemData(combo({std::int32_t{5}, std::int32_t{-6}}), -6), 1);
  std::vector<Variant> items(32767, u"1");
  EXPECT_EQ(zel_FindItem(combo(items), u"2"), -1);
  items.insert(items.end(), {u"2", u"3"});
  EXPECT_EQ(zel_FindItemData(combo(items), 2), 32767);
  EXPECT_EQ(raisedError([&] { zel_FindItem(combo(items), u"3"); }).substr(0, 2), "6|");
}

}  // namespace
}  // namespace zelUtilities
