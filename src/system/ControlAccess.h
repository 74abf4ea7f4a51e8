// ControlAccess: a client's forms and controls, whatever objects they are, by the names of their properties.
//
//   float left = toSingle(readProperty(button, u"Left"));
//   if (isFrame(control)) writeProperty(control, u"Enabled", false);
//   for (const Ref<Object>& control : controlsIn(objectIn(readProperty(form, u"Controls")))) ...
//
// Reading and writing raise what the object raises, 91 for nothing.
#pragma once

#include <initializer_list>
#include <vector>

#include "automation/Object.h"
#include "automation/String.h"
#include "automation/Variant.h"

namespace zelUtilities {

// A property, or a method's result.
Variant readProperty(const Ref<Object>& object, StringView name,
                     std::initializer_list<Variant> arguments = {});
void writeProperty(const Ref<Object>& object, StringView name, const Variant& value);
void callMethod(const Ref<Object>& object, StringView name, std::initializer_list<Variant> arguments);

// The same for properties that an object may lack: False where it fails.
bool tryReadProperty(const Ref<Object>& object, StringView name, Variant& value);
bool tryWriteProperty(const Ref<Object>& object, StringView name, const Variant& value);

// The object in a value, perhaps nothing; raises 424 for a value of another kind.
Ref<Object> objectIn(const Variant& value);

// The name of the object's class; "Nothing" for none.
String controlType(const Ref<Object>& control);
bool isFrame(const Ref<Object>& control);
// A form is the top of its tree: by its type's name a Form or MDIForm, or whatever has Controls and, unlike
// a control, no Container. A program's forms are classes of their own, so the name alone does not tell.
bool isForm(const Ref<Object>& object);

// The controls in a list of any kind, as they are now; what is no object is left out.
std::vector<Ref<Object>> controlsIn(const Ref<Object>& list);

}  // namespace zelUtilities
