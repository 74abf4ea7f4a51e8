#include "system/zelApp.h"

#include <gmock/gmock.h>

#include "foundation/ErrorWatch.h"
#include "support/MemoryRegistry.h"
#include "support/RecordingDesktop.h"
#include "support/TestControl.h"
#include "system/zelRegistry.h"

namespace zelUtilities {
namespace {

using testing::ElementsAre;

class ZelApp : public testing::Test {
 protected:
  static Ref<TestControl> form(float left, float top, float width, float height, std::int16_t state = 0) {
    return control(u"Form1", {{u"Name", u"frmMain"},
                              {u"Left", left},
                              {u"Top", top},
                              {u"Width", width},
                              {u"Height", height},
                              {u"WindowState", state}});
  }
  // "left top width height state" of a form.
  static std::string shown(const Ref<TestControl>& form) {
    return form->text(u"Left") + " " + form->text(u"Top") + " " + form->text(u"Width") + " " +
           form->text(u"Height") + " " + form->text(u"WindowState");
  }
  static void put(const String& name, const Variant& value) {
    zel_SetRegistryValue(HKEY_CURRENT_USER, key, name, value);
  }
  static std::string kept(const String& name) {
    return toUtf8(toText(zel_GetRegistryValue(HKEY_CURRENT_USER, key, name, u"-")));
  }
  // A form at a place, brought back.
  std::string broughtBack(float left, float top, float width, float height, double unitsPerPixel = 0) {
    EXPECT_TRUE(zel_SaveFormState(u"Acme", form(left, top, width, height)));
    const auto next = form(1, 2, 3, 4);
    EXPECT_TRUE(zel_RestoreFormState(u"Acme", next, nullptr, u"", unitsPerPixel));
    return shown(next);
  }

  inline static const String key = u"Software\\VB and VBA Program Settings\\Acme\\frmMain";
  MemoryRegistry memory;
  Replaced<Registry> replaced{memory};
  RecordingDesktop desktop;
  std::vector<std::string> logged;
  ErrorWatch watch{[this](const ErrorReport& report) {
    logged.push_back(toUtf8(report.source) + "|" + std::to_string(report.number) + "|" +
                     toUtf8(report.moreInfo));
  }};
};

TEST_F(ZelApp, AFormComesBackWhereItWasUnderItsOwnOrAGivenName) {
  EXPECT_EQ(broughtBack(1200.4F, -300, 6000, 4500), "1200 -300 6000 4500 0");
  EXPECT_EQ(kept(u"Left") + kept(u"WindowState"), "12000");
  const auto other = form(1, 2, 3, 4);
  EXPECT_FALSE(zel_RestoreFormState(u"Acme", other, nullptr, u"frmOther"));
  EXPECT_EQ(shown(other), "1 2 3 4 0");
  EXPECT_TRUE(zel_SaveFormState(u"Acme", other, nullptr, u"frmOther"));
  EXPECT_TRUE(zel_RestoreFormState(u"ACME", other, nullptr, u"FRMOTHER"));
  EXPECT_EQ(logged.size(), 0u);
}

TEST_F(ZelApp, OnlyTheBoundsOfANormalFormAreKept) {
  EXPECT_TRUE(zel_SaveFormState(u"Acme", form(10, 20, 300, 400)));
  EXPECT_TRUE(zel_SaveFormState(u"Acme", form(-32000, -32000, 160, 24, 1)));
  const auto next = form(1, 2, 3, 4, 2);
  EXPECT_TRUE(zel_RestoreFormState(u"Acme", next));
  EXPECT_EQ(shown(next), "10 20 300 400 0");  // and no longer minimised
  EXPECT_TRUE(zel_SaveFormState(u"Acme", form(-4, -4, 1928, 1048, 2)));
  EXPECT_TRUE(zel_RestoreFormState(u"Acme", next));
  EXPECT_EQ(shown(next), "10 20 300 400 2");
}

TEST_F(ZelApp, ASplitterComesBackTheWayItMoves) {
  const auto upright = control(u"PictureBox", {{u"Left", 70}, {u"Top", 5}, {u"Width", 2}, {u"Height", 90}});
  EXPECT_TRUE(zel_SaveFormState(u"Acme", form(1, 2, 3, 4), upright));
  EXPECT_EQ(kept(u"Splitter"), "70");
  EXPECT_TRUE(zel_SaveFormState(u"Acme", form(1, 2, 3, 4, 1), control(u"PictureBox", {})));
  const auto flat = control(u"PictureBox", {{u"Left", 1}, {u"Top", 5}, {u"Width", 90}, {u"Height", 2}});
  EXPECT_TRUE(zel_RestoreFormState(u"Acme", form(1, 2, 3, 4), flat));
  EXPECT_EQ(flat->text(u"Left") + " " + flat->text(u"Top"), "1 70");
}

TEST_F(ZelApp, AFormOffTheScreensComesBackWithinReach) {
  desktop.screens = {{0, 0, 1000, 700}, {1000, -100, 2000, 600}};  // 15000 by 10500 twips, and one beside
  const std::pair<std::array<float, 4>, const char*> forms[] = {
      {{0, 0, 3000, 3000}, "0 0 3000 3000 0"},
      {{-2000, 0, 3000, 3000}, "-2000 0 3000 3000 0"},  // enough of its title is left
      {{-2500, 0, 3000, 3000}, "0 0 3000 3000 0"},
      {{90000, 90000, 3000, 3000}, "12000 7500 3000 3000 0"},
      {{20000, -1600, 3000, 3000}, "20000 -1500 3000 3000 0"},
      {{16000, 8800, 3000, 3000}, "16000 6000 3000 3000 0"}};  // its title lies below the edge
  for (const auto& [at, expected] : forms) EXPECT_EQ(broughtBack(at[0], at[1], at[2], at[3]), expected);
  EXPECT_EQ(broughtBack(2500, 10, 300, 300, 1), "700 10 300 300 0");
}

TEST_F(ZelApp, DamagedValuesAreLoggedAndLeaveTheFormAlone) {
  EXPECT_TRUE(zel_SaveFormState(u"Acme", form(10, 20, 300, 400)));
  put(u"Left", u"12x");
  put(u"Top", u"99999999999");
  put(u"Width", u"-5");
  put(u"WindowState", u"3");
  const auto next = form(1, 2, 3, 4);
  EXPECT_TRUE(zel_RestoreFormState(u"Acme", next));
  EXPECT_EQ(shown(next), "1 2 3 400 0");
  const std::string source = "zelApp.zel_RestoreFormState|";
  const std::string at = "|" + toUtf8(key) + "\\";
  EXPECT_THAT(logged, ElementsAre(source + "6" + at + "WindowState = 3", source + "13" + at + "Left = 12x",
                                  source + "6" + at + "Top = 99999999999", source + "6" + at + "Width = -5"));
}

TEST_F(ZelApp, FormsWithoutAWindowStateAreNormalAndOtherFailuresAreLogged) {
  const auto userForm = form(10, 20, 300, 400);
  userForm->properties.erase(u"WindowState");
  EXPECT_TRUE(zel_SaveFormState(u"Acme", userForm) && zel_RestoreFormState(u"Acme", userForm));
  EXPECT_EQ(logged.size(), 0u);
  EXPECT_FALSE(zel_SaveFormState(u"", userForm));
  EXPECT_FALSE(zel_SaveFormState(String(300, u'a'), userForm));
  EXPECT_FALSE(zel_RestoreFormState(u"Acme", nullptr));
  userForm->properties.erase(u"Width");
  EXPECT_FALSE(zel_SaveFormState(u"Acme", userForm));
  EXPECT_THAT(logged, ElementsAre("zelApp.zel_SaveFormState|5|", "zelApp.zel_SaveFormState|1001|",
                                  "zelApp.zel_RestoreFormState|91|", "zelApp.zel_SaveFormState|438|"));
}

}  // namespace
}  // namespace zelUtilities
