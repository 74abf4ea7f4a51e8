#include "automation/Conversions.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>

#include "automation/ArrayData.h"
#include "automation/LocaleGuard.h"
#include "automation/Raised.h"

namespace zelUtilities {
namespace {

// An object whose default member is this value; without one where it is left out.
class Holder : public Object {
 public:
  explicit Holder(std::optional<Variant> value = std::nullopt) : value_(std::move(value)) {}
  Variant Invoke(StringView name, InvokeKind kind, std::span<Variant> arguments) override {
    if (!value_) return Object::Invoke(name, kind, arguments);
    return *value_;
  }

 private:
  std::optional<Variant> value_;
};

struct TextCase {
  Variant value;
  StringView text;
};

void expectTexts(std::initializer_list<TextCase> cases) {
  for (const TextCase& row : cases) EXPECT_EQ(toUtf8(toText(row.value)), toUtf8(row.text));
}

TEST(ToText, WritesFifteenDigitsOfADouble) {
  expectTexts({{0.0, u"0"},
               {-0.0, u"0"},
               {0.1 + 0.2, u"0.3"},
               {1 / 3.0, u"0.333333333333333"},
               {2 / 3.0, u"0.666666666666667"},
               {-1234.5, u"-1234.5"},
               {123456789012345.0, u"123456789012345"},
               {12345678901234.25, u"12345678901234.3"},  // an exact half
               {9.99999999999999e-8, u"9.99999999999999E-08"},
               {0.1234567890123456, u"0.123456789012346"},
               {1.7976931348623157e308, u"1.79769313486232E+308"},
               {5e-324, u"4.94065645841247E-324"}});
}

TEST(ToText, ChoosesAnExponentByTheDigitsThatAPlainNumberTakes) {
  expectTexts({{1e14, u"100000000000000"},
               {1e15, u"1E+15"},
               {999999999999999.5, u"1E+15"},
               {0.05, u"0.05"},
               {1 / 30.0, u"3.33333333333333E-02"},
               {0.000000001234567, u"0.000000001234567"},
               {0.0000000012345678, u"1.2345678E-09"},
               {1e-15, u"0.000000000000001"},
               {1e-16, u"1E-16"},
               {1e100, u"1E+100"}});
}

TEST(ToText, WritesSevenDigitsOfASingle) {
  expectTexts({{0.1F, u"0.1"},
               {654322.23456F, u"654322.3"},
               {9999999.0F, u"9999999"},
               {1e7F, u"1E+07"},
               {16777216.0F, u"1.677722E+07"},
               {1 / 30.0F, u"3.333334E-02"}});
}

TEST(ToText, WritesTheOtherKinds) {
  expectTexts({{Variant(), u""},
               {true, u"True"},
               {false, u"False"},
               {std::uint8_t{255}, u"255"},
               {std::int16_t{-32768}, u"-32768"},
               {-2147483647 - 1, u"-2147483648"},
               {Variant::currency(-12300), u"-1.23"},
               {Variant::currency(1), u"0.0001"},
               {Variant::currency(std::numeric_limits<std::int64_t>::min()), u"-922337203685477.5808"},
               {Variant::missing(), u"Error 448"},
               {Variant::error(-2146826246), u"Error 2042"},  // 0x800A07FA
               {Variant::error(1234), u"Error 1234"}});
}

TEST(ToText, WritesDatesWithoutMidnightAndWithoutTheZeroDay) {
  expectTexts({{Variant::date(0), u"12:00:00 AM"},
               {Variant::date(39146), u"3/5/2007"},
               {Variant::date(39146.588), u"3/5/2007 2:06:43 PM"},
               {Variant::date(-0.5), u"12:00:00 PM"},
               {Variant::date(-1.25), u"12/29/1899 6:00:00 AM"},
               {Variant::date(1.9999999), u"1/1/1900"},
               {Variant::date(-657434), u"1/1/100"}});
}

TEST(ToText, RefusesWhatHasNoText) {
  EXPECT_EQ(raised([] { toText(Variant::null()); }), 94);
  EXPECT_EQ(raised([] { toText(ArrayData::ofVariants({})); }), 13);
  EXPECT_EQ(raised([] { toText(nullptr); }), 91);
  EXPECT_EQ(raised([] { toText(Variant::date(3e6)); }), 13);
}

struct NumberCase {
  StringView text;
  double value;
};

TEST(NumberTexts, AreAcceptedInEveryForm) {
  const NumberCase accepted[] = {
      {u"1", 1},
      {u" \t12.5 ", 12.5},
      {u"-5", -5},
      {u"5-", -5},
      {u"+ 5", 5},
      {u"(5)", -5},
      {u"( $5 )", -5},
      {u"$-5", -5},
      {u"-$5", -5},
      {u"5 $", 5},
      {u"1,2,3", 123},
      {u"1,", 1},
      {u".5", 0.5},
      {u"5.", 5},
      {u"1e5", 100000},
      {u"1D-2", 0.01},
      {u"1E5-", -100000},
      {u"1e-400", 0},
      {u"00012", 12},
      {u"1.7976931348623157e308", 1.7976931348623157e308},
      {u"0."
       u"000000000000000000000000000000000000000000000000000000000000000000000000000000012345678901234567890",
       1.2345678901234568e-80},
      {u"9007199254740993", 9007199254740992},  // halfway between two doubles
      {u"9007199254740993.00000000000000000000000000000000000000000000000000000000000000000000001",
       9007199254740994}};
  for (const auto& [text, value] : accepted) {
    EXPECT_TRUE(isNumeric(text)) << toUtf8(text);
    EXPECT_EQ(toDouble(Variant(text)), value) << toUtf8(text);
  }
}

TEST(NumberTexts, AreRefusedInAnyOtherForm) {
  for (const StringView text :
       {u"",    u" ",    u"x",        u"5x",    u"5 5",   u".",   u"-",      u"--5",   u"-5-",  u"(5",
        u"5)",  u"()",   u",1",       u"1.5,0", u"1.2.3", u"1e",  u"1e+",    u"e5",    u"1E 5", u"$",
        u"$5$", u"True", u"3/5/2007", u"&H",    u"&HG",   u"&17", u"\uFF11", u"1E2.5", u"$1E2"}) {
    EXPECT_FALSE(isNumeric(text)) << toUtf8(text);
    EXPECT_EQ(raised([&] { toDouble(Variant(text)); }), 13) << toUtf8(text);
    EXPECT_EQ(raised([&] { toLong(Variant(text)); }), 13) << toUtf8(text);
    EXPECT_EQ(raised([&] { toCurrency(Variant(text)); }), 13) << toUtf8(text);
  }
}

TEST(NumberTexts, TooLargeOnesOverflowAndAreNotNumeric) {
  EXPECT_EQ(raised([] { toDouble(u"1e400"); }), 6);
  EXPECT_EQ(raised([] { toDouble(u"-1e99999999999999999999"); }), 6);
  EXPECT_EQ(raised([] { toLong(u"1e99999999999999999999"); }), 6);
  EXPECT_FALSE(isNumeric(u"1e400"));
  EXPECT_EQ(toDouble(u"0e99999999999999999999"), 0);
}

TEST(NumberTexts, OfOtherBasesConvertButAreNotNumeric) {
  EXPECT_EQ(toLong(u"&H10"), 16);
  EXPECT_EQ(toLong(u" &o17 "), 15);
  EXPECT_EQ(toLong(u"&HFFFFFFFF"), -1);
  EXPECT_EQ(toLong(u"&HFFFF"), 65535);
  EXPECT_EQ(toInteger(u"&HFFFF"), -1);
  EXPECT_EQ(toInteger(u"&H8000"), -32768);
  EXPECT_EQ(toByte(u"&HFF"), 255);
  EXPECT_EQ(toDouble(u"&HFFFF"), 65535);
  EXPECT_EQ(raised([] { toInteger(u"&H10000"); }), 6);
  EXPECT_EQ(raised([] { toLong(u"&H11111111111111111"); }), 13);
  EXPECT_FALSE(isNumeric(u"&H10"));
}

TEST(NumberTexts, FollowTheLocale) {
  const LocaleGuard german(germanLocale());
  EXPECT_EQ(toDouble(u"1.234,5 \u20AC"), 1234.5);
  EXPECT_EQ(toText(0.5), u"0,5");
  EXPECT_EQ(toText(Variant::currency(15000)), u"1,5");
  EXPECT_FALSE(isNumeric(u"$5"));
}

TEST(WholeNumbers, RoundHalvesToEven) {
  EXPECT_EQ(toLong(2.5), 2);
  EXPECT_EQ(toLong(3.5), 4);
  EXPECT_EQ(toLong(-2.5), -2);
  EXPECT_EQ(toLong(u"2.5"), 2);
  EXPECT_EQ(toLong(u"2.50000000000000000000001"), 3);
  EXPECT_EQ(toLong(Variant::currency(25000)), 2);
  EXPECT_EQ(toLong(Variant::currency(-35000)), -4);
  EXPECT_EQ(toLong(Variant::currency(25001)), 3);
  EXPECT_EQ(toLong(Variant::date(39146.5)), 39146);
}

TEST(WholeNumbers, OverflowOutsideTheirRange) {
  EXPECT_EQ(toInteger(32767.49), 32767);
  EXPECT_EQ(raised([] { toInteger(32767.5); }), 6);
  EXPECT_EQ(toInteger(-32768.5), -32768);
  EXPECT_EQ(raised([] { toInteger(u"-32769"); }), 6);
  EXPECT_EQ(raised([] { toLong(2147483647.5); }), 6);
  EXPECT_EQ(raised([] { toLong(std::numeric_limits<double>::quiet_NaN()); }), 6);
  EXPECT_EQ(raised([] { toByte(-1); }), 6);
  EXPECT_EQ(toByte(-0.5), 0);
  EXPECT_EQ(raised([] { toSingle(1e39); }), 6);
}

TEST(WholeNumbers, TakeEmptyAndBooleans) {
  EXPECT_EQ(toLong(Variant()), 0);
  EXPECT_EQ(toLong(true), -1);
  EXPECT_EQ(toByte(true), 255);
  EXPECT_EQ(toDouble(true), -1);
}

TEST(Currency, IsExactToFourPlaces) {
  EXPECT_EQ(toCurrency(u"922337203685477.5807"), 9223372036854775807);
  EXPECT_EQ(toCurrency(u"-922337203685477.5808"), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(raised([] { toCurrency(u"922337203685477.58075"); }), 6);
  EXPECT_EQ(raised([] { toCurrency(1e15); }), 6);
  EXPECT_EQ(toCurrency(u"0.00005"), 0);
  EXPECT_EQ(toCurrency(u"0.00015"), 2);
  EXPECT_EQ(toCurrency(0.5 / 10000 + 1e-18), 1);
  EXPECT_EQ(toCurrency(1.00005), 10001);  // the double lies above the half
  EXPECT_EQ(toCurrency(-0.03125), -312);
  EXPECT_EQ(toCurrency(99999999999999.75), 999999999999997500);
  EXPECT_EQ(toCurrency(-922337203685477.5), -9223372036854775000);
  EXPECT_EQ(toCurrency(7), 70000);
}

TEST(Booleans, ComeFromWordsAndNumbers) {
  EXPECT_TRUE(toBoolean(u"tRUE"));
  EXPECT_TRUE(toBoolean(u"#TRUE#"));
  EXPECT_FALSE(toBoolean(u"False"));
  EXPECT_TRUE(toBoolean(u"0.1"));
  EXPECT_FALSE(toBoolean(u"0"));
  EXPECT_TRUE(toBoolean(Variant::currency(1)));
  EXPECT_TRUE(toBoolean(Variant::date(1)));
  EXPECT_FALSE(toBoolean(Variant()));
  for (const StringView text : {u"", u" True", u"yes"})
    EXPECT_EQ(raised([&] { toBoolean(Variant(text)); }), 13);
}

TEST(Dates, ComeFromNumbersInRange) {
  EXPECT_EQ(toDate(39146), 39146);
  EXPECT_EQ(toDate(-657434.5), -657434.5);
  EXPECT_EQ(raised([] { toDate(-657435.0); }), 6);
  EXPECT_EQ(raised([] { toDate(2958466.0); }), 6);
  EXPECT_EQ(raised([] { toDate(u"39146"); }), 13);
}

TEST(Conversions, RefuseNullErrorsAndArrays) {
  for (const VariantKind kind :
       {VariantKind::Byte, VariantKind::Integer, VariantKind::Long, VariantKind::Single, VariantKind::Double,
        VariantKind::Currency, VariantKind::Date, VariantKind::Boolean}) {
    EXPECT_EQ(raised([&] { convertTo(Variant::null(), kind); }), 94);
    EXPECT_EQ(raised([&] { convertTo(Variant::error(5), kind); }), 13);
    EXPECT_EQ(raised([&] { convertTo(ArrayData::ofVariants({}), kind); }), 13);
    EXPECT_EQ(raised([&] { convertTo(nullptr, kind); }), 91);
    EXPECT_EQ(convertTo(u"1:00", VariantKind::Date).kind(), VariantKind::Date);
    EXPECT_EQ(convertTo(Variant(), kind).kind(), kind);
  }
  EXPECT_EQ(raised([] { convertTo(1, VariantKind::Object); }), 13);
  EXPECT_TRUE(convertTo(Variant::null(), VariantKind::Null).isNull());
}

TEST(Conversions, TakeAnObjectAsItsDefaultMember) {
  const Variant inner = make<Holder>(Variant(u"12.5"));
  const Variant outer = make<Holder>(inner);
  EXPECT_EQ(toDouble(outer), 12.5);
  EXPECT_EQ(toText(outer), u"12.5");
  EXPECT_TRUE(isNumeric(outer));
  EXPECT_EQ(raised([] { toLong(make<Holder>()); }), 438);
}

TEST(NumericTest, LooksAtTheKindFirst) {
  for (const Variant& value : {Variant(), Variant(true), Variant(std::uint8_t{1}), Variant(std::int16_t{1}),
                               Variant(1), Variant(1.0F), Variant(1.0), Variant::currency(1), Variant(u"1")})
    EXPECT_TRUE(isNumeric(value));
  for (const Variant& value : {Variant::null(), Variant::date(1), Variant::missing(), Variant(nullptr),
                               Variant(ArrayData::ofVariants({})), Variant(u"a")})
    EXPECT_FALSE(isNumeric(value));
}

TEST(TypeName, NamesKindsAsClientsDo) {
  EXPECT_EQ(typeName(Variant()), u"Empty");
  EXPECT_EQ(typeName(std::int16_t{1}), u"Integer");
  EXPECT_EQ(typeName(u""), u"String");
  EXPECT_EQ(typeName(Variant::missing()), u"Error");
  EXPECT_EQ(typeName(nullptr), u"Nothing");
  EXPECT_EQ(typeName(make<Holder>()), u"Object");
  EXPECT_EQ(typeName(ArrayData::ofVariants({})), u"Variant()");
  EXPECT_EQ(typeName(ArrayData::create(VariantKind::Byte, {{0, 3}})), u"Byte()");
}

}  // namespace
}  // namespace zelUtilities
