#include "automation/Format.h"

#include <gtest/gtest.h>

#include <cmath>

#include "automation/ArrayData.h"
#include "automation/LocaleGuard.h"
#include "automation/Results.h"

namespace zelUtilities {
namespace {

struct Case {
  Variant value;
  StringView pattern, expected;
};

void expectAll(std::initializer_list<Case> cases) {
  for (const Case& row : cases)
    EXPECT_EQ(toUtf8(format(row.value, row.pattern)), toUtf8(row.expected)) << toUtf8(row.pattern);
}
// A macro, so that several rows stand on a line.
#define EXPECT_FORMATS(...) expectAll({__VA_ARGS__})

const Variant afternoon = Variant::date(39146.588);  // 2007-03-05 14:06:43, a Monday
const Variant newYearsEve = Variant::date(39082);    // 2006-12-31, a Sunday

TEST(Format, PlacesDigitsAndDropsOptionalOnes) {
  EXPECT_FORMATS({0, u"#", u""}, {1, u"000###", u"000001"}, {1.0, u"#.#", u"1."}, {0, u"#.#", u"."},
                 {0.17, u"#.00", u".17"}, {12345.678, u"######0.00", u"12345.68"},
                 {0.00010705, u"#0.##########", u"0.00010705"}, {1e20, u"0", u"100000000000000000000"},
                 {123456789012345678.0, u"0", u"123456789012346000"},
                 {5551234, u"(###) ###-####", u"() 555-1234"}, {17, u"#3333.33", u"173333.33"},
                 {1, u"1#####0000", u"10001"});
}

TEST(Format, RoundsHalvesAwayFromZeroOnTheDecimalText) {
  EXPECT_FORMATS({2.5, u"0", u"3"}, {-2.5, u"0", u"-3"}, {1.005, u"0.00", u"1.01"},
                 {9.9999999, u"#0.000000", u"10.000000"}, {0.5, u"#", u"1"}, {0.499, u"#", u""},
                 {HUGE_VAL, u"0.00", u"1.#INF"}, {Variant::currency(12345), u"0.000", u"1.235"},
                 {Variant::currency(9223372036854775807), u"0.0", u"922337203685477.6"});
}

TEST(Format, GroupsByThousandsAndScalesByThemPercentAndExponents) {
  EXPECT_FORMATS({1234567.891, u"#,##0.00", u"1,234,567.89"}, {1, u"0,000,000,000", u"0,000,000,001"},
                 {123456789, u"###, ###, ###", u"123, 456, 789"}, {1234567, u"0,", u"1235"},
                 {1234567, u"#,##0,,.0M", u"1.2M"}, {2297200.9, u"$#,##0,.0K", u"$2,297.2K"},
                 {12345.678, u"0.00E+00", u"1.23E+04"}, {0.00012345, u"0.00E+00", u"1.23E-04"},
                 {12345.678, u"0.00e-00", u"1.23e04"}, {12345.678, u"##0.00E-0", u"123.46E2"},
                 {99999, u"0.0E+0", u"1.0E+5"}, {1.7, u"0.0000E-000", u"1.7000E000"},
                 {1.7, u"0.0000e+0#", u"1.7000e+0"}, {3.0401e-13, u"#####.####e-0%", u"30401.e-15%"});
}

TEST(Format, ChoosesTheSectionBySignAndCopiesLiterals) {
  EXPECT_FORMATS({-5, u"0.00;(0.00)", u"(5.00)"}, {0, u"0.00;(0.00);zero", u"zero"},
                 {-5, u"0.00;;zero", u"-5.00"}, {0, u"0;-0;", u"0"}, {5, u";neg", u""},
                 {-123, u"0-0", u"-12-3"}, {5, u"\"a;b\"0;x", u"a;b5"},
                 {Variant::null(), u"0;-0;z;\"none\"", u"none"}, {Variant::null(), u"0.00", u""},
                 {Variant(), u"0.00", u"0.00"}, {true, u"0", u"-1"}, {5, u"\"abc\"0\\x\"d\"", u"abc5xd"},
                 {5, u"+(0) -", u"+(5) -"}, {5, u"0\\", u"5"}, {5, u"0\"open", u"5open"});
}

// What becomes of the afternoon by each of the patterns that "|" divides.
std::string afternoonBy(StringView patterns) {
  return results([](const Variant& pattern) { return format(afternoon, pattern.text()); }, patterns);
}

TEST(Format, WritesDates) {
  EXPECT_EQ(afternoonBy(u"d dd ddd dddd|m mm mmm mmmm|yy yyyy y|w ww q|h:n:s"),
            "5 05 Mon Monday|3 03 Mar March|07 2007 64|2 10 1|14:6:43");
  EXPECT_EQ(afternoonBy(u"yyyy-mm-dd Hh:Nn:Ss|YYYY-MM-DDTHH:mm:ss|c|\"at\" h \\h"),
            "2007-03-05 14:06:43|2007-03-05T14:06:43|3/5/2007 2:06:43 PM|at 14 h");
  EXPECT_FORMATS({newYearsEve, u"ww", u"53"}, {Variant::date(0), u"c", u"12:00:00 AM"},
                 {Variant::date(-1.25), u"yyyy-mm-dd hh:nn", u"1899-12-29 06:00"},
                 {Variant::date(1.9999999), u"c", u"1/1/1900"},
                 {Variant::date(2958465.9999999), u"yyyy-mm-dd hh:nn:ss", u"9999-12-31 23:59:59"},
                 {Variant::date(-657434), u"yyyy", u"100"}, {Variant(), u"yyyy", u"1899"});
}

TEST(Format, ReadsMAsMinutesOnlyNextAfterTheHourAndCountsTwelveHoursByAMark) {
  EXPECT_EQ(afternoonBy(u"hh:mm|h \"h\" m|mm:ss|hh:ss:mm|hh:mm mm"), "14:06|14 h 6|03:43|14:43:03|14:06 03");
  EXPECT_EQ(afternoonBy(u"h:nn AM/PM|h:nn am/pm|hh A/P|a/p h|h AMPM|h \"AM/PM\""),
            "2:06 PM|2:06 pm|02 P|p 2|2 PM|14 AM/PM");
  EXPECT_FORMATS({Variant::date(0.01), u"h AM/PM", u"12 AM"});
}

TEST(Format, LaysOutTexts) {
  EXPECT_FORMATS({u"testing", u"\\x@\\x@", u"xtxesting"}, {u"testing", u"@@@@@@@@", u" testing"},
                 {u"abc", u"!@@@@@", u"abc  "}, {u"abc", u"@-@-@-@", u" -a-b-c"},
                 {u"abc", u"&-&-&-&", u"-a-b-c"}, {u"\u00E4bc", u">@@@", u"\u00C4BC"},
                 {u"\u0391BC", u"<", u"\u03B1bc"}, {u"testing", u"<&>&", u"testing"},
                 {5551234, u"@@@-@@@@", u"555-1234"}, {u"", u"@@;none", u"none"},
                 {Variant::null(), u"@@;none", u"none"}, {Variant::null(), u"@@", u""}, {u"", u"@@", u"  "});
}

TEST(Format, ReadsTextsBeforeANumberOrDatePattern) {
  EXPECT_FORMATS({u" $1,012.5 ", u"0.00", u"1012.50"},
                 {u"12345678901234567890", u"#,##0", u"12,345,678,901,234,567,890"}, {u"&H10", u"0", u"16"},
                 {u"1e400", u"0", u"1e400"}, {u"abc", u"0.00", u"abc"}, {u"", u"0.00", u""},
                 {u"39697.11", u"hh:mm", u"02:38"}, {u"3/5/2007", u"yyyy", u"2007"},
                 {u"3/5/2007", u"0", u"3/5/2007"}, {u"abc", u"yyyy", u"abc"});
}

TEST(Format, KnowsNamedFormatsInAnyLetterCase) {
  EXPECT_FORMATS({1e20, u"General Number", u"1E+20"}, {1234.567, u"Currency", u"$1,234.57"},
                 {-1234.567, u"CURRENCY", u"($1,234.57)"}, {0.5, u"Fixed", u"0.50"},
                 {1234.567, u"Standard", u"1,234.57"}, {0.5, u"Percent", u"50.00%"},
                 {1234.567, u"Scientific", u"1.23E+03"}, {-2, u"Yes/No", u"Yes"},
                 {false, u"true/false", u"False"}, {0, u"On/Off", u"Off"}, {u"abc", u"Yes/No", u"abc"},
                 {Variant::null(), u"Fixed", u""});
  EXPECT_EQ(afternoonBy(u"general number|General Date|Long Date|Medium Date|Short Date"),
            "39146.588|3/5/2007 2:06:43 PM|Monday, March 5, 2007|05-Mar-07|3/5/2007");
  EXPECT_EQ(afternoonBy(u"Long Time|Medium Time|Short Time"), "2:06:43 PM|02:06 PM|14:06");
}

TEST(Format, TakesSeparatorsAndNamesFromTheLocale) {
  Locale locale = germanLocale();
  const LocaleGuard german(locale);
  EXPECT_FORMATS({1234.5, u"#,##0.00", u"1.234,50"}, {-1234.5, u"Currency", u"-1.234,50 \u20AC"},
                 {u"1.234,5", u"0.00", u"1234,50"});
  EXPECT_EQ(afternoonBy(u"d. mmmm yyyy|dd/mm/yyyy|c"), "5. M\u00E4rz 2007|05.03.2007|05.03.2007 14:06:43");
  locale.shortDateFormat = u"ddddd c ttttt";  // names itself
  setCurrentLocale(locale);
  EXPECT_EQ(afternoonBy(u"ddddd"), "Montag5 c ttttt");
}

TEST(Format, EveryLayoutOfCurrencyIsKnown) {
  Locale locale;
  const StringView negatives =
      u"($1.00)|-$1.00|$-1.00|$1.00-|(1.00$)|-1.00$|1.00-$|1.00$-|"
      u"-1.00 $|-$ 1.00|1.00 $-|$ 1.00-|$ -1.00|1.00- $|($ 1.00)|(1.00 $)|";
  String written;
  for (int order = 0; order < 16; ++order) {
    locale.negativeCurrencyOrder = order;
    const LocaleGuard guard(locale);
    written += format(-1, u"Currency") + u"|";
  }
  EXPECT_EQ(toUtf8(written), toUtf8(negatives));
}

TEST(Format, GivesTheTextOfAnyKindForAnEmptyPatternAndRefusesWhatHasNone) {
  EXPECT_FORMATS({0, u"", u"0"}, {true, u"", u"True"}, {u"abc", u"", u"abc"}, {Variant::null(), u"", u""},
                 {Variant::missing(), u"", u"Error 448"});
  const auto asNumber = [](const Variant& value) { return format(value, u"0"); };
  EXPECT_EQ(results(asNumber, ArrayData::ofVariants({}), Variant::error(5), nullptr),
            "error 13|error 13|error 91");
  const auto asYear = [](const Variant& value) { return format(value, u"yyyy"); };
  EXPECT_EQ(results(asYear, 1e10, Variant::date(1e300)), "error 6|error 6");
}

}  // namespace
}  // namespace zelUtilities
