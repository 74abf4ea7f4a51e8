#include "system/zelMisc.h"

#include <cmath>

#include "automation/Binder.h"
#include "automation/Comparison.h"
#include "automation/Format.h"
#include "foundation/Handled.h"
#include "platform/Clock.h"
#include "platform/Process.h"
#include "system/zelTimeZone.h"
#include "system/zelWinAPI.h"

namespace zelUtilities {

namespace {

// The only dimension; one of nothing from 0 where there is none.
ArrayBound boundOf(const Ref<ArrayData>& array) {
  if (!array || array->bounds().empty()) return {};
  if (array->bounds().size() > 1) throw Error(ErrorNumber::SubscriptOutOfRange);
  return array->bounds()[0];
}

Ref<ArrayData> appended(const Ref<ArrayData>& target, const Ref<ArrayData>& source, double factor) {
  const ArrayBound kept = boundOf(target);
  const ArrayBound added = boundOf(source);
  const std::int32_t count = checkedLong(std::int64_t{kept.count} + added.count);
  if (count < 1) return target;
  Ref<ArrayData> grown =
      ArrayData::create(VariantKind::Double, {{kept.lower, static_cast<std::uint32_t>(count)}});
  for (std::uint32_t i = 0; i < kept.count; ++i) grown->set(i, target->at(i));
  for (std::uint32_t i = 0; i < added.count; ++i) {
    const double element = source->at(i).doubleValue();
    const double product = element * factor;
    if (std::isinf(product) && !std::isinf(element)) throw Error(ErrorNumber::Overflow);
    grown->set(kept.count + i, product);
  }
  return grown;
}

// The present, cut to the second as clocks show it: formatting would round it up.
Variant presentSecond() {
  constexpr double millisecondsPerDay = 86400000;
  const auto total = static_cast<std::int64_t>(std::llround(now().days * millisecondsPerDay));
  return Variant::date(static_cast<double>(total - total % 1000) / millisecondsPerDay);
}

// A process takes a line that ends at its first NUL, and would be started with half of it.
void requireCommandLine(StringView line) {
  if (trimBlanks(line).empty() || line.find(u'\0') != StringView::npos)
    throw Error(ErrorNumber::InvalidProcedureCall);
}

}  // namespace

Variant zel_MaxValue(const Variant& vValue1, const Variant& vValue2) {
  Variant larger;
  handled(u"zelMisc.zel_MaxValue",
          [&] { larger = compare(vValue1, vValue2) == Ordering::Less ? vValue2 : vValue1; });
  return larger;
}

Variant zel_MinValue(const Variant& vValue1, const Variant& vValue2) {
  Variant smaller;
  handled(u"zelMisc.zel_MinValue",
          [&] { smaller = compare(vValue1, vValue2) == Ordering::Greater ? vValue2 : vValue1; });
  return smaller;
}

std::int32_t zel_ArrayCount(const Variant& vArray) {
  if (!vArray.isArray() || vArray.array().bounds().empty()) return 0;
  return checkedLong(vArray.array().bounds()[0].count);
}

void zel_AppendArray(DoubleArray& daDst, const DoubleArray& daSrc, double dFactor) {
  handled(u"zelMisc.AppendArray", [&] { daDst.data = appended(daDst.data, daSrc.data, dFactor); });
}

String zel_GetEmailMessageDate() {
  String text;
  handled(u"zelMisc.zel_GetEmailMessageDate", [&] {
    text = format(presentSecond(), u"ddd, d mmm yyyy Hh:Nn:Ss") + u" " +
           format(zel_TZGetLocalOffset() * 100, u"0000");
  });
  return text;
}

String zel_GetEmailMessageID() {
  constexpr std::size_t milliseconds = 20;  // where they stand in the time's text
  String text;
  handled(u"zelMisc.zel_GetEmailMessageID", [&] {
    text = u"<" + format(presentSecond(), u"yyyymmddHhNnSs") +
           zel_WinAPIGetSystemTime().substr(milliseconds, 3) + u"@" +
           zel_WinAPIComputerNameEX(ComputerNameDnsFullyQualified) + u">";
  });
  return text;
}

bool zel_ShellAndWait(StringView sEXEFullPath) {
  bool ended = false;
  handled(u"zelMisc.zel_ShellAndWait", [&] {
    requireCommandLine(sEXEFullPath);
    runToEnd(sEXEFullPath.substr(sEXEFullPath.find_first_not_of(u' ')));
    ended = true;
  });
  return ended;
}

const ClassInfo& zelMisc::describeClass() {
  static const ClassInfo info =
      describeFunctions("zelMisc", "Functions for values, arrays, e-mail and programs.")
          .function("zel_MaxValue", &zel_MaxValue, {"vValue1", "vValue2"},
                    "Compare two numeric values and determines which is the larger value.")
          .function("zel_MinValue", &zel_MinValue, {"vValue1", "vValue2"},
                    "Compare two numeric values and determines which is the smaller value.")
          .function("zel_ArrayCount", &zel_ArrayCount, {"vArray"}, "The number of elements in an array.")
          .function("zel_AppendArray", &zel_AppendArray, {"daDst", reference("daSrc"), arg("dFactor") = 1.0},
                    "Appends the elements of an array, multiplied by a factor, to another one.")
          .function("zel_GetEmailMessageDate", &zel_GetEmailMessageDate,
                    "The present as the date of an e-mail message.")
          .function("zel_GetEmailMessageID", &zel_GetEmailMessageID,
                    "A new identifier for an e-mail message.")
          .function("zel_ShellAndWait", &zel_ShellAndWait, {"sEXEFullPath"},
                    "Runs a program and waits for its end.");
  return info;
}

}  // namespace zelUtilities
