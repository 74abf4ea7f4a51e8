#include "foundation/bas_Main.h"

#include "automation/Conversions.h"
#include "automation/Error.h"
#include "automation/ThreadOwned.h"
#include "foundation/ClassRegistry.h"
#include "foundation/Handled.h"
#include "foundation/zelHandler.h"
#include "platform/Dialogs.h"
#include "platform/Objects.h"

namespace zelUtilities {

namespace {

// Ends with its thread. By then the system may have closed down what its own objects live in, so a foreign
// object is not released any more.
struct SharedObject {
  Ref<Object> object;
  SharedObject() = default;
  SharedObject(const SharedObject&) = delete;
  SharedObject& operator=(const SharedObject&) = delete;
  ~SharedObject() {
    if (object && !object->classInfo()) object.detach();
  }
};

Ref<Object> createNamed(StringView name) {
  // The built-in logger gives way to a class of the program's or the system's under its name.
  static const bool hasStandIn = [] {
    registerStandIn(u"zelLog.zelHandler", [] { return Ref<Object>(make<zelHandler>()); });
    return true;
  }();
  (void)hasStandIn;
  if (Ref<Object> own = currentClassRegistry().create(name)) return own;
  return createObject(name);
}

}  // namespace

Ref<Object> FSO() {
  Ref<Object>& shared = ThreadOwned<SharedObject>::value().object;
  handled(u"bas_Main.FSO", [&] {
    if (!shared) shared = createObject(u"Scripting.FileSystemObject");
  });
  return shared;
}

bool FSOSays(StringView question, StringView path) {
  try {
    const Ref<Object> fso = path.find(u'\0') == StringView::npos ? FSO() : nullptr;
    Variant argument = path;
    return fso && toBoolean(fso->Invoke(question, InvokeKind::Method, {&argument, 1}));
  } catch (...) {
    return false;
  }
}

Ref<Object> CreateNamedObject(StringView name, StringView title) {
  try {
    return createNamed(name);
  } catch (...) {
    if (!trimBlanks(title).empty()) messageBox(u"Object Descriptor: " + String(name), title);
    return {};
  }
}

}  // namespace zelUtilities
