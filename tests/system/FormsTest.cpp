// Forms and their controls: what is done to them, and where forms come back.
#include "automation/Collection.h"
#include "support/MemoryRegistry.h"
#include "support/RecordingDesktop.h"
#include "support/TestControl.h"
#include "support/Testing.h"
#include "system/zelApp.h"
#include "system/zelControls.h"
#include "system/zelRegistry.h"

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

class ZelApp : public testing::Test {
 protected:
  static Ref<TestControl> box(float left, float top, float width, float height) {
    return control(u"PictureBox", {{u"Left", left}, {u"Top", top}, {u"Width", width}, {u"Height", height}});
  }
  static Ref<TestControl> form(float left, float top, float width, float height, std::int16_t state = 0) {
    const auto form = box(left, top, width, height);
    form->properties.insert({{u"Name", u"frmMain"}, {u"WindowState", state}});
    return form;
  }
  // "left top width height state" of a form.
  static std::string shown(const Ref<TestControl>& form) {
    return form->place() + " " + form->text(u"WindowState");
  }
  // A form at a place, brought back to another one that is maximised.
  static std::string broughtBack(const Ref<TestControl>& before, double unitsPerPixel = 0) {
    EXPECT_TRUE(zel_SaveFormState(u"Acme", before));
    const auto next = form(1, 2, 3, 4, 2);
    EXPECT_TRUE(zel_RestoreFormState(u"Acme", next, nullptr, u"", unitsPerPixel));
    return shown(next);
  }

  inline static const String key = u"Software\\VB and VBA Program Settings\\Acme\\frmMain";
  MemoryRegistry memory;
  Replaced<Registry> replaced{memory};
  RecordingDesktop desktop;
  Reports reports{"zelApp.zel_", Reports::MoreInfo};
};

TEST_F(ZelApp, AFormComesBackWhereItWasUnderItsOwnOrAGivenName) {
  EXPECT_EQ(broughtBack(form(1200.4F, -300, 6000, 4500)), "1200 -300 6000 4500 0");
  EXPECT_EQ(zel_GetRegistryValue(HKEY_CURRENT_USER, key, u"Left").text(), u"1200");
  const auto other = form(1, 2, 3, 4);
  EXPECT_FALSE(zel_RestoreFormState(u"Acme", other, nullptr, u"frmOther"));
  EXPECT_EQ(shown(other), "1 2 3 4 0");
  EXPECT_TRUE(zel_SaveFormState(u"Acme", other, nullptr, u"frmOther"));
  EXPECT_TRUE(zel_RestoreFormState(u"ACME", other, nullptr, u"FRMOTHER"));
  other->properties.erase(u"WindowState");  // as forms of other hosts
  EXPECT_TRUE(zel_SaveFormState(u"Acme", other) && zel_RestoreFormState(u"Acme", other));
}

TEST_F(ZelApp, OnlyTheBoundsOfANormalFormAreKept) {
  EXPECT_TRUE(zel_SaveFormState(u"Acme", form(10, 20, 300, 400)));
  EXPECT_EQ(broughtBack(form(-32000, -32000, 160, 24, 1)), "10 20 300 400 0");  // no longer minimised
  EXPECT_EQ(broughtBack(form(-4, -4, 1928, 1048, 2)), "10 20 300 400 2");
}

TEST_F(ZelApp, ASplitterComesBackTheWayItMoves) {
  EXPECT_TRUE(zel_SaveFormState(u"Acme", form(1, 2, 3, 4), box(70, 5, 2, 90)));
  EXPECT_TRUE(zel_SaveFormState(u"Acme", form(1, 2, 3, 4, 1), box(0, 0, 0, 0)));
  const auto flat = box(1, 5, 90, 2);
  EXPECT_TRUE(zel_RestoreFormState(u"Acme", form(1, 2, 3, 4), flat));
  EXPECT_EQ(flat->place(), "1 70 90 2");
}

TEST_F(ZelApp, AFormOffTheScreensComesBackWithinReach) {
  desktop.screens = {{0, 0, 1000, 700}, {1000, -100, 2000, 600}};  // 15000 by 10500 twips, and one beside
  const std::tuple<float, float, const char*> forms[] = {
      {-2000, 0, "-2000 0 3000 3000 0"},  // enough of its title is left
      {-2500, 0, "0 0 3000 3000 0"},
      {90000, 90000, "12000 7500 3000 3000 0"},
      {20000, -1600, "20000 -1500 3000 3000 0"},
      {16000, 8800, "16000 6000 3000 3000 0"}};  // its title lies below the edge
  for (const auto& [left, top, expected] : forms)
    EXPECT_EQ(broughtBack(form(left, top, 3000, 3000)), expected);
  EXPECT_EQ(broughtBack(form(2500, 10, 300, 300), 1), "700 10 300 300 0");
}

TEST_F(ZelApp, DamagedValuesAreLoggedAndLeaveTheFormAlone) {
  EXPECT_TRUE(zel_SaveFormState(u"Acme", form(10, 20, 300, 400)));
  std::string expected;
  for (const auto& [name, value, number] : {std::tuple{u"WindowState", u"3", "6|"},
                                            {u"Left", u"12x", "13|"},
                                            {u"Top", u"99999999999", "6|"},
                                            {u"Width", u"-5", "6|"}}) {
    zel_SetRegistryValue(HKEY_CURRENT_USER, key, name, value);
    expected += std::string("RestoreFormState|") + number + toUtf8(key + u"\\" + name + u" = " + value) + " ";
  }
  const auto next = form(1, 2, 3, 4);
  EXPECT_TRUE(zel_RestoreFormState(u"Acme", next));
  EXPECT_EQ(shown(next), "1 2 3 400 0");
  EXPECT_EQ(reports.taken(), expected);
}

TEST_F(ZelApp, WhatCannotBeSavedOrRestoredIsLogged) {
  EXPECT_FALSE(zel_SaveFormState(u"", form(1, 2, 3, 4)));
  EXPECT_FALSE(zel_SaveFormState(String(300, u'a'), form(1, 2, 3, 4)));
  EXPECT_FALSE(zel_RestoreFormState(u"Acme", nullptr));
  EXPECT_FALSE(zel_SaveFormState(u"Acme", control(u"Form1", {{u"Name", u"frmMain"}})));
  EXPECT_EQ(reports.taken(), "SaveFormState|5| SaveFormState|1001| RestoreFormState|91| SaveFormState|438| ");
}

}  // namespace
}  // namespace zelUtilities
