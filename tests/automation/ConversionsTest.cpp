#include "automation/Conversions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "automation/ArrayData.h"
#include "automation/LeadingNumber.h"
#include "automation/LocaleGuard.h"
#include "automation/Raised.h"
#include "automation/Results.h"
#include "support/TestControl.h"

namespace zelUtilities {
namespace {

const Variant noArray = ArrayData::ofVariants({});
constexpr auto lowest = std::numeric_limits<std::int64_t>::min();

// The exponent is chosen by the digits that a plain number takes.
TEST(ToText, WritesFifteenDigitsOfADoubleAndSevenOfASingle) {
  EXPECT_EQ(results(toText, 0.0, -0.0, 0.1 + 0.2, 1 / 3.0, 1 / 30.0, 0.1234567890123456),
            "0|0|0.3|0.333333333333333|3.33333333333333E-02|0.123456789012346");
  EXPECT_EQ(results(toText, 123456789012345.0, 999999999999999.5, 1e14, 1e15, 1.7976931348623157e308),
            "123456789012345|1E+15|100000000000000|1E+15|1.79769313486232E+308");
  EXPECT_EQ(results(toText, 9.99999999999999e-8, 1.2345678e-9, 1e-15, 1e-16, 5e-324),
            "9.99999999999999E-08|1.2345678E-09|0.000000000000001|1E-16|4.94065645841247E-324");
  EXPECT_EQ(results(toText, 0.1F, 654322.23456F, 1e7F, 16777216.0F, 1 / 30.0F),
            "0.1|654322.3|1E+07|1.677722E+07|3.333334E-02");
}

TEST(ToText, WritesTheOtherKindsAndRefusesWhatHasNoText) {
  EXPECT_EQ(results(toText, Variant(), true, false, std::uint8_t{255}, std::int16_t{-32768}, -2147483647 - 1),
            "|True|False|255|-32768|-2147483648");
  EXPECT_EQ(results(toText, Variant::currency(-12300), Variant::currency(1), Variant::currency(lowest)),
            "-1.23|0.0001|-922337203685477.5808");
  // The second is 0x800A07FA.
  EXPECT_EQ(results(toText, Variant::missing(), Variant::error(-2146826246), Variant::error(1234)),
            "Error 448|Error 2042|Error 1234");
  EXPECT_EQ(results(toText, Variant::null(), noArray, nullptr), "error 94|error 13|error 91");
}

TEST(ToText, WritesDatesWithoutMidnightAndWithoutTheZeroDay) {
  const auto dateText = [](const Variant& days) { return toText(Variant::date(toDouble(days))); };
  EXPECT_EQ(results(dateText, 0, 39146, 39146.588, -0.5, -1.25),
            "12:00:00 AM|3/5/2007|3/5/2007 2:06:43 PM|12:00:00 PM|12/29/1899 6:00:00 AM");
  EXPECT_EQ(results(dateText, 1.9999999, -657434, 3e6), "1/1/1900|1/1/100|error 13");
}

TEST(NumberTexts, AreAcceptedInEveryForm) {
  const auto number = [](const Variant& text) { return isNumeric(text) ? toDouble(text) : HUGE_VAL; };
  EXPECT_EQ(results(number,
                    u"1| \t12.5 |-5|5-|+ 5|(5)|( $5 )|$-5|-$5|5 $|1,2,3|1,|.5|5.|1e5|1D-2|1E5-|1e-400|00012"),
            "1|12.5|-5|-5|5|-5|-5|-5|-5|5|123|1|0.5|5|100000|0.01|-100000|0|12");
  EXPECT_EQ(toDouble(u"1.7976931348623157e308"), 1.7976931348623157e308);
  EXPECT_EQ(toDouble(u"0." + String(79, u'0') + u"12345678901234567890"), 1.2345678901234568e-80);
  // Halfway between two doubles, and above.
  EXPECT_EQ(results(number, u"9007199254740993", u"9007199254740993." + String(70, u'0') + u"1"),
            "9007199254740992|9007199254740994");
}

TEST(NumberTexts, AreRefusedInAnyOtherForm) {
  for (const StringView text :
       partsOf(u"| |x|5x|5 5|.|-|--5|-5-|(5|5)|()|,1|1.5,0|1.2.3|1e|1e+|e5|1E 5|$|$5$|"
               u"True|3/5/2007|&H|&HG|&17|\uFF11|1E2.5|$1E2"))
    EXPECT_EQ(results(toDouble, text) + results(toLong, text) + results(toCurrency, text) +
                  (isNumeric(text) ? "numeric" : ""),
              "error 13error 13error 13")
        << toUtf8(text);
}

TEST(NumberTexts, TooLargeOnesOverflowAndOtherBasesConvertButNeitherIsNumeric) {
  EXPECT_EQ(results(toDouble, u"1e400|-1e99999999999999999999|0e99999999999999999999|&HFFFF"),
            "error 6|error 6|0|65535");
  EXPECT_EQ(results(toLong, u"1e99999999999999999999|&H10| &o17 |&HFFFFFFFF|&HFFFF|&H11111111111111111"),
            "error 6|16|15|-1|65535|error 13");
  EXPECT_EQ(results(toInteger, u"&HFFFF|&H8000|&H10000"), "-1|-32768|error 6");
  EXPECT_FALSE(isNumeric(u"1e400") || isNumeric(u"&H10"));
}

TEST(NumberTexts, FollowTheLocale) {
  const LocaleGuard german(germanLocale());
  EXPECT_EQ(toDouble(u"1.234,5 \u20AC"), 1234.5);
  EXPECT_EQ(results(toText, 0.5, Variant::currency(15000)), "0,5|1,5");
  EXPECT_FALSE(isNumeric(u"$5"));
}

TEST(WholeNumbers, RoundHalvesToEvenAndOverflowOutsideTheirRange) {
  EXPECT_EQ(results(toLong, 2.5, 3.5, -2.5, u"2.5|2.50000000000000000000001", true, Variant::date(39146.5)),
            "2|4|-2|2|3|-1|39146");
  EXPECT_EQ(results(toLong, Variant::currency(25000), Variant::currency(-35000), Variant::currency(25001)),
            "2|-4|3");
  EXPECT_EQ(results(toLong, 2147483647.5, std::numeric_limits<double>::quiet_NaN()), "error 6|error 6");
  EXPECT_EQ(results(toInteger, 32767.49, -32768.5, 32767.5, u"-32769"), "32767|-32768|error 6|error 6");
  EXPECT_EQ(results(toByte, -0.5, true, u"&HFF", -1), "0|255|255|error 6");
  EXPECT_EQ(results(toSingle, 1e39), "error 6");
}

TEST(Currency, IsExactToFourPlaces) {
  EXPECT_EQ(results(toCurrency, u"922337203685477.5807|-922337203685477.5808|922337203685477.58075", 1e15),
            "9223372036854775807|-9223372036854775808|error 6|error 6");
  EXPECT_EQ(results(toCurrency, 99999999999999.75, -922337203685477.5, 7),
            "999999999999997500|-9223372036854775000|70000");
  // The double 1.00005 lies above the half.
  EXPECT_EQ(results(toCurrency, u"0.00005|0.00015", 0.5 / 10000 + 1e-18, 1.00005, -0.03125),
            "0|2|1|10001|-312");
}

TEST(BooleansAndDates, ComeFromWordsAndNumbersInRange) {
  EXPECT_EQ(results(toBoolean, u"tRUE|#TRUE#|False|0.1|0", Variant::currency(1), Variant::date(1)),
            "1|1|0|1|0|1|1");
  EXPECT_EQ(results(toBoolean, u"| True|yes"), "error 13|error 13|error 13");
  EXPECT_EQ(results(toDate, 39146, -657434.5, -657435.0, 2958466.0, u"39146"),
            "39146|-657434.5|error 6|error 6|error 13");
}

TEST(Conversions, RefuseNullErrorsArraysAndNothing) {
  for (const VariantKind kind :
       {VariantKind::Byte, VariantKind::Integer, VariantKind::Long, VariantKind::Single, VariantKind::Double,
        VariantKind::Currency, VariantKind::Date, VariantKind::Boolean}) {
    const auto number = [kind](const Variant& value) {
      const Variant converted = convertTo(value, kind);
      EXPECT_EQ(converted.kind(), kind);
      return toDouble(converted);
    };
    EXPECT_EQ(results(number, Variant::null(), Variant::error(5), noArray, nullptr, Variant()),
              "error 94|error 13|error 13|error 91|0");
  }
  EXPECT_EQ(raised([] { convertTo(1, VariantKind::Object); }), 13);
  EXPECT_TRUE(convertTo(Variant::null(), VariantKind::Null).isNull());
  EXPECT_EQ(convertTo(u"1:00", VariantKind::Date).kind(), VariantKind::Date);
}

TEST(Conversions, TakeAnObjectAsItsDefaultMember) {
  const Variant outer = control(u"Outer", {{u"", control(u"Inner", {{u"", u"12.5"}})}});
  EXPECT_EQ(results(toDouble, outer), "12.5");
  EXPECT_EQ(results(toText, outer), "12.5");
  EXPECT_EQ(results(toLong, make<Object>()), "error 438");
}

TEST(Kinds, HaveNamesAndSomeAreNumeric) {
  String numeric, others;
  const auto see = [&](const auto&... values) {
    for (const Variant& value : {Variant(values)...})
      (isNumeric(value) ? numeric : others) += typeName(value) + u" ";
  };
  see(Variant(), true, std::uint8_t{1}, std::int16_t{1}, 1, 1.0F, 1.0, Variant::currency(1), Variant::null(),
      Variant::date(1), Variant::missing(), nullptr, noArray, u"", control(u"TextBox", {{u"", 1}}),
      ArrayData::create(VariantKind::Byte, {{0, 3}}));
  EXPECT_EQ(toUtf8(numeric), "Empty Boolean Byte Integer Long Single Double Currency TextBox ");
  EXPECT_EQ(toUtf8(others), "Null Date Error Nothing Variant() String Byte() ");
  EXPECT_EQ(typeName(make<Object>()), u"Object");
}

TEST(LeadingNumber, IsWhatATextBeginsWith) {
  const LocaleGuard guard(germanLocale());
  const auto number = [](const Variant& text) { return leadingNumber(text.text()); };
  EXPECT_EQ(results(number, u"|abc|-.|--1|e5|&H10|\uFF11|1e-400"), "0|0|0|0|0|0|0|0");
  EXPECT_EQ(results(number, u"12abc|-3.5x| + 1 0\t0\n0|1,5|1e|.5.5|2e3|2D+1|1E- 2"),
            "12|-3.5|1000|1|1|0.5|2000|20|0.01");
  EXPECT_EQ(results(number, String(400, u'0') + u"7", u"-1e309", String(400, u'9')), "7|error 6|error 6");
}

}  // namespace
}  // namespace zelUtilities
