#include "text/TextSearch.h"

#include <gtest/gtest.h>

namespace zelUtilities {
namespace {

constexpr std::size_t nowhere = StringView::npos;

std::size_t find(StringView pattern, StringView text, std::size_t from = 0) {
  return TextSearch(pattern, TextSearch::Letters::AsWritten).find(text, from);
}
std::size_t findAnyCase(StringView pattern, StringView text) {
  return TextSearch(pattern, TextSearch::Letters::AnyCase).find(text, 0);
}

TEST(TextSearch, AMatchMayBeginWithinAFailedOne) {
  EXPECT_EQ(find(u"aab", u"aaaab"), 2U);
  EXPECT_EQ(find(u"abacabab", u"abacabacabab"), 4U);
}

TEST(TextSearch, ItFindsWhatStandsAtEitherEndOfALongText) {
  const String filling(100, u'-');
  EXPECT_EQ(find(u"ab", u"ab" + filling), 0U);
  EXPECT_EQ(find(u"ab", filling + u"ab"), 100U);
  EXPECT_EQ(find(u"ab", filling + u"a"), nowhere);
  EXPECT_EQ(find(u"ab", u"ab" + filling + u"ab", 1), 102U);
  EXPECT_EQ(find(u"ab", u"ab", 3), nowhere);
}

TEST(TextSearch, TheHalvesOfUnitsDoNotMatch) {
  EXPECT_EQ(find(u"\u6100", u"a\u0061"), nowhere);
  EXPECT_EQ(find(u"a", u"\u6161\u6100"), nowhere);
}

TEST(TextSearch, LetterCaseIsDisregardedBeyondAscii) {
  EXPECT_EQ(findAnyCase(u"\u00C4b", u"xx\u00E4B"), 2U);
  EXPECT_EQ(findAnyCase(u"\u0416", u"\u0436"), 0U);
  EXPECT_EQ(findAnyCase(u"ss", u"\u00DF"), nowhere);
  EXPECT_EQ(findAnyCase(u"", u""), nowhere) << "an empty pattern";
}

// A search that starts over behind each failed beginning would take hours here.
TEST(TextSearch, RepetitiveTextsTakeLinearTime) {
  const String text(2'000'000, u'a');
  const String pattern = String(500'000, u'a') + u'b';
  EXPECT_EQ(find(pattern, text), nowhere);
  EXPECT_EQ(findAnyCase(pattern, text), nowhere);
}

}  // namespace
}  // namespace zelUtilities
