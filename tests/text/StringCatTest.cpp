#include "text/zelStringCat.h"

#include <limits>

#include "automation/ClassInfo.h"
#include "automation/Collection.h"
#include "foundation/LogFixture.h"
#include "platform/LateBound.h"
#include "support/Testing.h"
#include "support/XmlTexts.h"

namespace zelUtilities {
namespace {

constexpr std::int32_t longest = std::numeric_limits<std::int32_t>::max();
constexpr auto textCompare = zelStringCat::textCompare;

// What a builder holds when the action is done.
template <class Action>
std::string built(const Action& action) {
  zelStringCat builder;
  action(builder);
  EXPECT_EQ(builder.length(), static_cast<std::int32_t>(builder.Complete().size()));
  return toUtf8(builder.Complete());
}

TEST(StringCat, TheSeparatorStandsBeforeEachFurtherPieceAlsoOfXml) {
  EXPECT_EQ(built([](auto& b) {
              b.setSeparator(u",");
              for (const StringView piece : {u"", u"a", u"", u"b"}) b.Concatenate(piece);
              b.ConcatenateCRLF(u"c"), b.ConcatenateCRLF(u"d");
              b.StartElement(u"A"), b.AddAttribute(u"a", u"1"), b.FinishElement(false);
            }),
            ",a,,b,c,\r\n,d,\r\n<A, ,a,=',1,'/,>\r\n");
}

TEST(StringCat, StartEmptiesButKeepsSeparatorMarginAndTheElementBegun) {
  zelStringCat builder;
  setProperties(builder, u"Separator Margin", {u";", u"\t"});
  builder.Concatenate(repeated(u"x", 300000));
  builder.OpenElement(u"A");
  builder.StartElement(u"B");
  builder.Start();
  EXPECT_EQ(builder.capacity(), 2048);
  EXPECT_EQ(propertiesOf(builder, u"length DtlMargin"), "0|\t");
  for (const StringView piece : {u"a", u"b"}) builder.Concatenate(piece);
  builder.CloseElement();
  builder.FinishElement(false);
  EXPECT_EQ(builder.Complete(), u"a;b/;>\r\n");
}

TEST(StringCat, CapacityDoublesUpTo65536AndIsThenTheSmallestMultipleOfThat) {
  String text(400000, u' ');
  for (std::size_t i = 0; i < text.size(); ++i) text[i] = static_cast<char16_t>(i / 10);
  const std::pair<std::size_t, int> cases[] = {{0, 2048},      {2048, 2048},    {2049, 4096},
                                               {65536, 65536}, {65537, 131072}, {400000, 7 * 65536}};
  for (const auto& [length, capacity] : cases) {
    const StringView whole = StringView(text).substr(0, length);
    zelStringCat once, pieces;
    once.ConcatenatePart(whole);
    for (std::size_t at = 0, size = 0; at < length; at += size, size = (size + 1) % 65) {
      const String piece = u"<" + String(whole.substr(at, size)) + u">";  // whose neighbours must not arrive
      pieces.ConcatenatePart(StringView(piece).substr(1, piece.size() - 2));
    }
    for (const zelStringCat* builder : {&once, &pieces}) {
      EXPECT_TRUE(builder->text() == whole) << length;
      EXPECT_EQ(builder->capacity(), capacity) << length;
    }
  }
}

// Searches, and what they find.
struct Search {
  StringView text, find;
  std::int32_t position, start = 1, compare = zelStringCat::binaryCompare;
};
void expectFound(std::initializer_list<Search> rows) {
  zelStringCat builder;
  for (const auto& [text, find, position, start, compare] : rows) {
    builder.ConcatenatePart(u"zzzzzzzz");  // what was there before Start is not seen
    builder.Start();
    builder.ConcatenatePart(text);
    EXPECT_EQ(builder.Find(find, start, compare), position) << toUtf8(String(text) + u" " + String(find));
  }
}

// What Replace makes of a text.
struct Replacement {
  StringView text, find, replacement;
  const char* result;
  std::int32_t start = 1, count = -1, compare = zelStringCat::binaryCompare;
};
void expectReplaced(std::initializer_list<Replacement> rows) {
  for (const Replacement& row : rows) {
    const auto replace = [&](zelStringCat& builder) {
      builder.ConcatenatePart(row.text);
      builder.Replace(row.find, row.replacement, row.start, row.count, row.compare);
    };
    EXPECT_EQ(built(replace), row.result) << toUtf8(row.text);
  }
}

// Macros, so that several rows stand on a line.
#define EXPECT_FOUND(...) expectFound({__VA_ARGS__})
#define EXPECT_REPLACED(...) expectReplaced({__VA_ARGS__})

TEST(StringCat, FindGivesThePositionAtOrAfterTheStart) {
  EXPECT_FOUND({u"abcABC", u"bc", 2, 2}, {u"abcABC", u"bc", 0, 3}, {u"abcABC", u"C", 6, 6},
               {u"abcABC", u"a", 0, 7}, {u"abcABC", u"a", 0, longest}, {u"abcABC", u"", 0},
               {u"abcABC", u"z", 0}, {u"abc", {u"\0", 1}, 0}, {u"ab", u"abc", 0});
  EXPECT_FOUND({u"abcABC", u"bc", 5, 3, textCompare}, {u"xx\u00E4B", u"\u00C4b", 3, 1, textCompare},
               {u"\u0436", u"\u0416", 1, 1, textCompare}, {u"\u00DF", u"ss", 0, 1, textCompare},
               {u"a", u"", 0, 1, textCompare});
  const String filling(100, u'-'), filled = u"ab" + filling + u"ab";
  EXPECT_FOUND({filled, u"ab", 1}, {filled, u"ab", 103, 2}, {filling, u"ab", 0});
  // A match may begin within a failed one, but not at the second half of a unit.
  EXPECT_FOUND({u"aaaab", u"aab", 3}, {u"abacabacabab", u"abacabab", 5}, {u"aa", u"\u6100", 0},
               {u"\u6161\u6100", u"a", 0});
}

// A search that starts over behind each failed beginning would take hours here.
TEST(StringCat, FindTakesLinearTimeInRepetitiveTexts) {
  zelStringCat builder;
  builder.ConcatenatePart(repeated(u"a", 2'000'000));
  for (const auto compare : {zelStringCat::binaryCompare, textCompare})
    EXPECT_EQ(builder.Find(repeated(u"a", 500'000) + u"b", 1, compare), 0);
}

TEST(StringCat, ReplaceReplacesMatchesFromTheStartOn) {
  EXPECT_REPLACED({u"abcab", u"ab", u"x", "xcx"}, {u"abcab", u"ab", u"wxyz", "wxyzcwxyz"},
                  {u"abcab", u"ab", u"", "c"}, {u"abcab", u"", u"x", "abcab"},
                  {u"abcab", u"ab", u"wxyz", "abcwxyz", 2}, {u"abcab", u"ab", u"x", "abcab", 6},
                  {u"aXbx", u"x", u"--", "a--b--", 1, -1, textCompare});
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
  for (const auto& [find, replacement, unit] :
       {std::tuple{u"<", u"&lt;", u"a&lt;b"}, {u"&lt;", u"<", u"a<b"}, {u"a<b", u"", u""}}) {
    builder.Replace(find, replacement);
    EXPECT_TRUE(builder.Complete() == repeated(unit, 30000));
    EXPECT_EQ(builder.capacity(), 3 * 65536);
  }
  builder.CheckBufferSize(200000);
  EXPECT_EQ(builder.capacity(), 4 * 65536);
}

TEST(StringCat, AddElementWritesTheValueUnlessItIsTheDefaultWithoutAttributes) {
  const auto added = [](StringView value, StringView attributes = {}, StringView usual = {}) {
    return built([&](auto& b) { b.setMargin(u" "), b.AddElement(u"A", value, attributes, usual); });
  };
  EXPECT_EQ(added(u"a<b"), " <A>a&lt;b</A>\r\n");
  EXPECT_EQ(added(u"12.5", u"type='x'"), " <A type='x'>12.5</A>\r\n");
  for (const StringView attribute : {u"b='1'", u" b='1'"})
    EXPECT_EQ(added(u"", attribute), " <A b='1' />\r\n");
  EXPECT_EQ(added(u"", u"", u"x"), " <A />\r\n");
  EXPECT_EQ(added(u"") + added(u"x", u"", u"x"), "");
  EXPECT_EQ(added(u"x", u"", u"X") + added(u"x", u"b='1'", u"x"), " <A>x</A>\r\n <A b='1'>x</A>\r\n");
  // A numeric value has points for commas before it is compared.
  EXPECT_EQ(added(u"1,5") + added(u"x,y") + added(u"2,5", u"", u"2.5"), " <A>1.5</A>\r\n <A>x,y</A>\r\n");
}

TEST(StringCat, OpenElementsNestByTwoBlanksAndAMarginLosesItsOwnCharactersOnClosing) {
  EXPECT_EQ(built([](auto& b) {
              b.OpenElement(u"A", u"x='1'"), b.OpenElement(u"B"), b.AddElement(u"C", u"v");
              for (const StringView margin : {u"    ", u"  ", u"", u""}) {
                EXPECT_EQ(b.DtlMargin(), margin);
                b.CloseElement();
              }
              b.setMargin(u"--"), b.OpenElement(u"D");
              EXPECT_EQ(b.DtlMargin(), u"  --");
              b.CloseElement();
              EXPECT_EQ(b.Margin(), u"--");
            }),
            "<A x='1'>\r\n  <B>\r\n    <C>v</C>\r\n  </B>\r\n</A>\r\n--<D>\r\n  </D>\r\n");
}

TEST(StringCat, AnElementMayBeWrittenStepByStepWithoutAttributesThatAreEmptyOrTheDefault) {
  EXPECT_EQ(built([](auto& b) {
              b.StartElement(u"Col"), b.AddAttribute(u"key", u"A&1"), b.FinishElementEx(false, u"");
              b.StartElement(u"Col"), b.FinishElementEx(false, u"<");
              b.StartElement(u"Cols"), b.AddAttribute(u"n", u"2"), b.FinishElementEx(true, u"not used");
              b.AddElement(u"E", u"e"), b.CloseElement();
              b.StartElement(u"A"), b.AddAttribute(u"a", u""), b.AddAttribute(u"b", u"5", u"5");
              b.AddAttribute(u"c", u"5", 5);  // a text is never equal to a number
              b.AddAttribute(u"d", u"5", Variant::null()), b.FinishElement(false);
              b.AddAttribute(u"a", u"1"), b.FinishElement(true), b.CloseElement();  // without an element
            }),
            "<Col key='A&amp;1'/>\r\n<Col>&lt;</Col>\r\n<Cols n='2'>\r\n  <E>e</E>\r\n</Cols>\r\n<A c='5' "
            "d='5'/>\r\n");
}

// Views that claim to be as long as a text may be, and longer; their characters are never read.
const char16_t* volatile nowhere = u"x";
StringView longestText() { return {nowhere, longest}; }
StringView endless() { return {nowhere, static_cast<std::size_t>(longest) + 1}; }

// Whatever fails, the builder keeps its text.
class StringCatFailure : public ::testing::Test {
 protected:
  StringCatFailure() { builder.ConcatenatePart(u"ab"); }
  ~StringCatFailure() override { EXPECT_TRUE(builder.Complete().starts_with(u"ab")); }

  // "number|source" of what is raised, then what was logged.
  template <class Body>
  std::string raised(const Body& body) {
    const std::string error = raisedError(body);
    return error.substr(0, error.rfind('|')) + " " + reports.taken();
  }

  zelStringCat builder;
  Reports reports{"zelStringCat.", Reports::OwnSource};
};

TEST_F(StringCatFailure, AStartBelowOneIsAnInvalidCall) {
  EXPECT_EQ(raised([&] { builder.Find(u"a", 0); }), "5|zelStringCat.Find Find|5| ");
  EXPECT_EQ(raised([&] { builder.Find(u"a", 1, 2); }), "5|zelStringCat.Find Find|5| ");
  EXPECT_EQ(raised([&] { builder.Replace(u"a", u"b", -1); }), "5|zelStringCat.Replace Replace|5| ");
}

TEST_F(StringCatFailure, ATextBeyond32BitsOverflowsUnderTheOperationsOwnName) {
  EXPECT_EQ(raised([&] { builder.CheckBufferSize(longest - 1); }),
            "6|zelStringCat.CheckBufferSize CheckBufferSize|6| ");
  EXPECT_EQ(builder.capacity(), 2048);
  EXPECT_EQ(raised([&] { builder.ConcatenatePart(longestText()); }),
            "6|zelStringCat.ConcatenatePart::zelStringCat.CheckBufferSize CheckBufferSize|6| "
            "ConcatenatePart|6|zelStringCat.CheckBufferSize ");
  EXPECT_EQ(raised([&] { builder.ConcatenatePart(endless()); }),
            "6|zelStringCat.ConcatenatePart ConcatenatePart|6| ");
  EXPECT_EQ(raised([&] { builder.Replace(u"a", longestText()); }),
            "6|zelStringCat.Replace::zelStringCat.CheckBufferSize CheckBufferSize|6| "
            "Replace|6|zelStringCat.CheckBufferSize ");
  // Concatenate drops the earlier source and misses a "t" in its own.
  const std::string concatenate = "6|zelSringCat.Concatenate ConcatenatePart|6| ";
  EXPECT_EQ(raised([&] { builder.Concatenate(endless()); }), concatenate);
  EXPECT_EQ(raised([&] { builder.ConcatenateCRLF(endless()); }), concatenate);
}

TEST_F(StringCatFailure, XmlOperationsThatGoStepByStepOnlyLog) {
  builder.StartElement(endless());
  builder.StartElement(u"A");
  builder.AddAttribute(endless(), u"v");
  builder.AddAttribute(u"a", u"v", make<Collection>());
  builder.FinishElementEx(false, u"v");
  EXPECT_EQ(builder.Complete(), u"ab<<A >v</A>\r\n");
  EXPECT_EQ(reports.taken(),
            "ConcatenatePart|6| StartElement|6|zelStringCat.ConcatenatePart ConcatenatePart|6| "
            "AddAttribute|6|zelSringCat.Concatenate AddAttribute|449| ");
}

TEST_F(LogTest, InDebugModeTwoWhatDoesNotFitIsLeftOut) {
  set(u"ConDebug", "2");
  EXPECT_EQ(built([](auto& b) {
              b.ConcatenatePart(u"ab"), b.ConcatenatePart(longestText());
              b.Replace(u"a", longestText()), b.ConcatenatePart(u"c");
              EXPECT_EQ(b.Find(u"a", 0), 0);
            }),
            "abc");
}

TEST(StringCat, ItCanBeCalledLate) {
  const LateBound builder(zelStringCat::describeClass().create());
  builder.put(u"separator", u", ");
  for (int i = 0; i < 2; ++i) builder(u"Concatenate", 12);
  EXPECT_EQ(spelled({builder(u"Complete"), builder(u"length"), builder(u"Find", u" 1")}), "12, 12|6|4");
}

}  // namespace
}  // namespace zelUtilities
