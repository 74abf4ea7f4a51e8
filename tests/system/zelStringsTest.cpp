#include "system/zelStrings.h"

#include <gtest/gtest.h>

#include <tuple>

namespace zelUtilities {
namespace {

TEST(ZelStrings, JoinsWithASeparatorOnlyWhereBothValuesHaveText) {
  EXPECT_EQ(zel_JoinStrings(u"a", u"b"), u"a b");
  EXPECT_EQ(zel_JoinStrings(u"a", u"b", u"-"), u"a-b");
  EXPECT_EQ(zel_JoinStrings(u"a", u"", u"-"), u"a");
  EXPECT_EQ(zel_JoinStrings(u"", u"b", u"-"), u"b");
  EXPECT_EQ(zel_JoinStrings(u"", u"", u"-"), u"");
}

TEST(ZelStrings, CutsAtTheFirstNulBeforeItTrimsBlanks) {
  EXPECT_EQ(zel_NullTrim(StringView(u"  ab\0cd", 7)), u"ab");
  EXPECT_EQ(zel_NullTrim(StringView(u" a b  \0 ", 8)), u"a b");
  EXPECT_EQ(zel_NullTrim(u" \tab\t "), u"\tab\t");
  EXPECT_EQ(zel_NullTrim(StringView(u"\0ab", 3)), u"");
  EXPECT_EQ(zel_NullTrim(u""), u"");
}

TEST(ZelStrings, BringsRepeatsDownToOne) {
  const std::tuple<StringView, StringView, StringView> cases[] = {{u"a--b---c", u"-", u"a-b-c"},
                                                                  {u"a    b", u" ", u"a b"},
                                                                  {u"ababab-ab", u"ab", u"ab-ab"},
                                                                  {u"aaaaa", u"aa", u"aaa"},
                                                                  {u"aaaaaaaa", u"aa", u"aa"},
                                                                  {u"abaabaaba", u"aba", u"aba"},
                                                                  {u"abababa", u"aba", u"abababa"},
                                                                  {u"aabaabaab", u"aab", u"aab"},
                                                                  {u"abcabcab", u"abc", u"abcab"},
                                                                  {u"a\r\n\r\n\r\nb", u"\r\n", u"a\r\nb"},
                                                                  {u"aa", u"", u"aa"},
                                                                  {u"", u"-", u""},
                                                                  {u"ab", u"abab", u"ab"}};
  for (const auto& [source, repeated, expected] : cases)
    EXPECT_EQ(zel_RemoveDups(source, repeated), expected) << toUtf8(source);
}

// What is asked for is that the doubled text is replaced over and over.
TEST(ZelStrings, GivesWhatReplacingOverAndOverGives) {
  const auto replaced = [](String text, const String& once) {
    const String twice = once + once;
    for (std::size_t at = 0; (at = text.find(twice)) != String::npos;) text.erase(at, once.size());
    return text;
  };
  std::uint32_t random = 1;
  for (int round = 0; round < 3000; ++round) {
    String source;
    String once;
    for (random = random * 1664525 + 1013904223; source.size() < 24; random = random * 1664525 + 1013904223)
      source += (random >> 24) % 5 < 3 ? u'a' : u'b';
    for (std::size_t i = 0; i <= (random >> 16) % 4; ++i) once += source[i];
    ASSERT_EQ(zel_RemoveDups(source, once), replaced(source, once)) << toUtf8(source + u" " + once);
  }
}

TEST(ZelStrings, LongTextsTakeTimeByTheirLength) {
  const String source(1 << 20, u'a');
  const String almost = String(1 << 18, u'a') + u"b";
  EXPECT_EQ(zel_RemoveDups(source, almost), source);
  EXPECT_EQ(zel_RemoveDups(source, u"a"), u"a");
}

}  // namespace
}  // namespace zelUtilities
