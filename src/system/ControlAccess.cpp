#include "system/ControlAccess.h"

#include "automation/Conversions.h"
#include "automation/Error.h"
#include "automation/ItemWalk.h"
#include "platform/Objects.h"

namespace zelUtilities {

namespace {

constexpr std::int32_t objectRequired = 424;

Variant invoke(const Ref<Object>& object, StringView name, InvokeKind kind, std::vector<Variant> arguments) {
  if (!object) throw Error(ErrorNumber::ObjectNotSet);
  return object->Invoke(name, kind, arguments);
}

template <class Step>
bool succeeds(const Step& step) {
  try {
    step();
    return true;
  } catch (const Error&) {
    return false;
  }
}

}  // namespace

Variant readProperty(const Ref<Object>& object, StringView name, std::initializer_list<Variant> arguments) {
  return invoke(object, name, InvokeKind::MethodOrGet, arguments);
}

void writeProperty(const Ref<Object>& object, StringView name, const Variant& value) {
  invoke(object, name, InvokeKind::Put, {value});
}

void callMethod(const Ref<Object>& object, StringView name, std::initializer_list<Variant> arguments) {
  invoke(object, name, InvokeKind::Method, arguments);
}

bool tryReadProperty(const Ref<Object>& object, StringView name, Variant& value) {
  return succeeds([&] { value = readProperty(object, name); });
}

bool tryWriteProperty(const Ref<Object>& object, StringView name, const Variant& value) {
  return succeeds([&] { writeProperty(object, name, value); });
}

Ref<Object> objectIn(const Variant& value) {
  if (!value.isObject()) throw Error(objectRequired, {}, u"Object required");
  return value.object();
}

String controlType(const Ref<Object>& control) { return control ? className(*control) : u"Nothing"; }

bool isFrame(const Ref<Object>& control) { return controlType(control) == u"Frame"; }

bool isForm(const Ref<Object>& object) {
  const String type = controlType(object);
  if (type == u"Form" || type == u"MDIForm") return true;
  Variant value;
  return type != u"Frame" && !tryReadProperty(object, u"Container", value) &&
         tryReadProperty(object, u"Controls", value);
}

std::vector<Ref<Object>> controlsIn(const Ref<Object>& list) {
  std::vector<Ref<Object>> controls;
  const Ref<Enumerator> walk = itemsOf(list);
  for (Variant item; walk->next(item);)
    if (item.isObject() && item.object()) controls.emplace_back(item.object());
  return controls;
}

}  // namespace zelUtilities
