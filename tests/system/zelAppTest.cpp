#include "system/zelApp.h"

#include <gtest/gtest.h>

#include "support/MemoryRegistry.h"
#include "support/RecordingDesktop.h"
#include "support/Reports.h"
#include "support/TestControl.h"
#include "system/zelRegistry.h"

namespace zelUtilities {
namespace {

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
  EXPECT_EQ(reports.taken(), "");
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
