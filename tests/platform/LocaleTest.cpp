#include "platform/Locale.h"

#include <gtest/gtest.h>

namespace zelUtilities {
namespace {

// The tests run in a language-neutral environment, where the code page is Windows-1252.
TEST(CodePage, EveryByteComesBack) {
  std::string every;
  for (int i = 0; i < 256; ++i) every.push_back(static_cast<char>(i));
  EXPECT_EQ(narrow(widen(every)), every);
}

TEST(CodePage, CarriesTheCharactersOfWindows1252) {
  EXPECT_EQ(widen("\x80\x85\x9F\xA0\xE4\xFF"), u"\u20AC\u2026\u0178\u00A0\u00E4\u00FF");
  EXPECT_EQ(narrow(u"\u20AC\u2026\u0178\u00A0\u00E4\u00FF"), "\x80\x85\x9F\xA0\xE4\xFF");
  EXPECT_EQ(widen("\x81\x8D\x8F\x90\x9D"), u"\x81\x8D\x8F\x90\x9D");
}

TEST(CodePage, ReplacesWhatItCannotCarryByTheNearestCharacterOrAQuestionMark) {
  EXPECT_EQ(narrow(u"\u0100\u010D\u0142\uFF21\u2212"), "AclA-");
  EXPECT_EQ(narrow(u"\u65E5\u0416"), "??");
  EXPECT_EQ(narrow(u"\xD83D\xDE00."), "??.");
}

TEST(CodePage, NulsAndEmptyTextsPass) {
  EXPECT_EQ(narrow(StringView(u"a\0b", 3)), std::string("a\0b", 3));
  EXPECT_EQ(widen(std::string_view("a\0b", 3)), String(u"a\0b", 3));
  EXPECT_EQ(narrow(u""), "");
  EXPECT_EQ(widen(""), u"");
}

TEST(CodePage, OneUnitNarrowsAsATextDoes) {
  EXPECT_EQ(narrowUnit(u'A'), 65);
  EXPECT_EQ(narrowUnit(u'\u20AC'), 0x80);
  EXPECT_EQ(narrowUnit(u'\u65E5'), '?');
}

TEST(SystemLocale, IsThatOfTheNeutralEnvironment) {
  const Locale record = systemLocale();
  EXPECT_EQ(record.decimalSeparator, u".");
  EXPECT_EQ(record.thousandsSeparator, u",");
  EXPECT_EQ(record.currencySymbol, u"$");
  EXPECT_EQ(record.currencyDigits, 2);
  EXPECT_EQ(record.dateOrder, DateOrder::MonthDayYear);
  EXPECT_EQ(record.shortDateFormat, u"m/d/yyyy");
  EXPECT_EQ(record.dateSeparator, u"/");
  EXPECT_EQ(record.monthNames[2], u"March");
  EXPECT_EQ(record.shortDayNames[0], u"Sun");
  EXPECT_EQ(record.dayNames[6], u"Saturday");
  EXPECT_EQ(record.morning, u"AM");
  EXPECT_EQ(record.codePage, 1252U);
}

TEST(SystemLocale, ComparesWithoutRegardToLetterCase) {
  EXPECT_EQ(compareText(u"Gr\u00F6\u00DFe", u"GR\u00D6\u00DFE"), 0);
  EXPECT_LT(compareText(u"apple", u"Banana"), 0);
  EXPECT_GT(compareText(u"B", u"a"), 0);
  EXPECT_LT(compareText(u"", u"a"), 0);
}

}  // namespace
}  // namespace zelUtilities
