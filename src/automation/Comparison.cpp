#include "automation/Comparison.h"

#include <cmath>

#include "automation/Conversions.h"
#include "automation/DefaultValue.h"
#include "automation/Error.h"

namespace zelUtilities {

namespace {

template <class T>
Ordering order(T left, T right) {
  if (left < right) return Ordering::Less;
  return right < left ? Ordering::Greater : Ordering::Equal;
}

bool isEither(const Variant& left, const Variant& right, VariantKind kind) {
  return left.kind() == kind || right.kind() == kind;
}

bool isReal(VariantKind kind) { return kind == VariantKind::Single || kind == VariantKind::Double; }

bool isWhole(VariantKind kind) {
  return kind == VariantKind::Byte || kind == VariantKind::Integer || kind == VariantKind::Long ||
         kind == VariantKind::Boolean || kind == VariantKind::Empty;
}

bool fitsCurrency(const Variant& value) {
  constexpr double limit = 9.2e14;
  return !isReal(value.kind()) || std::fabs(toDouble(value)) < limit;
}

Ordering compareNumbers(const Variant& left, const Variant& right) {
  if (isWhole(left.kind()) && isWhole(right.kind())) return order(toLong(left), toLong(right));
  if (isEither(left, right, VariantKind::Date)) return order(toDouble(left), toDouble(right));
  // A Double beside a Currency or a Single counts only in the other's precision, so that a number equals
  // itself after it was stored in the narrower kind.
  if (isEither(left, right, VariantKind::Currency) && fitsCurrency(left) && fitsCurrency(right))
    return order(toCurrency(left), toCurrency(right));
  if (isEither(left, right, VariantKind::Single) && isReal(left.kind()) && isReal(right.kind()))
    return order(static_cast<float>(toDouble(left)), static_cast<float>(toDouble(right)));
  return order(toDouble(left), toDouble(right));
}

Ordering compareTexts(StringView left, StringView right) { return order(left.compare(right), 0); }

Ordering compareValues(const Variant& left, const Variant& right) {
  if (isEither(left, right, VariantKind::Array)) throw Error(ErrorNumber::TypeMismatch);
  if (isEither(left, right, VariantKind::Null)) return Ordering::Null;
  if (isEither(left, right, VariantKind::Error)) {
    if (left.kind() != right.kind()) throw Error(ErrorNumber::TypeMismatch);
    return order(left.errorCode(), right.errorCode());
  }
  if (left.isString()) {
    if (right.isString()) return compareTexts(left.text(), right.text());
    return right.isEmpty() ? compareTexts(left.text(), {}) : Ordering::Greater;
  }
  if (right.isString()) return left.isEmpty() ? compareTexts({}, right.text()) : Ordering::Less;
  return compareNumbers(left, right);
}

}  // namespace

Ordering compare(const Variant& left, const Variant& right) {
  if (left.isObject() || right.isObject()) return compareValues(defaultValue(left), defaultValue(right));
  return compareValues(left, right);
}

bool equals(const Variant& left, const Variant& right) { return compare(left, right) == Ordering::Equal; }

}  // namespace zelUtilities
