#include "server/CallArguments.h"

#include <algorithm>
#include <cstring>

#include "automation/ArrayData.h"
#include "automation/Error.h"
#include "platform/windows/VariantConversion.h"
#include "server/ScriptValue.h"
#include "server/StoreReference.h"

namespace zelUtilities {

namespace {

bool isPropertyPut(const DISPPARAMS& passed, std::size_t named) {
  return passed.rgdispidNamedArgs[named] == DISPID_PROPERTYPUT;
}

// One past the last parameter that is given, and one more for the value of a put.
std::size_t countOf(const Member& member, const DISPPARAMS& passed) {
  std::size_t count = passed.cArgs - passed.cNamedArgs;
  std::size_t values = 0;
  for (std::size_t i = 0; i < passed.cNamedArgs; ++i) {
    const DISPID id = passed.rgdispidNamedArgs[i];
    if (isPropertyPut(passed, i)) {
      values = 1;
    } else if (id < 0 || static_cast<std::size_t>(id) >= member.parameters.size()) {
      throw Error(ErrorNumber::NamedArgumentNotFound);
    } else {
      count = std::max(count, static_cast<std::size_t>(id) + 1);
    }
  }
  return count + values;
}

bool isSame(const Variant& before, const Variant& after) {
  return std::memcmp(static_cast<const void*>(&before), static_cast<const void*>(&after), sizeof(Variant)) ==
         0;
}

}  // namespace

CallArguments::CallArguments(const Member& member, const DISPPARAMS& passed) : member_(member) {
  if (passed.cNamedArgs > passed.cArgs || (passed.cArgs > 0 && !passed.rgvarg) ||
      (passed.cNamedArgs > 0 && !passed.rgdispidNamedArgs))
    throw Error(ErrorNumber::InvalidProcedureCall);
  makeRoom(countOf(member, passed));

  const std::size_t positional = passed.cArgs - passed.cNamedArgs;
  for (std::size_t i = 0; i < positional; ++i) take(i, passed.rgvarg[passed.cArgs - 1 - i]);
  for (std::size_t i = 0; i < passed.cNamedArgs; ++i) {
    const std::size_t position =
        isPropertyPut(passed, i) ? values_.size() - 1 : static_cast<std::size_t>(passed.rgdispidNamedArgs[i]);
    if (!values_[position].isMissing()) throw Error(ErrorNumber::NamedArgumentNotFound);
    take(position, passed.rgvarg[i]);
  }
}

void CallArguments::makeRoom(std::size_t count) {
  if (count <= usual) {
    values_ = std::span(few_).first(count);
  } else {
    many_.resize(count);
    values_ = many_;
  }
  for (Variant& value : values_) value = Variant::missing();
}

void CallArguments::take(std::size_t position, VARIANT& passed) {
  const VARIANT* value = &passed;
  // A script's variable; a second step only ever leads to its content.
  for (int steps = 0; steps < 2 && value->vt == (VT_BYREF | VT_VARIANT); ++steps) value = value->pvarVal;
  const TypeInfo& wanted =
      position < member_.parameters.size() ? member_.parameters[position].type : member_.result;
  Variant& taken = values_[position];
  taken = fromSystem(*value);
  const bool isConverted = isScriptArray(taken, wanted);
  if (isConverted || taken.isObject()) taken = scriptValue(std::move(taken), wanted);

  if ((passed.vt & VT_BYREF) == 0 || !wanted.byReference) return;
  origins_.resize(values_.size());
  origins_[position] = {&passed, taken, isConverted};
}

void CallArguments::writeBack() {
  for (std::size_t i = 0; i < origins_.size(); ++i) {
    const Origin& origin = origins_[i];
    if (!origin.passed || isSame(origin.before, values_[i])) continue;
    if (origin.isScriptArray) values_[i] = withElements(values_[i].array(), VariantKind::Variant);
    storeReference(*origin.passed, values_[i]);
  }
}

}  // namespace zelUtilities
