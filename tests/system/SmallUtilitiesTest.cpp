// The modules of small utilities.
#include "automation/Collection.h"
#include "automation/Format.h"
#include "platform/Files.h"
#include "platform/LateBound.h"
#include "support/RecordingDesktop.h"
#include "support/RecordingDialogs.h"
#include "support/Testing.h"
#include "system/zelConversions.h"
#include "system/zelHelp.h"
#include "system/zelMisc.h"
#include "system/zelObjects.h"
#include "system/zelStrings.h"

namespace zelUtilities {
namespace {

TEST(ZelStrings, JoinsWithASeparatorOnlyWhereBothValuesHaveTextAndTrimsWhatIsBeforeANul) {
  EXPECT_EQ(spelled({zel_JoinStrings(u"a", u"b"), zel_JoinStrings(u"a", u"b", u"-"),
                     zel_JoinStrings(u"a", u"", u"-"), zel_JoinStrings(u"", u"b", u"-")}),
            "a b|a-b|a|b");
  EXPECT_EQ(spelled({zel_NullTrim(StringView(u" a b  \0 c\0", 10)), zel_NullTrim(u" \tab\t "),
                     zel_NullTrim(StringView(u"\0ab", 3))}),
            "a b|\tab\t|");
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
  EXPECT_EQ(
      spelled({zel_Ft2ToM2(2), zel_M2ToFt2(0.09290304), zel_FtToM(1), zel_MToFt(0.3048), zel_LbToKg(1)}),
      "0.18580608|1|0.3048|1|0.453592");
  EXPECT_EQ(zel_KgToLb(zel_LbToKg(7)), 7);
  EXPECT_EQ(raisedError([] { zel_MToFt(1e308); }), "6||Overflow");
}

template <class Element>
Ref<ArrayData> arrayOf(VariantKind kind, std::int32_t lower, std::initializer_list<Element> elements) {
  const auto array = ArrayData::create(kind, {{lower, static_cast<std::uint32_t>(elements.size())}});
  std::size_t i = 0;
  for (const Element element : elements) array->set(i++, element);
  return array;
}

TEST(ZelConversions, BytesAreReadMostSignificantFirstAndOnlyInsideTheArray) {
  const auto bytes = [](std::initializer_list<std::uint8_t> of) {
    return arrayOf(VariantKind::Byte, -3, of);
  };
  EXPECT_EQ(spelled({zel_MotorolaBytesToShort(bytes({0x80, 0}), -3),
                     zel_MotorolaBytesToShort(bytes({0x7F, 0xFF}), -3),
                     zel_MotorolaBytesToUnsignedShort(bytes({0x80, 1}), -3),
                     zel_MotorolaBytesToLong(bytes({0x80, 0, 1, 0}), -3),
                     zel_MotorolaBytesToLong(bytes({9, 0xFF, 0xFF, 0xFF, 0xFE}), -2)}),
            "-32768|32767|32769|-2147483392|-2");
  const auto readAt = [](const Ref<ArrayData>& array, std::int32_t index) {
    return raisedError([&] { zel_MotorolaBytesToLong(array, index); });
  };
  for (const std::int32_t index : {-4, -2, 2147483647, -2147483647 - 1})
    EXPECT_EQ(readAt(bytes({1, 2, 3, 4}), index), "9||Subscript out of range");
  for (const std::vector<ArrayBound>& bounds : {std::vector<ArrayBound>{}, {{0, 4}, {0, 4}}})
    EXPECT_EQ(readAt(ArrayData::create(VariantKind::Byte, bounds), 0), "9||Subscript out of range");
  EXPECT_EQ(readAt(arrayOf(VariantKind::Long, 0, {1, 2, 3, 4}), 0), "13||Type mismatch");
}

TEST(ZelConversions, DatesAreReadByAFormatOrTheLocale) {
  Reports reports{"zelConversions.zel_"};
  const auto read = [](StringView text, StringView pattern) {
    return toUtf8(format(Variant::date(zel_StringToDate(text, pattern).days), u"yyyy-mm-dd"));
  };
  EXPECT_EQ(read(u"05.03.2007", u"Dd.mM.yYyY") + read(u"3/5/2007", u""), "2007-03-052007-03-05");
  EXPECT_EQ(read(u"2007", u"YYYY") + read(u"", u"yyyymmdd"), "1899-12-301899-12-30");
  // The days 0 and -1 and the month -1 are those before the first.
  const std::pair<StringView, const char*> cases[] = {
      {u"200703", "2007-02-28"},   {u"20071332", "2008-02-01"}, {u"2007 3 5", "2007-03-05"},
      {u"2007-1-1", "2006-10-30"}, {u"2007&H05", "2006-12-05"}, {u"01000101", "100-01-01"},
      {u"00290101", "2029-01-01"}, {u"00300101", "1930-01-01"}, {u"99991231", "9999-12-31"},
      {u"-9990101", "1001-01-01"}};
  for (const auto& [text, expected] : cases) EXPECT_EQ(read(text, u"yyyymmdd"), expected);
  EXPECT_EQ(zel_StringToDate(u"12 apples").days, 0);
  for (const StringView text : {u"99991232", u"01000001", u"1e4 0101", u"9e9 0101"})
    EXPECT_EQ(zel_StringToDate(text, u"yyyymmdd").days, 0);
  EXPECT_EQ(reports.taken(), "StringToDate|13 StringToDate|5 StringToDate|5 StringToDate|5 StringToDate|6 ");
}

TEST(ZelMisc, TheLargerAndSmallerValueComeBackAsPassed) {
  Reports reports{"zelMisc."};
  const auto both = [](const Variant& first, const Variant& second) {
    const Variant larger = zel_MaxValue(first, second), smaller = zel_MinValue(first, second);
    return spelled({typeName(larger) + toText(larger), typeName(smaller) + toText(smaller)});
  };
  const Variant two(std::int16_t{2});
  EXPECT_EQ(both(two, 2.5), "Double2.5|Integer2");
  EXPECT_EQ(both(u"10", u"9"), "String9|String10");
  EXPECT_EQ(both(u"1", 2.0), "String1|Double2");   // numbers come before texts
  EXPECT_EQ(both(two, 2.0), "Integer2|Integer2");  // the first of equals
  EXPECT_EQ(both(2.0, two), "Double2|Double2");
  EXPECT_EQ(spelled({zel_MaxValue(Variant::null(), 1.0), zel_MaxValue(ArrayData::ofBytes({}), 1.0),
                     zel_MinValue(1.0, nullptr)}),
            "Null|Empty|Empty");
  EXPECT_EQ(reports.taken(), "zel_MaxValue|13 zel_MinValue|91 ");
}

DoubleArray doubles(std::int32_t lower, std::initializer_list<double> elements) {
  return {arrayOf(VariantKind::Double, lower, elements)};
}

TEST(ZelMisc, ElementsAreAppendedTimesTheFactorAndCounted) {
  Reports reports{"zelMisc."};
  const DoubleArray undimensioned{ArrayData::create(VariantKind::Double, {})};
  const DoubleArray square{ArrayData::create(VariantKind::Double, {{-2, 4}, {0, 2}})};
  const std::tuple<DoubleArray, DoubleArray, double, DoubleArray, const char*> cases[] = {
      {doubles(1, {1, 2}), doubles(5, {3, 4}), -0.5, doubles(1, {1, 2, -1.5, -2}), ""},
      {doubles(-1, {1}), undimensioned, 1, doubles(-1, {1}), ""},
      {undimensioned, doubles(7, {1}), 1, doubles(0, {1}), ""},
      {{}, doubles(7, {1}), 1, doubles(0, {1}), ""},
      {undimensioned, undimensioned, 1, undimensioned, ""},
      {doubles(3, {}), doubles(0, {}), 1, doubles(3, {}), ""},
      {doubles(0, {1}), doubles(0, {2, 1e308}), 10, doubles(0, {1}), "AppendArray|6 "},
      {doubles(0, {1}), square, 1, doubles(0, {1}), "AppendArray|9 "}};
  for (const auto& [before, source, factor, expected, logged] : cases) {
    const std::string text = shown(before.data);
    DoubleArray target = before;
    zel_AppendArray(target, source, factor);
    EXPECT_EQ(shown(target.data), shown(expected.data));
    EXPECT_EQ(shown(before.data), text);  // an array is a value
    EXPECT_EQ(reports.taken(), logged);
  }
  EXPECT_EQ(zel_ArrayCount(square.data), 4);
  for (const Variant& value : {Variant(undimensioned.data), Variant(), Variant(u"abc")})
    EXPECT_EQ(zel_ArrayCount(value), 0);
}

TEST(ZelMisc, ScriptsAppendToArraysOfDoublesAndToNoOthers) {
  const Ref<Object> functions = make<FunctionClass>(zelMisc::describeClass());
  Variant arguments[] = {doubles(0, {1}).data, doubles(0, {2}).data, Variant::missing()};
  functions->Invoke(u"zel_AppendArray", InvokeKind::Method, arguments);
  EXPECT_EQ(shown(arguments[0]), "Double()[0:2] {Double 1, Double 2}");
  arguments[1] = ArrayData::ofVariants({2.0});
  EXPECT_THROW(functions->Invoke(u"zel_AppendArray", InvokeKind::Method, arguments), Error);
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
  const ScratchFolder scratch;
  for (const StringView name : {u"manual.chm", u"other.CHM", u"chm.hlp"}) files().replaceWhole(name, "");
  RecordingDesktop desktop;
  constexpr std::int32_t unknown = RecordingDesktop::unknownContext;  // the default topic is shown
  EXPECT_EQ(spelled({ShowHTMLHelp(u"manual.chm", unknown), ShowHTMLHelp(u"manual.chm", 0),
                     ShowHTLMHelp(u"manual.chm", -3), zel_HelpFromContext(u"manual.chm", 5)}),
            "100|100|102|115");
  EXPECT_EQ(zel_HelpFromContext(u"other.CHM", 5), -1);
  EXPECT_EQ(zel_HelpFromContext(u"chm.hlp", unknown), -1);  // a failing viewer is skipped
  for (const String missing : {u"missing.chm", u"missing.hlp", u"", u"a*.chm"})
    EXPECT_EQ(spelled({zel_HelpFromContext(missing, 1), ShowHTMLHelp(missing, 1), ShowWinHelp(missing, 1)}),
              "0|0|False");
  EXPECT_EQ(desktop.calls, "html 15 99\nhtml 0 0\nhtml 0 0\nhtml 2 0\nhtml 15 5\nwindow 1 5\nwindow 1 99\n");
}

}  // namespace
}  // namespace zelUtilities
