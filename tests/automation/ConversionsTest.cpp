#include "automation/Conversions.h"

#include <gtest/gtest.h>

#include <limits>

#include "automation/ArrayData.h"
#include "automation/LeadingNumber.h"
#include "automation/LocaleGuard.h"
#include "automation/Raised.h"

namespace zelUtilities {
namespace {

// An object whose default member is this value; without one where it is Empty.
struct Holder : Object {
  explicit Holder(Variant value) : kept(std::move(value)) {}
  Variant Invoke(StringView name, InvokeKind kind, std::span<Variant> arguments) override {
    return kept.isEmpty() ? Object::Invoke(name, kind, arguments) : kept;
  }
  const Variant kept;
};

const Variant noArray = ArrayData::ofVariants({});
constexpr auto lowest = std::numeric_limits<std::int64_t>::min();

struct TextCase {
  Variant value;
  StringView text;
};
void expectTexts(std::initializer_list<TextCase> cases) {
  for (const TextCase& row : cases) EXPECT_EQ(toUtf8(toText(row.value)), toUtf8(row.text));
}

struct NumberCase {
  Variant value;
  double number;
};
template <class Number>
void expectNumbers(Number (*convert)(const Variant&), std::initializer_list<NumberCase> cases) {
  for (const auto& [value, number] : cases)
    EXPECT_EQ(static_cast<double>(convert(value)), number) << "row " << (&value - &cases.begin()->value);
}

// Macros, so that several rows stand on a line.
#define EXPECT_TEXTS(...) expectTexts({__VA_ARGS__})
#define EXPECT_NUMBERS(convert, ...) expectNumbers(convert, {__VA_ARGS__})

// That the conversion refuses every one of the values with this error.
template <class Result, class... Values>
void expectError(std::int32_t number, Result (*convert)(const Variant&), const Values&... values) {
  int row = 0;
  for (const Variant& value : {Variant(values)...})
    EXPECT_EQ(raised([&] { convert(value); }), number) << "value " << row++;
}

// The exponent is chosen by the digits that a plain number takes.
TEST(ToText, WritesFifteenDigitsOfADoubleAndSevenOfASingle) {
  EXPECT_TEXTS({0.0, u"0"}, {-0.0, u"0"}, {0.1 + 0.2, u"0.3"}, {1 / 3.0, u"0.333333333333333"},

               {123456789012345.0, u"123456789012345"}, {9.99999999999999e-8, u"9.99999999999999E-08"},
               {0.1234567890123456, u"0.123456789012346"}, {1.7976931348623157e308, u"1.79769313486232E+308"},
               {5e-324, u"4.94065645841247E-324"}, {1e14, u"100000000000000"}, {1e15, u"1E+15"},
               {999999999999999.5, u"1E+15"}, {1 / 30.0, u"3.33333333333333E-02"},
               {0.0000000012345678, u"1.2345678E-09"}, {1e-15, u"0.000000000000001"}, {1e-16, u"1E-16"},
               {0.1F, u"0.1"}, {654322.23456F, u"654322.3"}, {1e7F, u"1E+07"}, {16777216.0F, u"1.677722E+07"},
               {1 / 30.0F, u"3.333334E-02"});
}

TEST(ToText, WritesTheOtherKindsAndRefusesWhatHasNoText) {
  EXPECT_TEXTS({Variant(), u""}, {true, u"True"}, {false, u"False"}, {std::uint8_t{255}, u"255"},
               {std::int16_t{-32768}, u"-32768"}, {-2147483647 - 1, u"-2147483648"},
               {Variant::currency(-12300), u"-1.23"}, {Variant::currency(1), u"0.0001"},
               {Variant::currency(lowest), u"-922337203685477.5808"}, {Variant::missing(), u"Error 448"},
               {Variant::error(-2146826246), u"Error 2042"},  // 0x800A07FA
               {Variant::error(1234), u"Error 1234"},
               // Dates go without midnight and without the zero day.
               {Variant::date(0), u"12:00:00 AM"}, {Variant::date(39146), u"3/5/2007"},
               {Variant::date(39146.588), u"3/5/2007 2:06:43 PM"}, {Variant::date(-0.5), u"12:00:00 PM"},
               {Variant::date(-1.25), u"12/29/1899 6:00:00 AM"}, {Variant::date(1.9999999), u"1/1/1900"},
               {Variant::date(-657434), u"1/1/100"});
  expectError(94, toText, Variant::null());
  expectError(13, toText, noArray, Variant::date(3e6));
  expectError(91, toText, nullptr);
}

// 9007199254740993 is halfway between two doubles.
TEST(NumberTexts, AreAcceptedInEveryForm) {
  const auto number = [](const Variant& text) { return isNumeric(text) ? toDouble(text) : -1; };
  EXPECT_NUMBERS(+number, {u"1", 1}, {u" \t12.5 ", 12.5}, {u"-5", -5}, {u"5-", -5}, {u"+ 5", 5}, {u"(5)", -5},
                 {u"( $5 )", -5}, {u"$-5", -5}, {u"-$5", -5}, {u"5 $", 5}, {u"1,2,3", 123}, {u"1,", 1},
                 {u".5", 0.5}, {u"5.", 5}, {u"1e5", 100000}, {u"1D-2", 0.01}, {u"1E5-", -100000},
                 {u"1e-400", 0}, {u"00012", 12}, {u"1.7976931348623157e308", 1.7976931348623157e308},
                 {u"0." + String(79, u'0') + u"12345678901234567890", 1.2345678901234568e-80},
                 {u"9007199254740993", 9007199254740992},
                 {u"9007199254740993." + String(70, u'0') + u"1", 9007199254740994});
}

TEST(NumberTexts, AreRefusedInAnyOtherForm) {
  StringView texts =
      u"| |x|5x|5 5|.|-|--5|-5-|(5|5)|()|,1|1.5,0|1.2.3|1e|1e+|e5|1E "
      u"5|$|$5$|True|3/5/2007|&H|&HG|&17|\uFF11|1E2.5|$1E2|";
  for (std::size_t end; (end = texts.find(u'|')) != StringView::npos; texts.remove_prefix(end + 1)) {
    const StringView text = texts.substr(0, end);
    EXPECT_FALSE(isNumeric(text)) << toUtf8(text);
    expectError(13, toDouble, text);
    expectError(13, toLong, text);
    expectError(13, toCurrency, text);
  }
}

TEST(NumberTexts, TooLargeOnesOverflowAndOtherBasesConvertButNeitherIsNumeric) {
  expectError(6, toDouble, u"1e400", u"-1e99999999999999999999");
  expectError(6, toLong, u"1e99999999999999999999");
  EXPECT_NUMBERS(toLong, {u"&H10", 16}, {u" &o17 ", 15}, {u"&HFFFFFFFF", -1}, {u"&HFFFF", 65535});
  EXPECT_NUMBERS(toInteger, {u"&HFFFF", -1}, {u"&H8000", -32768});
  EXPECT_NUMBERS(toDouble, {u"&HFFFF", 65535}, {true, -1}, {u"0e99999999999999999999", 0});
  expectError(6, toInteger, u"&H10000");
  expectError(13, toLong, u"&H11111111111111111");
  EXPECT_FALSE(isNumeric(u"1e400") || isNumeric(u"&H10"));
}

TEST(NumberTexts, FollowTheLocale) {
  const LocaleGuard german(germanLocale());
  EXPECT_EQ(toDouble(u"1.234,5 \u20AC"), 1234.5);
  EXPECT_TEXTS({0.5, u"0,5"}, {Variant::currency(15000), u"1,5"});
  EXPECT_FALSE(isNumeric(u"$5"));
}

TEST(WholeNumbers, RoundHalvesToEvenAndOverflowOutsideTheirRange) {
  EXPECT_NUMBERS(toLong, {2.5, 2}, {3.5, 4}, {-2.5, -2}, {u"2.5", 2}, {u"2.50000000000000000000001", 3},
                 {Variant::currency(25000), 2}, {Variant::currency(-35000), -4},
                 {Variant::currency(25001), 3}, {Variant::date(39146.5), 39146}, {true, -1});
  EXPECT_NUMBERS(toInteger, {32767.49, 32767}, {-32768.5, -32768});
  EXPECT_NUMBERS(toByte, {-0.5, 0}, {true, 255}, {u"&HFF", 255});
  expectError(6, toInteger, 32767.5, u"-32769");
  expectError(6, toLong, 2147483647.5, std::numeric_limits<double>::quiet_NaN());
  expectError(6, toByte, -1);
  expectError(6, toSingle, 1e39);
}

TEST(Currency, IsExactToFourPlaces) {
  EXPECT_EQ(toCurrency(u"922337203685477.5807"), 9223372036854775807);
  EXPECT_EQ(toCurrency(u"-922337203685477.5808"), lowest);
  EXPECT_EQ(toCurrency(99999999999999.75), 999999999999997500);
  EXPECT_EQ(toCurrency(-922337203685477.5), -9223372036854775000);
  // The double 1.00005 lies above the half.
  EXPECT_NUMBERS(toCurrency, {u"0.00005", 0}, {u"0.00015", 2}, {0.5 / 10000 + 1e-18, 1}, {1.00005, 10001},
                 {-0.03125, -312}, {7, 70000});
  expectError(6, toCurrency, u"922337203685477.58075", 1e15);
}

TEST(BooleansAndDates, ComeFromWordsAndNumbersInRange) {
  EXPECT_NUMBERS(toBoolean, {u"tRUE", 1}, {u"#TRUE#", 1}, {u"False", 0}, {u"0.1", 1}, {u"0", 0},
                 {Variant::currency(1), 1}, {Variant::date(1), 1});
  expectError(13, toBoolean, u"", u" True", u"yes");
  EXPECT_NUMBERS(toDate, {39146, 39146}, {-657434.5, -657434.5});
  expectError(6, toDate, -657435.0, 2958466.0);
  expectError(13, toDate, u"39146");
}

TEST(Conversions, RefuseNullErrorsAndArrays) {
  for (const VariantKind kind :
       {VariantKind::Byte, VariantKind::Integer, VariantKind::Long, VariantKind::Single, VariantKind::Double,
        VariantKind::Currency, VariantKind::Date, VariantKind::Boolean}) {
    EXPECT_EQ(raised([&] { convertTo(Variant::null(), kind); }), 94);
    EXPECT_EQ(raised([&] { convertTo(Variant::error(5), kind); }), 13);
    EXPECT_EQ(raised([&] { convertTo(noArray, kind); }), 13);
    EXPECT_EQ(raised([&] { convertTo(nullptr, kind); }), 91);
    EXPECT_EQ(convertTo(Variant(), kind).kind(), kind);
    EXPECT_EQ(toDouble(convertTo(Variant(), kind)), 0);
  }
  EXPECT_EQ(raised([] { convertTo(1, VariantKind::Object); }), 13);
  EXPECT_TRUE(convertTo(Variant::null(), VariantKind::Null).isNull());
  EXPECT_EQ(convertTo(u"1:00", VariantKind::Date).kind(), VariantKind::Date);
}

TEST(Conversions, TakeAnObjectAsItsDefaultMember) {
  const Variant outer = make<Holder>(make<Holder>(u"12.5"));
  EXPECT_NUMBERS(toDouble, {outer, 12.5});
  EXPECT_TEXTS({outer, u"12.5"});
  expectError(438, toLong, make<Holder>(Variant()));
}

TEST(Kinds, HaveNamesAndSomeAreNumeric) {
  const Variant values[] = {Variant(),
                            true,
                            std::uint8_t{1},
                            std::int16_t{1},
                            1,
                            1.0F,
                            1.0,
                            Variant::currency(1),
                            Variant::null(),
                            Variant::date(1),
                            Variant::missing(),
                            nullptr,
                            noArray,
                            u"",
                            make<Holder>(1),
                            ArrayData::create(VariantKind::Byte, {{0, 3}})};
  String numeric, names;
  for (const Variant& value : values) (isNumeric(value) ? numeric : names) += typeName(value) + u" ";
  EXPECT_EQ(toUtf8(numeric), "Empty Boolean Byte Integer Long Single Double Currency Object ");
  EXPECT_EQ(toUtf8(names), "Null Date Error Nothing Variant() String Byte() ");
}

TEST(LeadingNumber, IsWhatATextBeginsWith) {
  const LocaleGuard guard(germanLocale());
  const std::pair<StringView, double> cases[] = {
      {u"", 0},       {u"abc", 0}, {u"12abc", 12}, {u"-3.5x", -3.5}, {u" + 1 0\t0\n0", 1000}, {u"1,5", 1},
      {u".5.5", 0.5}, {u"-.", 0},  {u"--1", 0},    {u"2e3", 2000},   {u"2D+1", 20},           {u"1e-400", 0},
      {u"1e", 1},     {u"e5", 0},  {u"&H10", 0},   {u"1E- 2", 0.01}, {u"\uFF11", 0},
  };
  for (const auto& [text, number] : cases) EXPECT_EQ(leadingNumber(text), number) << toUtf8(text);
  EXPECT_EQ(leadingNumber(String(400, u'0') + u"7"), 7);
  EXPECT_EQ(raised([] { leadingNumber(u"-1e309"); }), 6);
  EXPECT_EQ(raised([] { leadingNumber(String(400, u'9')); }), 6);
}

}  // namespace
}  // namespace zelUtilities
