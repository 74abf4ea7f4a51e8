#include "host/Program.h"

#include <gmock/gmock.h>

#include "automation/ArrayData.h"
#include "automation/Binder.h"
#include "automation/Collection.h"
#include "foundation/Handled.h"
#include "host/Command.h"
#include "platform/Dialogs.h"
#include "platform/Files.h"
#include "support/RecordingDialogs.h"
#include "support/ScratchFolder.h"

namespace zelUtilities {

enum class TestShade : std::int32_t { Light = 1, Dark = 2 };
template <>
const EnumInfo& enumInfo<TestShade>() {
  static const EnumInfo info{u"TEST_Shades", {{u"TEST_Shade_Light", 1}, {u"TEST_Shade_Dark", 2}}};
  return info;
}

namespace {

using testing::HasSubstr;

TestShade darker(TestShade) { return TestShade::Dark; }
std::int32_t length(const String& text, std::int32_t times) { return times * int(text.size()); }
Ref<Collection> rows(Ref<ArrayData> bytes) {
  Ref<Collection> rows = make<Collection>();
  rows->Add(u"plain");
  rows->Add(ArrayData::ofVariants({u"name", std::int32_t{7}, Variant::null()}));
  rows->Add(bytes);
  return rows;
}
void fail() { throw Error(70, u"mFiles.FileDelete", u"Permission denied"); }
std::int32_t failQuietly() {
  handled(u"zelX.zel_Quiet", [] { throw Error(9); });
  return 3;
}
String askFolder(const Ref<Object>& object) { return dialogs().selectFolder(object ? u"-" : u"t", u"f"); }
void showBox() { messageBox(u"The file could not be read:     \r\nFile:\ta.txt   ", u"Read Error"); }

struct Lamp : Object {
  Ref<Object> Item(const Variant&) { return {}; }
  TestShade Shade() const { return TestShade::Dark; }
  void setShade(TestShade) {}
  void Turn(const String&, const Variant&, TestShade) {}
  Event<bool&> onTurned;
};

// What the program does with a lamp and some functions.
std::string zel(const std::string& line) {
  static const ClassInfo lamp =
      describe<Lamp>("testLamp", "A lamp.")
          .creatable()
          .item("Item", &Lamp::Item, {"vKey"}, "A bulb.")
          .property("Shade", &Lamp::Shade, &Lamp::setShade, "How light it is.")
          .method("Turn", &Lamp::Turn,
                  {arg("sHow") = u"on", optional("vTag"), arg("eShade") = TestShade::Dark}, "Turns it.")
          .event("Turned", &Lamp::onTurned, {"bCancel"}, "It was turned.");
  static const ClassInfo functions =
      describeFunctions("testFunctions", "Functions.")
          .function("zel_Darker", &darker, {"eShade"}, "")
          .function("zel_Length", &length, {"sText", arg("lTimes") = std::int32_t{1}}, "")
          .function("zel_Rows", &rows, {"cBytes"}, "")
          .function("zel_Fail", &fail, "")
          .function("zel_FailQuietly", &failQuietly, "")
          .function("zel_AskFolder", &askFolder, {"oNothing"}, "")
          .function("zel_ShowBox", &showBox, "");
  ClassRegistry registry;
  for (const ClassInfo* info : {&lamp, &functions}) registry.add(*info);
  return run(registry, line);
}

TEST(Zel, DescribesClassesAndEnumerations) {
  EXPECT_EQ(zel("classes"), "0|testLamp       A lamp.\ntestFunctions  Functions.\n|");
  EXPECT_EQ(
      zel("describe zelUtilities.TESTLAMP"),
      "0|testLamp\n    A lamp.\n    Clients create objects of this class.\n"
      "\nItem(vKey As Variant) As Object   (read)   (default)\n    A bulb.\n"
      "\nShade As TEST_Shades   (read and write)\n    How light it is.\n"
      "\nTurn([sHow As String = \"on\"], [vTag As Variant], [eShade As TEST_Shades = TEST_Shade_Dark])\n"
      "    Turns it.\n"
      "\nEvent Turned(ByRef bCancel As Boolean)\n    It was turned.\n|");
  EXPECT_EQ(zel("describe test_shades"),
            "0|TEST_Shades\n    TEST_Shade_Light = 1\n    TEST_Shade_Dark = 2\n|");
  EXPECT_EQ(zel("describe zelNothing"), "1||zel: there is no class zelNothing; see: zel classes\n");
}

TEST(Zel, WritesTheReferenceOnePageAClass) {
  const ScratchFolder scratch;
  const std::string lamp =
      "# testLamp\n\nA lamp.\n\nCreated by `CreateObject(\"zelUtilities.testLamp\")`.\n\n"
      "## Properties\n\n### Item\n\n```vb\nItem(vKey As Variant) As Object\n```\n\n"
      "A bulb. Read only. The default member.\n\n"
      "### Shade\n\n```vb\nShade As TEST_Shades\n```\n\nHow light it is. Read and write.\n\n"
      "See [TEST_Shades](enumerations.md#test_shades).\n\n"
      "## Methods\n\n### Turn\n\n```vb\nTurn([sHow As String = \"on\"], [vTag As Variant], "
      "[eShade As TEST_Shades = TEST_Shade_Dark])\n```\n\nTurns it.\n\n"
      "See [TEST_Shades](enumerations.md#test_shades).\n\n"
      "## Events\n\n### Turned\n\n```vb\nEvent Turned(ByRef bCancel As Boolean)\n```\n\nIt was turned.\n";
  const std::string all = zel("docs");
  EXPECT_THAT(all, HasSubstr("\n" + lamp + "\n"));
  EXPECT_THAT(all, testing::Not(HasSubstr("Collection.md"))) << "which is no class of the registry";
  EXPECT_THAT(all, HasSubstr("| [testLamp](testLamp.md) | A lamp. |\n"));
  EXPECT_THAT(all, HasSubstr("- `zel_Darker` of [testFunctions](testFunctions.md)\n- `zel_Fail` of"));
  EXPECT_THAT(all, testing::EndsWith("## TEST_Shades\n\n| name | value |\n|---|---|\n"
                                     "| `TEST_Shade_Light` | 1 |\n| `TEST_Shade_Dark` | 2 |\n\n|"));
  EXPECT_EQ(zel("docs d"), "0|4 pages in d\n|");
  EXPECT_EQ(files().readWhole(u"d\\testLamp.md"), lamp);
  EXPECT_EQ(files().findAll(u"d\\*").size(), 4u);
  EXPECT_THAT(zel("docs missing/d"), HasSubstr("(error 76)"));
}

TEST(Zel, CallsWithArgumentsOfTheParametersTypesAndPrintsWhatPeopleRead) {
  EXPECT_EQ(zel("call ZEL_length Gr\u00F6\u00DFe") + zel("call zel_Length abc 2"), "0|5\n|0|6\n|");
  for (const std::string shade : {"test_shade_light", "1"})
    EXPECT_EQ(zel("call zel_Darker " + shade), "0|TEST_Shade_Dark\n|");
  EXPECT_EQ(zel("call zel_Rows 01aBff"), "0|plain\nname\t7\tNull\n01ABFF\n|");
}

struct Chooser : RecordingDialogs {
  String selectFolder(StringView title, StringView folder) override { return String(title) + String(folder); }
};

TEST(Zel, AsksForFoldersAsEverywhere) {
  Chooser chooser;
  const Replaced<Dialogs> replaced(chooser);
  EXPECT_EQ(zel("call zel_AskFolder \"\""), "0|tf\n|");
}

TEST(Zel, RefusesArgumentsThatDoNotFit) {
  const std::pair<std::string, const char*> rows[] = {
      {"zel_Length", "wrong number of arguments for zel_Length(sText As String, [lTimes As Long = 1])"},
      {"zel_Length a 1 2", "wrong number of arguments for zel_Length("},
      {"zel_Length a many", "\"many\" does not do for lTimes in zel_Length("},
      {"zel_Rows 0g", "\"0g\" does not do for cBytes"},
      {"zel_Rows 0", "\"0\" does not do for cBytes"},
      {"zel_AskFolder x", "\"x\" does not do for oNothing"},
      {"zel_Nothing", "there is no global operation zel_Nothing"}};
  for (const auto& [call, message] : rows)
    EXPECT_THAT(zel("call " + call), testing::StartsWith(std::string("1||zel: ") + message));
}

TEST(Zel, TellsOfEveryFailureOnStandardError) {
  EXPECT_EQ(zel("call zel_Fail"), "1||zel: mFiles.FileDelete: Permission denied (error 70)\n");
  EXPECT_EQ(zel("call zel_FailQuietly"), "1|3\n|zel: zelX.zel_Quiet: Subscript out of range (error 9)\n");
  EXPECT_EQ(zel("call zel_ShowBox"), "1||zel: Read Error: The file could not be read: File: a.txt\n");
  std::ostringstream out, err;
  out.setstate(std::ios::badbit);
  const std::vector<String> arguments = {u"--version"};
  EXPECT_EQ(host::runProgram(arguments, currentClassRegistry(), out, err), 1);
  EXPECT_EQ(err.str(), "zel: standard output cannot be written\n");
}

TEST(Zel, ExplainsItselfAndRefusesWhatItDoesNotUnderstand) {
  EXPECT_THAT(zel("--help"),
              testing::AllOf(testing::StartsWith("0|"), HasSubstr("zel ini set FILE SECTION NAME VALUE")));
  EXPECT_EQ(zel("--version"), "0|1.2.0\n|");
  for (const char* line :
       {"", "clases", "classes x", "describe", "call", "ini", "ini get f", "ini set f s n", "ini delete f"})
    EXPECT_EQ(zel(line), "2||zel: this is not understood; see: zel --help\n") << line;
}

}  // namespace
}  // namespace zelUtilities
