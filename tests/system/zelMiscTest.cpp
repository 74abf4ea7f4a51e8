#include "system/zelMisc.h"

#include <gtest/gtest.h>

#include "automation/Calendar.h"
#include "automation/Collection.h"
#include "automation/Conversions.h"
#include "automation/Error.h"
#include "platform/Clock.h"
#include "platform/Process.h"
#include "platform/TimeZone.h"
#include "support/RecordingDialogs.h"
#include "support/Reports.h"
#include "system/zelObjects.h"
#include "system/zelWinAPI.h"

namespace zelUtilities {
namespace {

class ZelMisc : public testing::Test, public Clock, public TimeZone, public Process {
 protected:
  Date now() override { return {dateOf(dayNumberOf(2007, 3, 7), 50709)}; }
  Date universalNow() override { return {now().days + 0.042 / 86400}; }
  std::uint32_t information(std::optional<int>, TimeZoneRecord& record) override {
    record.bias = bias;
    return TimeZoneState::Unknown;
  }
  void runToEnd(StringView commandLine) override {
    started += toUtf8(commandLine) + "|";
    if (commandLine == u"b.exe") throw Error(ErrorNumber::FileNotFound);
  }

  std::int32_t bias = 0;
  std::string started;
  Reports reports{"zelMisc."};
};

TEST_F(ZelMisc, TheLargerAndSmallerValueComeBackAsPassed) {
  const Variant two(std::int16_t{2});
  const std::tuple<Variant, Variant, const char*> cases[] = {
      // the larger and the smaller
      {two, 2.5, "Double 2.5, Integer 2"},
      {u"10", u"9", "String 9, String 10"},
      {u"1", 2.0, "String 1, Double 2"},   // numbers come before texts
      {two, 2.0, "Integer 2, Integer 2"},  // the first of equals
      {2.0, two, "Double 2, Double 2"}};
  for (const auto& [first, second, expected] : cases) {
    const Variant larger = zel_MaxValue(first, second);
    const Variant smaller = zel_MinValue(first, second);
    EXPECT_EQ(
        toUtf8(typeName(larger) + u" " + toText(larger) + u", " + typeName(smaller) + u" " + toText(smaller)),
        expected);
  }
  EXPECT_TRUE(zel_MaxValue(Variant::null(), 1.0).isNull());
  EXPECT_TRUE(zel_MaxValue(ArrayData::ofBytes({}), 1.0).isEmpty() && zel_MinValue(1.0, nullptr).isEmpty());
  EXPECT_EQ(reports.taken(), "zel_MaxValue|13 zel_MinValue|91 ");
}

DoubleArray doubles(std::int32_t lower, std::initializer_list<double> elements) {
  const auto array =
      ArrayData::create(VariantKind::Double, {{lower, static_cast<std::uint32_t>(elements.size())}});
  std::size_t i = 0;
  for (const double element : elements) array->set(i++, element);
  return {array};
}

// "lower: elements".
std::string described(const DoubleArray& array) {
  if (!array.data || array.data->bounds().empty()) return "none";
  std::string text = std::to_string(array.data->bounds()[0].lower) + ":";
  for (std::size_t i = 0; i < array.data->size(); ++i) text += " " + toUtf8(toText(array.data->at(i)));
  return text;
}

TEST_F(ZelMisc, ElementsAreAppendedTimesTheFactor) {
  const DoubleArray undimensioned{ArrayData::create(VariantKind::Double, {})};
  const std::tuple<DoubleArray, DoubleArray, double, const char*, const char*> cases[] = {
      {doubles(1, {1, 2}), doubles(5, {3, 4}), -0.5, "1: 1 2 -1.5 -2", ""},
      {doubles(-1, {1}), undimensioned, 1, "-1: 1", ""},
      {undimensioned, doubles(7, {1}), 1, "0: 1", ""},
      {{}, doubles(7, {1}), 1, "0: 1", ""},
      {undimensioned, undimensioned, 1, "none", ""},
      {doubles(3, {}), doubles(0, {}), 1, "3:", ""},
      {doubles(0, {1}), doubles(0, {2, 1e308}), 10, "0: 1", "AppendArray|6 "},
      {doubles(0, {1}),
       {ArrayData::create(VariantKind::Double, {{0, 2}, {0, 2}})},
       1,
       "0: 1",
       "AppendArray|9 "}};
  for (const auto& [before, source, factor, expected, logged] : cases) {
    const std::string described_before = described(before);
    DoubleArray target = before;
    zel_AppendArray(target, source, factor);
    EXPECT_EQ(described(target), expected);
    EXPECT_EQ(described(before), described_before);  // an array is a value
    EXPECT_EQ(reports.taken(), logged);
  }
}

TEST_F(ZelMisc, CountsTheElementsOfArraysAlone) {
  EXPECT_EQ(zel_ArrayCount(ArrayData::create(VariantKind::Variant, {{-2, 4}, {0, 2}})), 4);
  for (const Variant& value : {Variant(ArrayData::create(VariantKind::Byte, {})), Variant(), Variant(u"abc")})
    EXPECT_EQ(zel_ArrayCount(value), 0);
}

TEST_F(ZelMisc, ScriptsAppendToArraysOfDoublesAndToNoOthers) {
  const Member& append = *zelMisc::describeClass().find(u"zel_AppendArray");
  const Ref<Object> instance = make<FunctionClass>(zelMisc::describeClass());
  Variant arguments[] = {doubles(0, {1}).data, doubles(0, {2}).data, Variant::missing()};
  invokeMember(*instance, append, InvokeKind::Method, arguments);
  EXPECT_EQ(described(DoubleArray{arguments[0].arrayRef()}), "0: 1 2");
  arguments[1] = ArrayData::ofVariants({2.0});
  EXPECT_THROW(invokeMember(*instance, append, InvokeKind::Method, arguments), Error);
}

// Looks wrong, and is meant: no plus sign, and fractions of hours are not turned into minutes.
TEST_F(ZelMisc, MessagesCarryLocalTimeWithTheOffsetAsHoursTimesAHundred) {
  const Replaced<Clock> clock(*this);
  const Replaced<TimeZone> zone(*this);
  for (const auto& [minutes, expected] :
       {std::pair{300, u"-0500"}, {-60, u"0100"}, {0, u"0000"}, {210, u"-0350"}, {-765, u"1275"}}) {
    bias = minutes;
    EXPECT_EQ(zel_GetEmailMessageDate(), String(u"Wed, 7 Mar 2007 14:05:09 ") + expected);
  }
  EXPECT_EQ(zel_GetEmailMessageID(),
            u"<20070307140509042@" + zel_WinAPIComputerNameEX(ComputerNameDnsFullyQualified) + u">");
}

TEST_F(ZelMisc, AProgramThatDoesNotStartIsFalseAndLogged) {
  const Replaced<Process> process(*this);
  EXPECT_TRUE(zel_ShellAndWait(u"  a.exe \"b c "));
  for (const StringView line :
       {StringView(u"b.exe"), StringView(), StringView(u"  "), StringView(u"a.exe\0b", 7)})
    EXPECT_FALSE(zel_ShellAndWait(line));
  EXPECT_EQ(started, "a.exe \"b c |b.exe|");
  EXPECT_EQ(reports.taken(), "zel_ShellAndWait|53 zel_ShellAndWait|5 zel_ShellAndWait|5 zel_ShellAndWait|5 ");
}

TEST(ZelObjects, ObjectsAreCreatedByNameOrTheUserIsTold) {
  RecordingDialogs dialogs;
  const Replaced<Dialogs> replaced(dialogs);
  EXPECT_TRUE(zel_CreateObject(u"Scripting.FileSystemObject"));
  EXPECT_FALSE(zel_CreateObject(u"Acme.Nothing") || zel_CreateObject(u"Acme.Nothing", u" "));
  const RecordingDialogs::Box told{u"Object Descriptor: Acme.Nothing", u"Missing Component", 48};
  EXPECT_EQ(dialogs.boxes, std::vector{told});
}

// Looks wrong, and is meant: only objects count as being in a collection.
TEST(ZelObjects, OnlyObjectsAreFoundInCollections) {
  const Ref<Collection> collection = make<Collection>();
  collection->Add(make<Collection>(), u"object");
  collection->Add(u"text", u"text");
  collection->Add(nullptr, u"nothing");
  EXPECT_TRUE(zel_IsInCollection(collection, u"OBJECT") && zel_IsInCollection(collection, std::int16_t{1}));
  for (const Variant& key :
       {Variant(u"text"), Variant(u"missing"), Variant(u"nothing"), Variant(), Variant(9.0)})
    EXPECT_FALSE(zel_IsInCollection(collection, key));
  EXPECT_FALSE(zel_IsInCollection({}, u"object"));
}

}  // namespace
}  // namespace zelUtilities
