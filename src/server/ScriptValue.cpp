#include "server/ScriptValue.h"

#include <cmath>
#include <vector>

#include "automation/ArrayData.h"
#include "automation/Calendar.h"
#include "automation/Conversions.h"
#include "automation/Error.h"
#include "automation/NumberText.h"
#include "platform/windows/ForeignObject.h"

namespace zelUtilities {

namespace {

// Asked for in this way because every engine has these two; the one that gives an automation date is missing
// in some.
bool isDateObject(const ForeignObject& object) {
  return object.knows(u"getTime") && object.knows(u"getTimezoneOffset");
}

Variant dateIn(ForeignObject& object) {
  constexpr double minutesOfDay = 24 * 60;
  constexpr double firstDay = 25569;  // 1970-01-01
  const auto number = [&](StringView name) { return toDouble(object.Invoke(name, InvokeKind::Method, {})); };
  const double minutes = number(u"getTime") / 60000 - number(u"getTimezoneOffset");
  const double days = firstDay + std::floor(minutes / minutesOfDay);
  const double time = minutes / minutesOfDay - std::floor(minutes / minutesOfDay);
  const double date = days < 0 ? days - time : days + time;
  if (std::isnan(date)) throw Error(ErrorNumber::TypeMismatch);
  if (!isDateInRange(date)) throw Error(ErrorNumber::Overflow);
  return Variant::date(date);
}

// An element that was never set is empty.
Variant arrayIn(ForeignObject& object, VariantKind elementKind) {
  std::vector<Variant> elements;
  const std::int32_t length = toLong(object.Invoke(u"length", InvokeKind::Get, {}));
  for (std::int32_t i = 0; i < length; ++i) {
    const String name = decimalText(i);
    Variant element = object.knows(name) ? object.Invoke(name, InvokeKind::Get, {}) : Variant();
    elements.push_back(scriptValue(std::move(element), {VariantKind::Variant}));
  }
  return withElements(*ArrayData::ofVariants(std::move(elements)), elementKind);
}

}  // namespace

Ref<ArrayData> withElements(const ArrayData& array, VariantKind kind) {
  Ref<ArrayData> converted = ArrayData::create(kind, array.bounds());
  for (std::size_t i = 0; i < array.size(); ++i) converted->set(i, convertTo(array.at(i), kind));
  return converted;
}

bool isScriptArray(const Variant& given, const TypeInfo& wanted) {
  return wanted.array && wanted.kind != VariantKind::Variant && given.isArray() &&
         given.array().elementKind() == VariantKind::Variant;
}

Variant scriptValue(Variant given, const TypeInfo& wanted) {
  if (isScriptArray(given, wanted)) return withElements(given.array(), wanted.kind);
  if (!given.isObject() || wanted.kind == VariantKind::Object) return given;
  const Ref<ForeignObject> object = foreignObject(given.object());
  if (!object) return given;
  if (wanted.array) return object->knows(u"length") ? arrayIn(*object, wanted.kind) : given;
  const bool takesDate = wanted.kind == VariantKind::Date || wanted.kind == VariantKind::Variant;
  return takesDate && isDateObject(*object) ? dateIn(*object) : given;
}

}  // namespace zelUtilities
