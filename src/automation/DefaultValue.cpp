#include "automation/DefaultValue.h"

#include "automation/Error.h"

namespace zelUtilities {

Variant defaultValue(const Variant& value) {
  constexpr int deepest = 64;
  Variant current = value;
  for (int depth = 0; current.isObject(); ++depth) {
    if (!current.object()) throw Error(ErrorNumber::ObjectNotSet);
    if (depth == deepest) throw Error(ErrorNumber::TypeMismatch);
    current = current.object()->Invoke(u"", InvokeKind::Get, {});
  }
  return current;
}

}  // namespace zelUtilities
