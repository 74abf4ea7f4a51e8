#include "datalist/XmlSource.h"

namespace zelUtilities {

Ref<Object> objectProperty(Object& object, StringView name) {
  const Variant value = object.Invoke(name, InvokeKind::Get, {});
  return value.isObject() ? Ref<Object>(value.object()) : Ref<Object>();
}

}  // namespace zelUtilities
