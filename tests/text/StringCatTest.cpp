#include "text/zelStringCat.h"

#include <gtest/gtest.h>

#include <limits>

#include "automation/ClassInfo.h"
#include "automation/Conversions.h"
#include "support/XmlTexts.h"

namespace zelUtilities {
namespace {

constexpr std::int32_t longest = std::numeric_limits<std::int32_t>::max();

std::string complete(const zelStringCat& builder) { return toUtf8(builder.Complete()); }

// What Replace makes of a text.
struct Replacement {
  StringView text, find, replacement;
  const char* result;
  std::int32_t start = 1, count = -1, compare = zelStringCat::binaryCompare;
};
void expectReplaced(std::initializer_list<Replacement> rows) {
  for (const Replacement& row : rows) {
    zelStringCat builder;
    builder.ConcatenatePart(row.text);
    builder.Replace(row.find, row.replacement, row.start, row.count, row.compare);
    EXPECT_EQ(complete(builder), row.result) << toUtf8(row.text);
    EXPECT_EQ(builder.length(), static_cast<std::int32_t>(builder.Complete().size()));
  }
}
// A macro, so that several rows stand on a line.
#define EXPECT_REPLACED(...) expectReplaced({__VA_ARGS__})

// The text of a builder that the action was done to.
template <class Action>
std::string built(const Action& action) {
  zelStringCat builder;
  action(builder);
  return complete(builder);
}

TEST(StringCat, TheSeparatorStandsBetweenPiecesAndLineEndsAndCountsEmptyOnes) {
  zelStringCat builder;
  EXPECT_EQ(complete(builder), "");
  builder.setSeparator(u",");
  for (const StringView piece : {u"", u"a", u"", u"b"}) builder.Concatenate(piece);
  EXPECT_EQ(complete(builder), ",a,,b");
  builder.ConcatenateCRLF(u"c");
  builder.ConcatenateCRLF(u"d");
  EXPECT_EQ(complete(builder), ",a,,b,c,\r\n,d,\r\n");
}

TEST(StringCat, StartEmptiesButKeepsSeparatorMarginAndTheElementBegun) {
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
  EXPECT_EQ(built([](auto& b) { b.StartElement(u"Col"), b.Start(), b.FinishElement(false); }), "/>\r\n");
}

TEST(StringCat, CapacityDoublesUpTo65536AndIsThenTheSmallestMultipleOfThat) {
  const std::pair<int, int> cases[] = {{0, 2048},      {2048, 2048},    {2049, 4096},
                                       {65536, 65536}, {65537, 131072}, {400000, 7 * 65536}};
  for (const auto& [length, capacity] : cases) {
    zelStringCat whole, pieces;
    whole.ConcatenatePart(repeated(u"x", length));
    for (int i = 0; i < length; ++i) pieces.ConcatenatePart(u"x");
    EXPECT_EQ(whole.capacity(), capacity) << length;
    EXPECT_EQ(pieces.capacity(), capacity) << length << " one by one";
  }
}

TEST(StringCat, ALongTextKeepsEveryCharacter) {
  zelStringCat builder;
  for (char16_t i = 0; i < 60000; ++i) builder.ConcatenatePart(repeated(StringView(&i, 1), 100));
  ASSERT_EQ(builder.length(), 6000000);
  const StringView text = builder.text();
  for (std::size_t i = 0; i < text.size(); i += 33) ASSERT_EQ(text[i], static_cast<char16_t>(i / 100));
}

TEST(StringCat, PiecesOfAnyLengthArriveWholeAndTouchNothingElse) {
  String text;
  for (char16_t i = 0; i <= 64; ++i) text += static_cast<char16_t>(u'A' + i);
  for (std::size_t end = 1; end <= text.size(); ++end) {
    zelStringCat builder;
    builder.ConcatenatePart(StringView(text).substr(0, 1));
    builder.ConcatenatePart(StringView(text).substr(1, end - 1));
    builder.ConcatenatePart(StringView(text).substr(end));
    ASSERT_EQ(builder.Complete(), text) << end;
  }
}

TEST(StringCat, FindGivesThePositionAtOrAfterTheStart) {
  zelStringCat builder;
  builder.ConcatenatePart(u"zzzzzzzz");  // what was there before Start is not seen
  builder.Start();
  builder.ConcatenatePart(u"abcABC");
  EXPECT_EQ(builder.Find(u"bc", 2), 2);
  EXPECT_EQ(builder.Find(u"bc", 3), 0);
  EXPECT_EQ(builder.Find(u"bc", 3, zelStringCat::textCompare), 5);
  EXPECT_EQ(builder.Find(u"C", 6), 6);
  for (const StringView absent :
       {StringView(u""), StringView(u"z"), StringView(u"\0", 1), StringView(u"abcABCa")})
    EXPECT_EQ(builder.Find(absent), 0);
  for (const std::int32_t beyond : {7, longest}) EXPECT_EQ(builder.Find(u"a", beyond), 0);
}

TEST(StringCat, ReplaceReplacesMatchesFromTheStartOn) {
  EXPECT_REPLACED({u"abcab", u"ab", u"x", "xcx"}, {u"abcab", u"ab", u"wxyz", "wxyzcwxyz"},
                  {u"abcab", u"ab", u"", "c"}, {u"abcab", u"", u"x", "abcab"},
                  {u"abcab", u"ab", u"wxyz", "abcwxyz", 2}, {u"abcab", u"ab", u"x", "abcab", 6},
                  {u"aXbx", u"x", u"--", "a--b--", 1, -1, zelStringCat::textCompare});
  // The count is looked at after the replacement, so that there is always one.
  EXPECT_REPLACED({u"aaaa", u"a", u"b", "baaa", 1, 1}, {u"aaaa", u"a", u"b", "abba", 2, 2},
                  {u"aaaa", u"a", u"bb", "abbbba", 2, 2}, {u"aaaa", u"a", u"", "a", 1, 3},
                  {u"aaaa", u"a", u"b", "baaa", 1, 0}, {u"aaaa", u"a", u"b", "baaa", 1, -2});
  // Replacements are not searched, and matches do not overlap.
  EXPECT_REPLACED({u"aaa", u"a", u"aa", "aaaaaa"}, {u"aaaaa", u"aa", u"a", "aaa"},
                  {u"aab", u"ab", u"b", "ab"});
}

TEST(StringCat, ReplaceOfManyMatchesGrowsTheCapacityWhichDoesNotShrinkWithTheText) {
  zelStringCat builder;
  builder.ConcatenatePart(repeated(u"a<b", 30000));
  const auto expectReplacedBy = [&](StringView find, StringView replacement, StringView unit) {
    builder.Replace(find, replacement);
    EXPECT_TRUE(builder.Complete() == repeated(unit, 30000));
    EXPECT_EQ(builder.capacity(), 3 * 65536);
  };
  expectReplacedBy(u"<", u"&lt;", u"a&lt;b");
  expectReplacedBy(u"&lt;", u"<", u"a<b");
  expectReplacedBy(u"a<b", u"", u"");
  builder.CheckBufferSize(200000);
  EXPECT_EQ(builder.capacity(), 4 * 65536);
}

TEST(StringCat, AddElementWritesTheValueUnlessItIsTheDefaultWithoutAttributes) {
  const auto added = [](StringView value, StringView attributes = {}, StringView usual = {}) {
    return built([&](auto& b) { b.setMargin(u" "), b.AddElement(u"A", value, attributes, usual); });
  };
  EXPECT_EQ(added(u"a<b"), " <A>a&lt;b</A>\r\n");
  EXPECT_EQ(added(u"12.5", u"type='x'"), " <A type='x'>12.5</A>\r\n");
  EXPECT_EQ(added(u"", u"b='1'"), " <A b='1' />\r\n");
  EXPECT_EQ(added(u"", u" b='1'"), " <A b='1' />\r\n");
  EXPECT_EQ(added(u"", u"", u"x"), " <A />\r\n");
  EXPECT_EQ(added(u""), "");
  EXPECT_EQ(added(u"x", u"", u"x"), "");
  EXPECT_EQ(added(u"x", u"", u"X"), " <A>x</A>\r\n");
  EXPECT_EQ(added(u"x", u"b='1'", u"x"), " <A b='1'>x</A>\r\n");
  // A numeric value has points for commas before it is compared.
  EXPECT_EQ(added(u"1,5"), " <A>1.5</A>\r\n");
  EXPECT_EQ(added(u"x,y"), " <A>x,y</A>\r\n");
  EXPECT_EQ(added(u"2,5", u"", u"2.5"), "");
}

TEST(StringCat, OpenElementsNestByTwoBlanksAndAMarginLosesItsOwnCharactersOnClosing) {
  EXPECT_EQ(built([](auto& b) {
              b.OpenElement(u"A", u"x='1'"), b.OpenElement(u"B"), b.AddElement(u"C", u"v"), b.CloseElement();
              EXPECT_EQ(b.DtlMargin(), u"  ");
              b.CloseElement(), b.CloseElement();
              EXPECT_EQ(b.DtlMargin(), u"");
              b.setMargin(u"--"), b.OpenElement(u"D");
              EXPECT_EQ(b.DtlMargin(), u"  --");
              b.CloseElement();
              EXPECT_EQ(b.Margin(), u"--");
            }),
            "<A x='1'>\r\n  <B>\r\n    <C>v</C>\r\n  </B>\r\n</A>\r\n--<D>\r\n  </D>\r\n");
}

TEST(StringCat, AnElementMayBeWrittenStepByStep) {
  EXPECT_EQ(built([](auto& b) {
              b.StartElement(u"Col"), b.AddAttribute(u"key", u"A&1"), b.FinishElementEx(false, u"");
              b.StartElement(u"Col"), b.FinishElementEx(false, u"<");
              b.StartElement(u"Cols"), b.AddAttribute(u"n", u"2"), b.FinishElementEx(true, u"not used");
              b.AddElement(u"E", u"e"), b.CloseElement();
            }),
            "<Col key='A&amp;1'/>\r\n<Col>&lt;</Col>\r\n<Cols n='2'>\r\n  <E>e</E>\r\n</Cols>\r\n");
}

TEST(StringCat, AttributesThatAreEmptyOrTheDefaultOrWithoutAnElementAreLeftOut) {
  EXPECT_EQ(built([](auto& b) {
              b.StartElement(u"A"), b.AddAttribute(u"a", u""), b.AddAttribute(u"b", u"5", u"5");
              b.AddAttribute(u"c", u"5", std::int32_t{5});  // a text is never equal to a number
              b.AddAttribute(u"d", u"5", Variant::null()), b.FinishElement(false);
              b.AddAttribute(u"a", u"1"), b.FinishElement(true), b.CloseElement();
            }),
            "<A c='5' d='5'/>\r\n");
}

TEST(StringCat, TheSeparatorReachesAttributesAndTheLastLineEnd) {
  EXPECT_EQ(built([](auto& b) {
              b.setSeparator(u"|"), b.StartElement(u"A"), b.AddAttribute(u"a", u"1"), b.FinishElement(false);
            }),
            "<A |a|='|1|'/|>\r\n");
}

TEST(StringCat, ItCanBeCalledLate) {
  const Ref<Object> builder = zelStringCat::describeClass().create();
  const auto call = [&](StringView name, InvokeKind kind, std::vector<Variant> arguments = {}) {
    return toText(builder->Invoke(name, kind, arguments));
  };
  call(u"separator", InvokeKind::Put, {u", "});
  for (int i = 0; i < 2; ++i) call(u"Concatenate", InvokeKind::Method, {std::int32_t{12}});
  EXPECT_EQ(call(u"Complete", InvokeKind::Method), u"12, 12");
  EXPECT_EQ(call(u"length", InvokeKind::Get) + call(u"Find", InvokeKind::Method, {u" 1"}), u"64");
}

}  // namespace
}  // namespace zelUtilities
