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

}  // namespace
}  // namespace zelUtilities
