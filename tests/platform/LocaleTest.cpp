#include "platform/Locale.h"

#include <gtest/gtest.h>

namespace zelUtilities {
namespace {

// The tests run in a language-neutral environment, where the code page is Windows-1252.
TEST(CodePage, CarriesTheCharactersOfWindows1252AndEveryByteComesBack) {
  std::string every;
  for (int i = 0; i < 256; ++i) every.push_back(static_cast<char>(i));
  EXPECT_EQ(narrow(widen(every)), every);
  EXPECT_EQ(widen("\x80\x85\x9F\xA0\xE4\xFF"), u"\u20AC\u2026\u0178\u00A0\u00E4\u00FF");
  EXPECT_EQ(narrow(u"\u20AC\u2026\u0178\u00A0\u00E4\u00FF"), "\x80\x85\x9F\xA0\xE4\xFF");
  EXPECT_EQ(widen("\x81\x8D\x8F\x90\x9D"), u"\x81\x8D\x8F\x90\x9D");
}

TEST(CodePage, ReplacesWhatItCannotCarryByTheNearestCharacterOrAQuestionMark) {
  EXPECT_EQ(narrow(u"\u0100\u010D\u0142\uFF21\u2212"), "AclA-");
  EXPECT_EQ(narrow(u"\u65E5\u0416"), "??");
  EXPECT_EQ(narrow(u"\xD83D\xDE00."), "??.");
}

TEST(SystemLocale, IsThatOfTheNeutralEnvironment) {
  const Locale record = systemLocale();
  EXPECT_EQ(record.decimalSeparator + record.thousandsSeparator + record.currencySymbol, u".,$");
  EXPECT_EQ(record.currencyDigits, 2);
  EXPECT_EQ(record.dateOrder, DateOrder::MonthDayYear);
  EXPECT_EQ(record.shortDateFormat + record.dateSeparator + record.morning, u"m/d/yyyy/AM");
  EXPECT_EQ(record.monthNames[2] + record.shortDayNames[0] + record.dayNames[6], u"MarchSunSaturday");
  EXPECT_EQ(record.codePage, 1252U);
}

TEST(SystemLocale, ComparesWithoutRegardToLetterCase) {
  EXPECT_EQ(compareText(u"Gr\u00F6\u00DFe", u"GR\u00D6\u00DFE"), 0);
  EXPECT_TRUE(compareText(u"apple", u"Banana") < 0 && compareText(u"B", u"a") > 0 &&
              compareText(u"", u"a") < 0);
}

}  // namespace
}  // namespace zelUtilities
