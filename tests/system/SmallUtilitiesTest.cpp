// The modules of small utilities.
#include <gtest/gtest.h>

#include "automation/Collection.h"
#include "automation/Conversions.h"
#include "automation/Format.h"
#include "platform/Files.h"
#include "support/RaisedError.h"
#include "support/RecordingDesktop.h"
#include "support/RecordingDialogs.h"
#include "support/Reports.h"
#include "system/zelConversions.h"
#include "system/zelHelp.h"
#include "system/zelMisc.h"
#include "system/zelObjects.h"
#include "system/zelStrings.h"

namespace zelUtilities {
namespace {

TEST(ZelStrings, JoinsWithASeparatorOnlyWhereBothValuesHaveText) {
  EXPECT_EQ(zel_JoinStrings(u"a", u"b") + u"|" + zel_JoinStrings(u"a", u"b", u"-"), u"a b|a-b");
  EXPECT_EQ(zel_JoinStrings(u"a", u"", u"-") + zel_JoinStrings(u"", u"b", u"-"), u"ab");
}

TEST(ZelStrings, CutsAtTheFirstNulBeforeItTrimsBlanks) {
  EXPECT_EQ(zel_NullTrim(StringView(u" a b  \0 c\0", 10)), u"a b");
  EXPECT_EQ(zel_NullTrim(u" \tab\t "), u"\tab\t");
  EXPECT_EQ(zel_NullTrim(StringView(u"\0ab", 3)), u"");
}

// What is asked for is that the doubled text is replaced over and over: repeats come down to one.
TEST(ZelStrings, GivesWhatReplacingOverAndOverGives) {
  EXPECT_EQ(zel_RemoveDups(u"a\r\n\r\n\r\nb", u"\r\n"), u"a\r\nb");
  EXPECT_EQ(zel_RemoveDups(u"aa", u"") + zel_RemoveDups(u"", u"-"), u"aa");
  for (std::uint32_t letters = 0; letters < 4096; ++letters) {
    String source;
    for (int bit = 0; bit < 12; ++bit) source += (letters >> bit & 1) != 0 ? u'b' : u'a';
    for (std::size_t length = 1; length < 6; ++length) {
      const String once = source.substr(0, length);
      String replaced = source;
      for (std::size_t at = 0; (at = replaced.find(once + once)) != String::npos;) replaced.erase(at, length);
      ASSERT_EQ(zel_RemoveDups(source, once), replaced) << toUtf8(source + u" " + once);
    }
  }
}

TEST(ZelConversions, UnitsGoByTheirFactorsAndBack) {
  EXPECT_EQ(zel_Ft2ToM2(2), 0.18580608);
  EXPECT_EQ(zel_M2ToFt2(0.09290304) + zel_MToFt(0.3048), 2);
  EXPECT_EQ(zel_FtToM(1), 0.3048);
  EXPECT_EQ(zel_LbToKg(1), 0.453592);
  EXPECT_EQ(zel_KgToLb(zel_LbToKg(7)), 7);
  EXPECT_EQ(raisedError([] { zel_MToFt(1e308); }), "6||Overflow");
}

Ref<ArrayData> bytesFrom(std::int32_t lower, std::initializer_list<std::uint8_t> bytes) {
  const auto array =
      ArrayData::create(VariantKind::Byte, {{lower, static_cast<std::uint32_t>(bytes.size())}});
  std::copy(bytes.begin(), bytes.end(), array->bytes().begin());
  return array;
}

TEST(ZelConversions, BytesAreReadMostSignificantFirst) {
  EXPECT_EQ(zel_MotorolaBytesToShort(bytesFrom(0, {0x80, 0})), -32768);
  EXPECT_EQ(zel_MotorolaBytesToShort(bytesFrom(0, {0x7F, 0xFF})), 32767);
  EXPECT_EQ(zel_MotorolaBytesToUnsignedShort(bytesFrom(0, {0x80, 1})), 32769);
  EXPECT_EQ(zel_MotorolaBytesToLong(bytesFrom(0, {0x80, 0, 1, 0})), -2147483647 - 1 + 256);
  EXPECT_EQ(zel_MotorolaBytesToLong(bytesFrom(-3, {9, 0xFF, 0xFF, 0xFF, 0xFE}), -2), -2);
}

TEST(ZelConversions, BytesOutsideTheArrayAreAnErrorOfTheCaller) {
  const Ref<ArrayData> bytes = bytesFrom(1, {1, 2, 3, 4});
  for (const std::int32_t index : {0, 2, 2147483647, -2147483647 - 1})
    EXPECT_EQ(raisedError([&] { zel_MotorolaBytesToLong(bytes, index); }), "9||Subscript out of range");
  for (const std::vector<ArrayBound>& bounds : {std::vector<ArrayBound>{}, {{0, 1}}, {{0, 4}, {0, 4}}})
    EXPECT_EQ(raisedError([&] { zel_MotorolaBytesToShort(ArrayData::create(VariantKind::Byte, bounds)); }),
              "9||Subscript out of range");
  EXPECT_EQ(raisedError([] {
              zel_MotorolaBytesToShort(ArrayData::ofVariants({1.0, 2.0}));
            }),
            "13||Type mismatch");
}

TEST(ZelConversions, DatesAreReadByAFormatOrTheLocale) {
  Reports reports{"zelConversions.zel_"};
  const std::tuple<StringView, StringView, std::string> cases[] = {
      {u"05.03.2007", u"Dd.mM.yYyY", "2007-03-05"},
      {u"3/5/2007", u"", "2007-03-05"},
      {u"2007", u"YYYY", "1899-12-30"},
      {u"200703", u"yyyymm", "1899-12-30"},
      {u"200703", u"yyyymmdd", "2007-02-28"},  // the day is 0
      {u"20071332", u"yyyymmdd", "2008-02-01"},
      {u"2007 3 5", u"yyyymmdd", "2007-03-05"},
      {u"2007-1-1", u"yyyymmdd", "2006-10-30"},  // month -1 and day -1
      {u"2007&H05", u"yyyymmdd", "2006-12-05"},
      {u"01000101", u"yyyymmdd", "100-01-01"},
      {u"00290101", u"yyyymmdd", "2029-01-01"},
      {u"00300101", u"yyyymmdd", "1930-01-01"},
      {u"99991231", u"yyyymmdd", "9999-12-31"},
      {u"-9990101", u"yyyymmdd", "1001-01-01"}};
  for (const auto& [text, pattern, expected] : cases)
    EXPECT_EQ(toUtf8(format(Variant::date(zel_StringToDate(text, pattern).days), u"yyyy-mm-dd")), expected);
  EXPECT_EQ(zel_StringToDate(u"12 apples").days, 0);
  for (const StringView text : {u"99991232", u"01000001", u"1e4 0101", u"9e9 0101"})
    EXPECT_EQ(zel_StringToDate(text, u"yyyymmdd").days, 0);
  EXPECT_EQ(reports.taken(), "StringToDate|13 StringToDate|5 StringToDate|5 StringToDate|5 StringToDate|6 ");
}

TEST(ZelMisc, TheLargerAndSmallerValueComeBackAsPassed) {
  Reports reports{"zelMisc."};
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

TEST(ZelMisc, ElementsAreAppendedTimesTheFactor) {
  Reports reports{"zelMisc."};
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
    const std::string text = described(before);
    DoubleArray target = before;
    zel_AppendArray(target, source, factor);
    EXPECT_EQ(described(target), expected);
    EXPECT_EQ(described(before), text);  // an array is a value
    EXPECT_EQ(reports.taken(), logged);
  }
}

TEST(ZelMisc, CountsTheElementsOfArraysAlone) {
  EXPECT_EQ(zel_ArrayCount(ArrayData::create(VariantKind::Variant, {{-2, 4}, {0, 2}})), 4);
  for (const Variant& value : {Variant(ArrayData::create(VariantKind::Byte, {})), Variant(), Variant(u"abc")})
    EXPECT_EQ(zel_ArrayCount(value), 0);
}

TEST(ZelMisc, ScriptsAppendToArraysOfDoublesAndToNoOthers) {
  const Member& append = *zelMisc::describeClass().find(u"zel_AppendArray");
  const Ref<Object> instance = make<FunctionClass>(zelMisc::describeClass());
  Variant arguments[] = {doubles(0, {1}).data, doubles(0, {2}).data, Variant::missing()};
  invokeMember(*instance, append, InvokeKind::Method, arguments);
  EXPECT_EQ(described(DoubleArray{arguments[0].arrayRef()}), "0: 1 2");
  arguments[1] = ArrayData::ofVariants({2.0});
  EXPECT_THROW(invokeMember(*instance, append, InvokeKind::Method, arguments), Error);
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

TEST(ZelHelp, TheExtensionAsWrittenChoosesTheViewer) {
  for (const StringView name : {u"manual.chm", u"other.CHM", u"chm.hlp"}) files().replaceWhole(name, "");
  RecordingDesktop desktop;
  const std::int32_t unknown = RecordingDesktop::unknownContext;
  EXPECT_EQ(ShowHTMLHelp(u"manual.chm", unknown), 100);  // the default topic
  EXPECT_EQ(ShowHTMLHelp(u"manual.chm", 0), 100);
  EXPECT_EQ(ShowHTLMHelp(u"manual.chm", -3), 102);
  EXPECT_EQ(zel_HelpFromContext(u"manual.chm", 5), 115);
  EXPECT_EQ(zel_HelpFromContext(u"other.CHM", 5), -1);
  EXPECT_EQ(zel_HelpFromContext(u"chm.hlp", unknown), -1);  // a failing viewer is skipped
  for (const String missing : {u"missing.chm", u"missing.hlp", u"", u"a*.chm"})
    EXPECT_TRUE(zel_HelpFromContext(missing, 1) == 0 && ShowHTMLHelp(missing, 1) == 0 &&
                !ShowWinHelp(missing, 1));
  EXPECT_EQ(desktop.calls, "html 15 99\nhtml 0 0\nhtml 0 0\nhtml 2 0\nhtml 15 5\nwindow 1 5\nwindow 1 99\n");
  for (const StringView name : {u"manual.chm", u"other.CHM", u"chm.hlp"}) files().remove(name);
}

}  // namespace
}  // namespace zelUtilities
