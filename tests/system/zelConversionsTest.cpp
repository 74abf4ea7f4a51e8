#include "system/zelConversions.h"

#include <gtest/gtest.h>

#include "automation/Conversions.h"
#include "automation/Format.h"
#include "support/RaisedError.h"
#include "support/Reports.h"

namespace zelUtilities {
namespace {

TEST(ZelConversions, UnitsGoByTheirFactorsAndBack) {
  EXPECT_EQ(zel_Ft2ToM2(2), 0.18580608);
  EXPECT_EQ(zel_M2ToFt2(0.09290304) + zel_MToFt(0.3048), 2);
  EXPECT_EQ(zel_FtToM(1), 0.3048);
  EXPECT_EQ(zel_LbToKg(1), 0.453592);
  EXPECT_EQ(zel_KgToLb(zel_LbToKg(7)), 7);
  EXPECT_EQ(raisedError([] { zel_MToFt(1e308); }), "6||Overflow");
}

Ref<ArrayData> bytesFrom(std::int32_t lower, std::initializer_list<std::uint8_t> bytes) {
  const auto array =
      ArrayData::create(VariantKind::Byte, {{lower, static_cast<std::uint32_t>(bytes.size())}});
  std::copy(bytes.begin(), bytes.end(), array->bytes().begin());
  return array;
}

TEST(ZelConversions, BytesAreReadMostSignificantFirst) {
  EXPECT_EQ(zel_MotorolaBytesToShort(bytesFrom(0, {0x80, 0})), -32768);
  EXPECT_EQ(zel_MotorolaBytesToShort(bytesFrom(0, {0x7F, 0xFF})), 32767);
  EXPECT_EQ(zel_MotorolaBytesToUnsignedShort(bytesFrom(0, {0x80, 1})), 32769);
  EXPECT_EQ(zel_MotorolaBytesToLong(bytesFrom(0, {0x80, 0, 1, 0})), -2147483647 - 1 + 256);
  EXPECT_EQ(zel_MotorolaBytesToLong(bytesFrom(-3, {9, 0xFF, 0xFF, 0xFF, 0xFE}), -2), -2);
}

TEST(ZelConversions, BytesOutsideTheArrayAreAnErrorOfTheCaller) {
  const Ref<ArrayData> bytes = bytesFrom(1, {1, 2, 3, 4});
  for (const std::int32_t index : {0, 2, 2147483647, -2147483647 - 1})
    EXPECT_EQ(raisedError([&] { zel_MotorolaBytesToLong(bytes, index); }), "9||Subscript out of range");
  for (const std::vector<ArrayBound>& bounds : {std::vector<ArrayBound>{}, {{0, 1}}, {{0, 4}, {0, 4}}})
    EXPECT_EQ(raisedError([&] { zel_MotorolaBytesToShort(ArrayData::create(VariantKind::Byte, bounds)); }),
              "9||Subscript out of range");
  EXPECT_EQ(raisedError([] {
              zel_MotorolaBytesToShort(ArrayData::ofVariants({1.0, 2.0}));
            }),
            "13||Type mismatch");
}

TEST(ZelConversions, DatesAreReadByAFormatOrTheLocale) {
  Reports reports{"zelConversions.zel_"};
  const std::tuple<StringView, StringView, std::string> cases[] = {
      {u"05.03.2007", u"Dd.mM.yYyY", "2007-03-05"},
      {u"3/5/2007", u"", "2007-03-05"},
      {u"2007", u"YYYY", "1899-12-30"},
      {u"200703", u"yyyymm", "1899-12-30"},
      {u"200703", u"yyyymmdd", "2007-02-28"},  // the day is 0
      {u"20071332", u"yyyymmdd", "2008-02-01"},
      {u"2007 3 5", u"yyyymmdd", "2007-03-05"},
      {u"2007-1-1", u"yyyymmdd", "2006-10-30"},  // month -1 and day -1
      {u"2007&H05", u"yyyymmdd", "2006-12-05"},
      {u"01000101", u"yyyymmdd", "100-01-01"},
      {u"00290101", u"yyyymmdd", "2029-01-01"},
      {u"00300101", u"yyyymmdd", "1930-01-01"},
      {u"99991231", u"yyyymmdd", "9999-12-31"},
      {u"-9990101", u"yyyymmdd", "1001-01-01"}};
  for (const auto& [text, pattern, expected] : cases)
    EXPECT_EQ(toUtf8(format(Variant::date(zel_StringToDate(text, pattern).days), u"yyyy-mm-dd")), expected);
  EXPECT_EQ(zel_StringToDate(u"12 apples").days, 0);
  for (const StringView text : {u"99991232", u"01000001", u"1e4 0101", u"9e9 0101"})
    EXPECT_EQ(zel_StringToDate(text, u"yyyymmdd").days, 0);
  EXPECT_EQ(reports.taken(), "StringToDate|13 StringToDate|5 StringToDate|5 StringToDate|5 StringToDate|6 ");
}

}  // namespace
}  // namespace zelUtilities
