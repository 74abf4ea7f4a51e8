// LateCall: the library's objects as this program reaches them, by the names of their members alone.
#pragma once

#include <array>

#include "automation/Error.h"
#include "automation/Variant.h"
#include "foundation/ClassRegistry.h"

namespace zelUtilities::host {

template <class... Arguments>
Variant call(Object& object, StringView name, const Arguments&... arguments) {
  std::array<Variant, sizeof...(Arguments)> values = {Variant(arguments)...};
  return object.Invoke(name, InvokeKind::MethodOrGet, values);
}

// What a call gave, which must be an object.
inline Object& objectIn(const Variant& value) {
  if (!value.isObject() || !value.object()) throw Error(ErrorNumber::ObjectNotSet);
  return *value.object();
}

// A new object of a class that must be there.
inline Ref<Object> create(const ClassRegistry& registry, const String& name) {
  Ref<Object> object = registry.create(u"zelUtilities." + name);
  return object ? object
                : throw Error(ErrorNumber::CannotCreateObject, {}, u"the class " + name + u" is missing");
}

}  // namespace zelUtilities::host
