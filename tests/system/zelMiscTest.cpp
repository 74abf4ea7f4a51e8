#include "system/zelMisc.h"

#include <gmock/gmock.h>

#include "automation/Calendar.h"
#include "automation/Collection.h"
#include "automation/Conversions.h"
#include "automation/Error.h"
#include "foundation/ErrorWatch.h"
#include "platform/Clock.h"
#include "platform/Process.h"
#include "platform/TimeZone.h"
#include "support/RecordingDialogs.h"
#include "system/zelObjects.h"
#include "system/zelWinAPI.h"

namespace zelUtilities {
namespace {

using testing::ElementsAre;

class ZelMisc : public testing::Test, public Clock, public TimeZone, public Process {
 protected:
  Date now() override { return {dateOf(dayNumberOf(2007, 3, 7), 50709)}; }
  Date universalNow() override { return {now().days + 0.042 / 86400}; }
  std::uint32_t information(std::optional<int>, TimeZoneRecord& record) override {
    record.bias = bias;
    return TimeZoneState::Unknown;
  }
  void runToEnd(StringView commandLine) override {
    lines.push_back(toUtf8(commandLine));
    if (startError != 0) throw Error(startError);
  }

  std::int32_t bias = 0;
  std::int32_t startError = 0;
  std::vector<std::string> lines;
  std::vector<std::string> reports;
  ErrorWatch watch{[this](const ErrorReport& report) {
    reports.push_back(toUtf8(report.source) + "|" + std::to_string(report.number));
  }};
};

std::string described(const Variant& value) { return toUtf8(typeName(value) + u" " + toText(value)); }

TEST_F(ZelMisc, TheLargerAndSmallerValueComeBackAsPassed) {
  EXPECT_EQ(described(zel_MaxValue(std::int16_t{2}, 2.5)), "Double 2.5");
  EXPECT_EQ(described(zel_MinValue(std::int16_t{2}, 2.5)), "Integer 2");
  EXPECT_EQ(described(zel_MaxValue(u"10", u"9")), "String 9");
  EXPECT_EQ(described(zel_MinValue(u"1", 2.0)), "Double 2");              // numbers come before texts
  EXPECT_EQ(described(zel_MaxValue(std::int16_t{2}, 2.0)), "Integer 2");  // the first of equals
  EXPECT_EQ(described(zel_MinValue(2.0, std::int16_t{2})), "Double 2");
  EXPECT_TRUE(zel_MaxValue(Variant::null(), 1.0).isNull());
  EXPECT_TRUE(zel_MaxValue(ArrayData::ofBytes({}), 1.0).isEmpty());
  EXPECT_TRUE(zel_MinValue(1.0, nullptr).isEmpty());
  EXPECT_THAT(reports, ElementsAre("zelMisc.zel_MaxValue|13", "zelMisc.zel_MinValue|91"));
}

DoubleArray doubles(std::int32_t lower, std::initializer_list<double> elements) {
  const Ref<ArrayData> array =
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
  const auto appended = [](DoubleArray target, const DoubleArray& source, double factor = 1) {
    const DoubleArray kept = target;
    const std::string before = described(kept);
    zel_AppendArray(target, source, factor);
    EXPECT_EQ(described(kept), before);  // an array is a value
    return described(target);
  };
  EXPECT_EQ(appended(doubles(1, {1, 2}), doubles(5, {3, 4}), -0.5), "1: 1 2 -1.5 -2");
  EXPECT_EQ(appended(doubles(-1, {1}), undimensioned), "-1: 1");
  EXPECT_EQ(appended(undimensioned, doubles(7, {1})), "0: 1");
  EXPECT_EQ(appended({}, doubles(7, {1})), "0: 1");
  EXPECT_EQ(appended(undimensioned, undimensioned), "none");
  EXPECT_EQ(appended(doubles(3, {}), doubles(0, {})), "3:");
  EXPECT_TRUE(reports.empty());
  EXPECT_EQ(appended(doubles(0, {1}), doubles(0, {2, 1e308}), 10), "0: 1");
  zel_AppendArray(*std::make_unique<DoubleArray>(doubles(0, {1})),
                  {ArrayData::create(VariantKind::Double, {{0, 2}, {0, 2}})});
  EXPECT_THAT(reports, ElementsAre("zelMisc.AppendArray|6", "zelMisc.AppendArray|9"));
}

TEST_F(ZelMisc, CountsTheElementsOfArraysAlone) {
  EXPECT_EQ(zel_ArrayCount(doubles(-2, {1, 2, 3}).data), 3);
  EXPECT_EQ(zel_ArrayCount(ArrayData::create(VariantKind::Variant, {{1, 4}, {0, 2}})), 4);
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
  for (const auto& [minutes, expected] : {std::pair{300, "-0500"},
                                          {-60, "0100"},
                                          {-330, "0550"},
                                          {0, "0000"},
                                          {210, "-0350"},
                                          {-765, "1275"}}) {
    bias = minutes;
    EXPECT_EQ(toUtf8(zel_GetEmailMessageDate()), std::string("Wed, 7 Mar 2007 14:05:09 ") + expected);
  }
  EXPECT_EQ(zel_GetEmailMessageID(),
            u"<20070307140509042@" + zel_WinAPIComputerNameEX(ComputerNameDnsFullyQualified) + u">");
}

TEST_F(ZelMisc, AProgramThatDoesNotStartIsFalseAndLogged) {
  const Replaced<Process> process(*this);
  EXPECT_TRUE(zel_ShellAndWait(u"  a.exe \"b c "));
  startError = ErrorNumber::FileNotFound;
  EXPECT_FALSE(zel_ShellAndWait(u"b.exe"));
  for (const StringView line : {StringView(), StringView(u"  "), StringView(u"a.exe\0b", 7)})
    EXPECT_FALSE(zel_ShellAndWait(line));
  EXPECT_THAT(lines, ElementsAre("a.exe \"b c ", "b.exe"));
  const std::string source = "zelMisc.zel_ShellAndWait|";
  EXPECT_THAT(reports, ElementsAre(source + "53", source + "5", source + "5", source + "5"));
}

TEST(ZelObjects, ObjectsAreCreatedByNameOrTheUserIsTold) {
  RecordingDialogs dialogs;
  const Replaced<Dialogs> replaced(dialogs);
  EXPECT_TRUE(zel_CreateObject(u"Scripting.FileSystemObject"));
  EXPECT_FALSE(zel_CreateObject(u"Acme.Nothing"));
  EXPECT_FALSE(zel_CreateObject(u"Acme.Nothing", u" "));
  EXPECT_EQ(
      dialogs.boxes,
      (std::vector<RecordingDialogs::Box>{{u"Object Descriptor: Acme.Nothing", u"Missing Component", 48}}));
}

// Looks wrong, and is meant: only objects count as being in a collection.
TEST(ZelObjects, OnlyObjectsAreFoundInCollections) {
  const Ref<Collection> collection = make<Collection>();
  collection->Add(make<Collection>(), u"object");
  collection->Add(u"text", u"text");
  collection->Add(nullptr, u"nothing");
  EXPECT_TRUE(zel_IsInCollection(collection, u"OBJECT"));
  EXPECT_TRUE(zel_IsInCollection(collection, std::int16_t{1}));
  for (const Variant& key :
       {Variant(u"text"), Variant(u"missing"), Variant(u"nothing"), Variant(), Variant(9.0)})
    EXPECT_FALSE(zel_IsInCollection(collection, key));
  EXPECT_FALSE(zel_IsInCollection({}, u"object"));
}

}  // namespace
}  // namespace zelUtilities
