#include "system/zelStrings.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace zelUtilities
