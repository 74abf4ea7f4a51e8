#include "text/zelStringCat.h"

#include <gtest/gtest.h>

#include <limits>

#include "automation/ClassInfo.h"
#include "automation/Conversions.h"

namespace zelUtilities {
namespace {

constexpr std::int32_t longest = std::numeric_limits<std::int32_t>::max();

std::string complete(const zelStringCat& builder) { return toUtf8(builder.Complete()); }

String repeated(StringView text, int count) {
  String result;
  for (int i = 0; i < count; ++i) result += text;
  return result;
}

// What Replace makes of a text.
std::string replaced(StringView text, StringView find, StringView replacement, std::int32_t start = 1,
                     std::int32_t count = -1, std::int32_t compare = zelStringCat::binaryCompare) {
  zelStringCat builder;
  builder.ConcatenatePart(text);
  builder.Replace(find, replacement, start, count, compare);
  EXPECT_EQ(builder.length(), static_cast<std::int32_t>(builder.Complete().size()));
  return complete(builder);
}

TEST(StringCat, ANewBuilderIsEmpty) {
  zelStringCat builder;
  EXPECT_EQ(builder.Complete(), u"");
  EXPECT_EQ(builder.length(), 0);
  EXPECT_EQ(builder.capacity(), 2048);
}

TEST(StringCat, TheSeparatorStandsBetweenPiecesAndCountsEmptyOnes) {
  zelStringCat builder;
  builder.setSeparator(u",");
  builder.Concatenate(u"");
  builder.Concatenate(u"a");
  builder.Concatenate(u"");
  builder.Concatenate(u"b");
  EXPECT_EQ(complete(builder), ",a,,b");
}

TEST(StringCat, TheSeparatorStandsBeforeALineEndToo) {
  zelStringCat builder;
  builder.setSeparator(u",");
  builder.ConcatenateCRLF(u"c");
  builder.ConcatenateCRLF(u"d");
  EXPECT_EQ(complete(builder), "c,\r\n,d,\r\n");
}

TEST(StringCat, CompleteCanBeAskedAgainAndAgain) {
  zelStringCat builder;
  builder.Concatenate(u"a");
  EXPECT_EQ(complete(builder), "a");
  builder.Concatenate(u"b");
  EXPECT_EQ(complete(builder), "ab");
}

TEST(StringCat, StartEmptiesButKeepsSeparatorAndMargin) {
  zelStringCat builder;
  builder.setSeparator(u";");
  builder.setMargin(u"\t");
  builder.Concatenate(repeated(u"x", 300000));
  builder.OpenElement(u"A");
  builder.Start();
  EXPECT_EQ(builder.length(), 0);
  EXPECT_EQ(builder.capacity(), 2048);
  EXPECT_EQ(builder.DtlMargin(), u"\t");
  builder.Concatenate(u"a");
  builder.Concatenate(u"b");
  builder.CloseElement();
  EXPECT_EQ(complete(builder), "a;b");
}

TEST(StringCat, TheElementBegunOutlivesStart) {
  zelStringCat builder;
  builder.StartElement(u"Col");
  builder.Start();
  builder.FinishElement(false);
  EXPECT_EQ(complete(builder), "/>\r\n");
}

// Capacity

TEST(StringCat, CapacityDoublesUpTo65536AndIsThenTheSmallestMultipleOfThat) {
  const auto capacityAfter = [](std::size_t characters) {
    zelStringCat builder;
    builder.ConcatenatePart(String(characters, u'x'));
    return builder.capacity();
  };
  EXPECT_EQ(capacityAfter(2048), 2048);
  EXPECT_EQ(capacityAfter(2049), 4096);
  EXPECT_EQ(capacityAfter(5000), 8192);
  EXPECT_EQ(capacityAfter(65536), 65536);
  EXPECT_EQ(capacityAfter(65537), 131072);
  EXPECT_EQ(capacityAfter(70000), 131072);
  EXPECT_EQ(capacityAfter(400000), 7 * 65536);
}

TEST(StringCat, CapacityIsTheSameHoweverTheTextCame) {
  zelStringCat builder;
  for (int i = 0; i < 50000; ++i) builder.ConcatenatePart(u"12345678");
  EXPECT_EQ(builder.length(), 400000);
  EXPECT_EQ(builder.capacity(), 7 * 65536);
}

TEST(StringCat, CapacityDoesNotShrinkWithTheText) {
  zelStringCat builder;
  builder.ConcatenatePart(repeated(u"ab", 35000));
  builder.Replace(u"ab", u"");
  EXPECT_EQ(builder.length(), 0);
  EXPECT_EQ(builder.capacity(), 131072);
  builder.CheckBufferSize(140000);
  EXPECT_EQ(builder.capacity(), 3 * 65536);
}

TEST(StringCat, ALongTextKeepsEveryCharacter) {
  zelStringCat builder;
  for (char16_t i = 0; i < 60000; ++i) builder.ConcatenatePart(repeated(StringView(&i, 1), 100));
  ASSERT_EQ(builder.length(), 6000000);
  const StringView text = builder.text();
  for (std::size_t i = 0; i < text.size(); i += 33) ASSERT_EQ(text[i], static_cast<char16_t>(i / 100));
}

TEST(StringCat, PiecesOfAnyLengthArriveWholeAndTouchNothingElse) {
  String expected;
  for (char16_t i = 0; i < 64; ++i) expected += static_cast<char16_t>(u'A' + i);
  for (std::size_t length = 0; length <= expected.size(); ++length) {
    zelStringCat builder;
    builder.ConcatenatePart(u"<");
    builder.ConcatenatePart(StringView(expected).substr(0, length));
    builder.ConcatenatePart(StringView(expected).substr(length));
    ASSERT_EQ(builder.Complete(), u"<" + expected) << length;
  }
}

// Finding

TEST(StringCat, FindGivesThePositionAtOrAfterTheStart) {
  zelStringCat builder;
  builder.ConcatenatePart(u"abcABC");
  EXPECT_EQ(builder.Find(u"bc"), 2);
  EXPECT_EQ(builder.Find(u"bc", 2), 2);
  EXPECT_EQ(builder.Find(u"bc", 3), 0);
  EXPECT_EQ(builder.Find(u"bc", 3, zelStringCat::textCompare), 5);
  EXPECT_EQ(builder.Find(u"C", 6), 6);
  EXPECT_EQ(builder.Find(u"a", 7), 0);
  EXPECT_EQ(builder.Find(u"a", longest), 0);
  EXPECT_EQ(builder.Find(u""), 0);
  EXPECT_EQ(builder.Find(u"abcABCa"), 0);
}

TEST(StringCat, FindSeesOnlyTheCharactersInUse) {
  zelStringCat builder;
  builder.ConcatenatePart(u"abc");
  builder.Start();
  builder.ConcatenatePart(u"x");
  EXPECT_EQ(builder.Find(u"b"), 0);
  EXPECT_EQ(builder.Find(StringView(u"\0", 1)), 0);
}

// Replacing

TEST(StringCat, ReplaceReplacesAllMatchesFromTheStartOn) {
  EXPECT_EQ(replaced(u"abcab", u"ab", u"x"), "xcx");
  EXPECT_EQ(replaced(u"abcab", u"ab", u"wxyz"), "wxyzcwxyz");
  EXPECT_EQ(replaced(u"abcab", u"ab", u"yz"), "yzcyz");
  EXPECT_EQ(replaced(u"abcab", u"ab", u""), "c");
  EXPECT_EQ(replaced(u"abcab", u"ab", u"x", 2), "abcx");
  EXPECT_EQ(replaced(u"abcab", u"ab", u"wxyz", 2), "abcwxyz");
  EXPECT_EQ(replaced(u"abcab", u"ab", u"x", 6), "abcab");
  EXPECT_EQ(replaced(u"aXbx", u"x", u"--", 1, -1, zelStringCat::textCompare), "a--b--");
}

TEST(StringCat, ReplaceCountsAfterTheReplacementSoThatThereIsAlwaysOne) {
  EXPECT_EQ(replaced(u"aaaa", u"a", u"b", 1, 1), "baaa");
  EXPECT_EQ(replaced(u"aaaa", u"a", u"b", 2, 2), "abba");
  EXPECT_EQ(replaced(u"aaaa", u"a", u"bb", 2, 2), "abbbba");
  EXPECT_EQ(replaced(u"aaaa", u"a", u"", 1, 3), "a");
  EXPECT_EQ(replaced(u"aaaa", u"a", u"b", 1, 0), "baaa");
  EXPECT_EQ(replaced(u"aaaa", u"a", u"b", 1, -2), "baaa");
}

TEST(StringCat, ReplaceNeitherSearchesItsReplacementsNorOverlaps) {
  EXPECT_EQ(replaced(u"aaa", u"a", u"aa"), "aaaaaa");
  EXPECT_EQ(replaced(u"aaaaa", u"aa", u"a"), "aaa");
  EXPECT_EQ(replaced(u"aab", u"ab", u"b"), "ab");
}

TEST(StringCat, AnEmptySearchTextReplacesNothing) { EXPECT_EQ(replaced(u"abc", u"", u"x"), "abc"); }

TEST(StringCat, ReplaceOfManyMatchesGrowsTheCapacityAsTheTextGrows) {
  zelStringCat builder;
  builder.ConcatenatePart(repeated(u"a<b", 30000));
  builder.Replace(u"<", u"&lt;");
  EXPECT_EQ(builder.Complete(), repeated(u"a&lt;b", 30000));
  EXPECT_EQ(builder.capacity(), 3 * 65536);
  builder.Replace(u"&lt;", u"<");
  EXPECT_EQ(builder.Complete(), repeated(u"a<b", 30000));
}

// XML

TEST(StringCat, AddElementWritesTheValueOnOneLine) {
  const auto added = [](StringView value, StringView attributes = {}, StringView usual = {}) {
    zelStringCat builder;
    builder.setMargin(u" ");
    builder.AddElement(u"A", value, attributes, usual);
    return complete(builder);
  };
  EXPECT_EQ(added(u"abc"), " <A>abc</A>\r\n");
  EXPECT_EQ(added(u"a<b"), " <A>a&lt;b</A>\r\n");
  EXPECT_EQ(added(u"12.5", u"type='x'"), " <A type='x'>12.5</A>\r\n");
  EXPECT_EQ(added(u"", u"b='1'"), " <A b='1' />\r\n");
  EXPECT_EQ(added(u"", u" b='1'"), " <A b='1' />\r\n");
  EXPECT_EQ(added(u"", u"", u"x"), " <A />\r\n");
}

TEST(StringCat, AddElementLeavesOutTheDefaultValueWithoutAttributes) {
  zelStringCat builder;
  builder.AddElement(u"A", u"");
  builder.AddElement(u"A", u"x", u"", u"x");
  EXPECT_EQ(complete(builder), "");
  builder.AddElement(u"A", u"x", u"", u"X");
  builder.AddElement(u"A", u"x", u"b='1'", u"x");
  EXPECT_EQ(complete(builder), "<A>x</A>\r\n<A b='1'>x</A>\r\n");
}

TEST(StringCat, ANumericValueHasPointsForCommasBeforeItIsComparedWithTheDefault) {
  zelStringCat builder;
  builder.AddElement(u"A", u"1,5");
  builder.AddElement(u"A", u"x,y");
  builder.AddElement(u"A", u"2,5", u"", u"2.5");
  EXPECT_EQ(complete(builder), "<A>1.5</A>\r\n<A>x,y</A>\r\n");
}

TEST(StringCat, OpenElementsNestByTwoBlanks) {
  zelStringCat builder;
  builder.OpenElement(u"A", u"x='1'");
  builder.OpenElement(u"B");
  builder.AddElement(u"C", u"v");
  builder.CloseElement();
  EXPECT_EQ(builder.DtlMargin(), u"  ");
  builder.CloseElement();
  builder.CloseElement();
  EXPECT_EQ(complete(builder), "<A x='1'>\r\n  <B>\r\n    <C>v</C>\r\n  </B>\r\n</A>\r\n");
  EXPECT_EQ(builder.DtlMargin(), u"");
}

TEST(StringCat, AMarginThatIsNotBlankLosesItsOwnCharactersOnClosing) {
  zelStringCat builder;
  builder.setMargin(u"--");
  builder.OpenElement(u"A");
  EXPECT_EQ(builder.DtlMargin(), u"  --");
  builder.CloseElement();
  EXPECT_EQ(complete(builder), "--<A>\r\n  </A>\r\n");
  EXPECT_EQ(builder.Margin(), u"--");
}

TEST(StringCat, AnElementMayBeWrittenStepByStep) {
  zelStringCat builder;
  builder.StartElement(u"Col");
  builder.AddAttribute(u"key", u"A&1");
  builder.FinishElementEx(false, u"");
  builder.StartElement(u"Col");
  builder.FinishElementEx(false, u"<");
  builder.StartElement(u"Cols");
  builder.AddAttribute(u"n", u"2");
  builder.FinishElementEx(true, u"not used");
  builder.AddElement(u"E", u"e");
  builder.CloseElement();
  EXPECT_EQ(complete(builder),
            "<Col key='A&amp;1'/>\r\n<Col>&lt;</Col>\r\n<Cols n='2'>\r\n  <E>e</E>\r\n</Cols>\r\n");
}

TEST(StringCat, AttributesThatAreEmptyOrTheDefaultAreLeftOut) {
  zelStringCat builder;
  builder.StartElement(u"A");
  builder.AddAttribute(u"a", u"");
  builder.AddAttribute(u"b", u"5", u"5");
  builder.AddAttribute(u"c", u"5", std::int32_t{5});  // a text is never equal to a number
  builder.AddAttribute(u"d", u"5", Variant::null());
  builder.FinishElement(false);
  EXPECT_EQ(complete(builder), "<A c='5' d='5'/>\r\n");
}

TEST(StringCat, WithoutAnElementBegunNothingIsWritten) {
  zelStringCat builder;
  builder.AddAttribute(u"a", u"1");
  builder.FinishElement(true);
  builder.CloseElement();
  EXPECT_EQ(complete(builder), "");
}

TEST(StringCat, TheSeparatorReachesAttributesAndTheLastLineEnd) {
  zelStringCat builder;
  builder.setSeparator(u"|");
  builder.StartElement(u"A");
  builder.AddAttribute(u"a", u"1");
  builder.FinishElement(false);
  EXPECT_EQ(complete(builder), "<A |a|='|1|'/|>\r\n");
}

TEST(StringCat, ItCanBeCalledLate) {
  Ref<Object> builder = zelStringCat::describeClass().create();
  Variant separator[] = {u", "};
  builder->Invoke(u"separator", InvokeKind::Put, separator);
  Variant piece[] = {std::int32_t{12}};
  builder->Invoke(u"Concatenate", InvokeKind::Method, piece);
  builder->Invoke(u"Concatenate", InvokeKind::Method, piece);
  EXPECT_EQ(builder->Invoke(u"Complete", InvokeKind::Method, {}).text(), u"12, 12");
  EXPECT_EQ(toLong(builder->Invoke(u"length", InvokeKind::Get, {})), 6);
  Variant find[] = {u" 1"};
  EXPECT_EQ(toLong(builder->Invoke(u"Find", InvokeKind::Method, find)), 4);
}

}  // namespace
}  // namespace zelUtilities
