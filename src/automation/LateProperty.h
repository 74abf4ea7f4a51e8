// LateProperty: properties of any object, read by name as scripts do.
#pragma once

#include "automation/Object.h"
#include "automation/Variant.h"

namespace zelUtilities {

// Raises what the object raises, 438 where it has no such property.
inline Variant property(Object& object, StringView name) { return object.Invoke(name, InvokeKind::Get, {}); }

// Nothing for a value of another kind.
inline Ref<Object> objectIn(const Variant& value) {
  return value.isObject() ? Ref<Object>(value.object()) : Ref<Object>();
}

inline Ref<Object> objectProperty(Object& object, StringView name) {
  return objectIn(property(object, name));
}

}  // namespace zelUtilities
