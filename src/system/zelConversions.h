// zelConversions: units, numbers in the byte order of other machines, and dates from text.
//
//   zel_FtToM(1)                                      0.3048
//   zel_StringToDate(u"20070305", u"yyyymmdd")        2007-03-05
//
// They keep no state. All but zel_StringToDate raise what they fail with.
#pragma once

#include <cstdint>

#include "automation/ArrayData.h"
#include "automation/ClassInfo.h"
#include "automation/Date.h"

namespace zelUtilities {

// Square feet and metres, feet and metres, pounds and kilograms, with the factors 0.09290304, 0.3048 and
// 0.453592: the pound is the short one on purpose. Raises 6 where the result is too large.
double zel_Ft2ToM2(double oSource);
double zel_M2ToFt2(double oSource);
double zel_FtToM(double oSource);
double zel_MToFt(double oSource);
double zel_LbToKg(double oSource);
double zel_KgToLb(double oSource);

// The number that begins with the byte at the index, counted as the array counts, most significant byte
// first. Raises 9 where a byte lies outside the array, 13 for an array of anything but bytes.
std::int32_t zel_MotorolaBytesToLong(const Ref<ArrayData>& cBytes, std::int32_t idx = 0);
std::int16_t zel_MotorolaBytesToShort(const Ref<ArrayData>& cBytes, std::int32_t idx = 0);
std::int32_t zel_MotorolaBytesToUnsignedShort(const Ref<ArrayData>& cBytes, std::int32_t idx = 0);

// Without a format: the date that the text means in the user's locale. With one: year, month and day are the
// numbers at the places of "YYYY", "MM" and "DD" (in any letter case) in the format; months and days beyond
// their range run on into the next or previous ones, years 0 to 99 lie in 1930 to 2029, negative ones count
// from 2000. The zero date for an empty text, a format that lacks one of the three, and after a failure,
// which is logged.
Date zel_StringToDate(StringView sDateString, StringView sDateFormat = {});

namespace zelConversions {
const ClassInfo& describeClass();
}

}  // namespace zelUtilities
