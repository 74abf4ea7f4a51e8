#include "system/zelConversions.h"

#include <algorithm>
#include <cmath>

#include "automation/Binder.h"
#include "automation/Calendar.h"
#include "automation/LeadingNumber.h"
#include "automation/LetterCase.h"
#include "foundation/Handled.h"

namespace zelUtilities {

namespace {

constexpr double squareMetresInSquareFoot = 0.09290304;
constexpr double metresInFoot = 0.3048;
constexpr double kilogramsInPound = 0.453592;  // sic, not the full international pound

double checked(double value) {
  if (std::isinf(value)) throw Error(ErrorNumber::Overflow);
  return value;
}

// So many bytes from the index on, as an unsigned number.
std::uint32_t bigEndian(const Ref<ArrayData>& bytes, std::int32_t index, std::uint32_t count) {
  if (bytes->elementKind() != VariantKind::Byte) throw Error(ErrorNumber::TypeMismatch);
  if (bytes->bounds().size() != 1) throw Error(ErrorNumber::SubscriptOutOfRange);
  const ArrayBound& bound = bytes->bounds()[0];
  const std::int64_t first = std::int64_t{index} - bound.lower;
  if (first < 0 || first + count > bound.count) throw Error(ErrorNumber::SubscriptOutOfRange);
  std::uint32_t value = 0;
  for (const std::uint8_t byte : bytes->bytes().subspan(static_cast<std::size_t>(first), count))
    value = value << 8 | byte;
  return value;
}

// The date with months and days running on beyond their range. Raises 5 outside the years 100 to 9999.
Date dateFrom(int year, int month, int day) {
  if (year < 30) {
    year += 2000;
  } else if (year < 100) {
    year += 1900;
  }
  const int months = year * 12 + month - 1;
  if (months < 0 || months > 12 * 10000) throw Error(ErrorNumber::InvalidProcedureCall);
  const double days = dayNumberOf(months / 12, months % 12 + 1, 1) + day - 1;
  if (!isDateInRange(days)) throw Error(ErrorNumber::InvalidProcedureCall);
  return {days};
}

struct DatePart {
  std::int16_t value = 0;
  bool found = false;
};

DatePart datePart(StringView text, StringView upperFormat, StringView letters) {
  const std::size_t place = upperFormat.find(letters);
  if (place == StringView::npos) return {};
  const StringView digits = place < text.size() ? text.substr(place, letters.size()) : StringView();
  return {toInteger(leadingNumber(digits)), true};
}

Date dateByFormat(StringView text, StringView format) {
  String upper(format);
  std::transform(upper.begin(), upper.end(), upper.begin(), upperCase);
  const DatePart year = datePart(text, upper, u"YYYY");
  const DatePart month = datePart(text, upper, u"MM");
  const DatePart day = datePart(text, upper, u"DD");
  return year.found && month.found && day.found ? dateFrom(year.value, month.value, day.value) : Date();
}

}  // namespace

double zel_Ft2ToM2(double oSource) { return checked(oSource * squareMetresInSquareFoot); }
double zel_M2ToFt2(double oSource) { return checked(oSource / squareMetresInSquareFoot); }
double zel_FtToM(double oSource) { return checked(oSource * metresInFoot); }
double zel_MToFt(double oSource) { return checked(oSource / metresInFoot); }
double zel_LbToKg(double oSource) { return checked(oSource * kilogramsInPound); }
double zel_KgToLb(double oSource) { return checked(oSource / kilogramsInPound); }

std::int32_t zel_MotorolaBytesToLong(const Ref<ArrayData>& cBytes, std::int32_t idx) {
  return static_cast<std::int32_t>(bigEndian(cBytes, idx, 4));
}

std::int16_t zel_MotorolaBytesToShort(const Ref<ArrayData>& cBytes, std::int32_t idx) {
  return static_cast<std::int16_t>(bigEndian(cBytes, idx, 2));
}

std::int32_t zel_MotorolaBytesToUnsignedShort(const Ref<ArrayData>& cBytes, std::int32_t idx) {
  return static_cast<std::int32_t>(bigEndian(cBytes, idx, 2));
}

Date zel_StringToDate(StringView sDateString, StringView sDateFormat) {
  Date date;
  handled(u"zelConversions.zel_StringToDate", [&] {
    if (sDateString.empty()) return;
    date = sDateFormat.empty() ? Date{toDate(sDateString)} : dateByFormat(sDateString, sDateFormat);
  });
  return date;
}

const ClassInfo& zelConversions::describeClass() {
  static const ClassInfo info =
      describeFunctions("zelConversions", "Functions that convert units, bytes and dates.")
          .function("zel_Ft2ToM2", &zel_Ft2ToM2, {"oSource"}, "Square feet in square metres.")
          .function("zel_M2ToFt2", &zel_M2ToFt2, {"oSource"}, "Square metres in square feet.")
          .function("zel_FtToM", &zel_FtToM, {"oSource"}, "Feet in metres.")
          .function("zel_MToFt", &zel_MToFt, {"oSource"}, "Metres in feet.")
          .function("zel_LbToKg", &zel_LbToKg, {"oSource"}, "Pounds in kilograms.")
          .function("zel_KgToLb", &zel_KgToLb, {"oSource"}, "Kilograms in pounds.")
          .function("zel_MotorolaBytesToLong", &zel_MotorolaBytesToLong,
                    {reference("cBytes"), arg("idx") = 0}, "Four bytes, most significant first, as a number.")
          .function("zel_MotorolaBytesToShort", &zel_MotorolaBytesToShort,
                    {reference("cBytes"), arg("idx") = 0}, "Two bytes, most significant first, as a number.")
          .function("zel_MotorolaBytesToUnsignedShort", &zel_MotorolaBytesToUnsignedShort,
                    {reference("cBytes"), arg("idx") = 0},
                    "Two bytes, most significant first, as a number from 0 to 65535.")
          .function("zel_StringToDate", &zel_StringToDate, {"sDateString", arg("sDateFormat") = u""},
                    "The date in a text, by a format or the user's conventions.");
  return info;
}

}  // namespace zelUtilities
