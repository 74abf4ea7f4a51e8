// The conventions and the code page of a system that says them in its own way.
#include <gtest/gtest.h>

#include "platform/linux/CodePage.h"
#include "platform/linux/DateFormat.h"

namespace zelUtilities {
namespace {

TEST(DateFormat, ConversionsBecomePatternsAsTheTableSays) {
  const std::tuple<StringView, StringView, DateOrder, StringView> cases[] = {
      {u"%m/%d/%Y", u"mm/dd/yyyy", DateOrder::MonthDayYear, u"/"},
      {u"%d.%m.%Y", u"dd.mm.yyyy", DateOrder::DayMonthYear, u"."},
      {u"%-d. %-m. %Y", u"d. m. yyyy", DateOrder::DayMonthYear, u"."},
      {u"%F", u"yyyy-mm-dd", DateOrder::YearMonthDay, u"-"},
      {u"%Y\u5E74%m\u6708%d\u65E5", u"yyyy\\\u5E74mm\\\u6708dd\\\u65E5", DateOrder::YearMonthDay, u"\u5E74"},
      {u"%a %e %B %y", u"ddd d mmmm yy", DateOrder::DayMonthYear, u""},
      {u"%T", u"hh:nn:ss", DateOrder::MonthDayYear, u":"},
      {u"%I:%M:%S %p", u"hh:nn:ss AMPM", DateOrder::MonthDayYear, u":"},
      {u"%H.%M.%S %Z", u"hh.nn.ss", DateOrder::MonthDayYear, u"."},
      {u"%", u"", DateOrder::MonthDayYear, u""},
  };
  for (const auto& [conversions, pattern, order, separator] : cases) {
    EXPECT_EQ(patternFromConversions(conversions), pattern);
    EXPECT_EQ(dateOrderOf(pattern), order) << toUtf8(pattern);
    EXPECT_EQ(separatorOf(pattern), separator);
  }
}

TEST(CodePageOnLinux, OtherCodePagesAreTakenFromTheSystemAndUtf8IsOneToo) {
  const CodePage cyrillic(1251);
  EXPECT_EQ(cyrillic.number(), 1251U);
  EXPECT_EQ(cyrillic.narrow(u"\u0416\u20AC"), "\xC6\x88");
  EXPECT_EQ(cyrillic.widen("\xC6\x98"), u"\u0416\x98");  // 0x98 is undefined there
  EXPECT_EQ(CodePage(28605).widen("\xA4"), u"\u20AC");   // ISO 8859-15
  const CodePage utf8(65001);
  EXPECT_EQ(utf8.narrow(u"\u20AC"), "\xE2\x82\xAC");
  EXPECT_EQ(utf8.widen("\xE2\x82\xAC"), u"\u20AC");
  EXPECT_EQ(utf8.narrow(u'\u20AC'), '?');
}

TEST(CodePageOnLinux, ANumberThatIsNotSupportedIsTakenForWindows1252) {
  for (const std::uint32_t number : {0U, 932U, 4711U}) {
    EXPECT_EQ(CodePage(number).number(), 1252U);
    EXPECT_EQ(CodePage(number).narrow(u"\u20AC"), "\x80");
  }
}

}  // namespace
}  // namespace zelUtilities
