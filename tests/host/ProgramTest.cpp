#include "host/Program.h"

#include <gmock/gmock.h>

#include <functional>
#include <sstream>

#include "automation/ArrayData.h"
#include "automation/Binder.h"
#include "automation/Collection.h"
#include "foundation/Handled.h"
#include "platform/Dialogs.h"
#include "platform/Files.h"

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
Variant echo(const Variant& value) { return value; }
std::int32_t length(const String& text, std::int32_t times) {
  return static_cast<std::int32_t>(text.size()) * times;
}
Ref<ArrayData> reversed(Ref<ArrayData> bytes) {
  const Ref<ArrayData> result = bytes->clone();
  std::reverse(result->bytes().begin(), result->bytes().end());
  return result;
}
bool isLater(Date date) { return date.days > 0; }
Ref<Collection> rows() {
  Ref<Collection> rows = make<Collection>();
  rows->Add(u"plain");
  rows->Add(ArrayData::ofVariants({u"name", std::int32_t{7}, Variant::null()}));
  rows->Add(ArrayData::ofBytes(std::vector<std::uint8_t>{1, 171}));
  return rows;
}
void fail() { throw Error(70, u"mFiles.FileDelete", u"Permission denied"); }
std::int32_t failQuietly() {
  handled(u"zelX.zel_Quiet", [] { throw Error(9); });
  return 3;
}
void showBox() { messageBox(u"The file could not be read:     \r\nFile:\ta.txt   ", u"Read Error"); }

class Lamp : public Object {
 public:
  static const ClassInfo& describeClass() {
    static const ClassInfo info =
        describe<Lamp>("testLamp", "A lamp.")
            .creatable()
            .item("Item", &Lamp::Item, {"vKey"}, "A bulb.")
            .property("Shade", &Lamp::Shade, &Lamp::setShade, "How light it is.")
            .method("Turn", &Lamp::Turn,
                    {arg("sHow") = u"on", optional("vTag"), arg("eShade") = TestShade::Dark}, "Turns it.")
            .event("Turned", &Lamp::onTurned, {"bCancel"}, "It was turned.");
    return info;
  }
  const ClassInfo* classInfo() const override { return &describeClass(); }
  Ref<Lamp> Item(const Variant&) { return {}; }
  TestShade Shade() const { return TestShade::Dark; }
  void setShade(TestShade) {}
  void Turn(const String&, const Variant&, TestShade) {}
  Event<bool&> onTurned;
};

const ClassRegistry& classes() {
  static const ClassInfo functions =
      describeFunctions("testFunctions", "Functions.")
          .function("zel_Darker", &darker, {"eShade"}, "The darker one.")
          .function("zel_Echo", &echo, {reference("vValue")}, "")
          .function("zel_Length", &length, {"sText", arg("lTimes") = std::int32_t{1}}, "")
          .function("zel_Reversed", &reversed, {"cBytes"}, "")
          .function("zel_IsLater", &isLater, {"tDate"}, "")
          .function("zel_Rows", &rows, "")
          .function("zel_Fail", &fail, "")
          .function("zel_FailQuietly", &failQuietly, "")
          .function("zel_ShowBox", &showBox, "");
  static const auto registry = [] {
    auto* made = new ClassRegistry;
    made->add(Lamp::describeClass());
    made->add(functions);
    return made;
  }();
  return *registry;
}

struct Outcome {
  int code;
  std::string out;
  std::string err;
};

Outcome zel(std::vector<String> arguments) {
  std::ostringstream out, err;
  const int code = host::runProgram(arguments, classes(), out, err);
  return {code, out.str(), err.str()};
}

void expectOutput(const std::vector<String>& arguments, const std::string& expected) {
  const Outcome outcome = zel(arguments);
  EXPECT_EQ(outcome.out, expected);
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.code, 0);
}

void expectFailure(const std::vector<String>& arguments, const std::string& message, int code = 1) {
  const Outcome outcome = zel(arguments);
  EXPECT_THAT(outcome.err, HasSubstr(message));
  EXPECT_EQ(outcome.code, code);
}

TEST(Zel, ListsClassesWithWhatTheyAreFor) {
  expectOutput({u"classes"}, "testLamp       A lamp.\ntestFunctions  Functions.\n");
}

TEST(Zel, DescribesAClassMemberByMember) {
  expectOutput(
      {u"describe", u"zelUtilities.TESTLAMP"},
      "testLamp\n    A lamp.\n    Clients create objects of this class.\n"
      "\nItem(vKey As Variant) As testLamp   (read)   (default)\n    A bulb.\n"
      "\nShade As TEST_Shades   (read and write)\n    How light it is.\n"
      "\nTurn([sHow As String = \"on\"], [vTag As Variant], [eShade As TEST_Shades = TEST_Shade_Dark])\n"
      "    Turns it.\n"
      "\nEvent Turned(ByRef bCancel As Boolean)\n    It was turned.\n");
  expectOutput({u"describe", u"test_shades"},
               "TEST_Shades\n    TEST_Shade_Light = 1\n    TEST_Shade_Dark = 2\n");
  expectFailure({u"describe", u"zelNothing"}, "zel: there is no class zelNothing");
}

TEST(Zel, ConvertsArgumentsToTheTypesOfTheParameters) {
  expectOutput({u"call", u"ZEL_length", u"Gr\u00F6\u00DFe"}, "5\n");
  expectOutput({u"call", u"zel_Length", u"abc", u"2"}, "6\n");
  expectOutput({u"call", u"zel_Darker", u"test_shade_light"}, "TEST_Shade_Dark\n");
  expectOutput({u"call", u"zel_Darker", u"1"}, "TEST_Shade_Dark\n");
  expectOutput({u"call", u"zel_Reversed", u"00aBff"}, "FFAB00\n");
  expectOutput({u"call", u"zel_IsLater", u"2024-03-09"}, "True\n");
}

TEST(Zel, PrintsResultsAsPeopleReadThem) {
  expectOutput({u"call", u"zel_Echo", u"Gr\u00F6\u00DFe"},
               "Gr\xC3\xB6\xC3\x9F"
               "e\n");
  expectOutput({u"call", u"zel_Rows"}, "plain\nname\t7\tNull\n01AB\n");
}

TEST(Zel, RefusesArgumentsThatDoNotFit) {
  expectFailure({u"call", u"zel_Length"},
                "wrong number of arguments for zel_Length(sText As String, [lTimes As Long = 1])");
  expectFailure({u"call", u"zel_Length", u"a", u"1", u"2"}, "wrong number of arguments");
  expectFailure({u"call", u"zel_Length", u"a", u"many"}, "\"many\" does not do for lTimes");
  expectFailure({u"call", u"zel_Reversed", u"0g"}, "\"0g\" does not do for cBytes");
  expectFailure({u"call", u"zel_Reversed", u"0"}, "\"0\" does not do for cBytes");
  expectFailure({u"call", u"zel_Nothing"}, "there is no global operation zel_Nothing");
}

TEST(Zel, TellsOfEveryFailureOnStandardError) {
  expectFailure({u"call", u"zel_Fail"}, "zel: mFiles.FileDelete: Permission denied (error 70)\n");
  const Outcome quiet = zel({u"call", u"zel_FailQuietly"});
  EXPECT_EQ(quiet.code, 1);
  EXPECT_EQ(quiet.out, "3\n");
  EXPECT_EQ(quiet.err, "zel: zelX.zel_Quiet: Subscript out of range (error 9)\n");
  expectFailure({u"call", u"zel_ShowBox"}, "zel: Read Error: The file could not be read: File: a.txt\n");
}

TEST(Zel, ExplainsItselfAndRefusesWhatItDoesNotUnderstand) {
  EXPECT_THAT(zel({u"--help"}).out, HasSubstr("zel ini set FILE SECTION NAME VALUE"));
  EXPECT_EQ(zel({u"--help"}).code, 0);
  expectOutput({u"--version"}, "1.2.0\n");
  for (const std::vector<String>& command :
       std::vector<std::vector<String>>{{},
                                        {u"clases"},
                                        {u"classes", u"x"},
                                        {u"describe"},
                                        {u"call"},
                                        {u"ini"},
                                        {u"ini", u"get", u"f"},
                                        {u"ini", u"set", u"f", u"s", u"n"},
                                        {u"ini", u"delete", u"f"}})
    expectFailure(command, "see: zel --help", 2);
}

TEST(Zel, FailsWhenItsOutputDoesNotArrive) {
  std::ostringstream out, err;
  out.setstate(std::ios::badbit);
  const std::vector<String> arguments = {u"classes"};
  EXPECT_EQ(host::runProgram(arguments, classes(), out, err), 1);
  EXPECT_EQ(err.str(), "zel: standard output cannot be written\n");
}

TEST(Zel, WithoutTheNodeListSettingsFilesCannotBeRead) {
  expectFailure({u"ini", u"list", u"a.ini"}, "the class zelNodeList is missing");
}

}  // namespace
}  // namespace zelUtilities
