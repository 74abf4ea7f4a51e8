#include "automation/String.h"

#include <gtest/gtest.h>

namespace zelUtilities {
namespace {

TEST(String, Utf8OfEveryLengthComesBack) {
  const std::string utf8 = "a\x7F \xC2\x80\xDF\xBF \xE0\xA0\x80\xEF\xBF\xBF \xF0\x90\x80\x80\xF4\x8F\xBF\xBF";
  const String text = u"a\x7F \x80\u07FF \u0800\uFFFF \U00010000\U0010FFFF";
  EXPECT_EQ(fromUtf8(utf8), text);
  EXPECT_EQ(toUtf8(text), utf8);
}

TEST(String, WhatIsIllFormedBecomesReplacements) {
  EXPECT_EQ(fromUtf8("\xC0\x80|\xE0\x9F\xBF"), u"\uFFFD\uFFFD|\uFFFD\uFFFD\uFFFD") << "overlong";
  EXPECT_EQ(fromUtf8("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD") << "surrogate";
  EXPECT_EQ(fromUtf8("\xF4\x90\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD") << "beyond the last code point";
  EXPECT_EQ(fromUtf8("\xE2\x82|\xFF\xE2\x82"), u"\uFFFD\uFFFD|\uFFFD\uFFFD\uFFFD") << "cut short";
  const char16_t lone[] = {0xD83D, u'b', 0xDE00, 0xD83D, 0xD83D, 0xDE00, 0xD83D};
  EXPECT_EQ(fromUtf8(toUtf8(StringView(lone, 7))), u"\uFFFDb\uFFFD\uFFFD\U0001F600\uFFFD");
}

TEST(String, TrimmingTakesBlanksOnly) {
  EXPECT_EQ(trimBlanks(u"  a b\t "), u"a b\t");
  EXPECT_EQ(trimBlanks(u"   "), u"");
}

}  // namespace
}  // namespace zelUtilities
