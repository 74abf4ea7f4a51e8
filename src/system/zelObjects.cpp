#include "system/zelObjects.h"

#include "automation/Binder.h"
#include "foundation/bas_Main.h"

namespace zelUtilities {

Ref<Object> zel_CreateObject(StringView sName, StringView sTitle) { return CreateNamedObject(sName, sTitle); }

bool zel_IsInCollection(const Ref<Object>& col, const Variant& vKey) {
  if (!col) return false;
  try {
    Variant key = vKey;
    const Variant item = col->Invoke(u"Item", InvokeKind::MethodOrGet, {&key, 1});
    return item.isObject() && item.object();
  } catch (...) {
    return false;
  }
}

const ClassInfo& zelObjects::describeClass() {
  static const ClassInfo info =
      describeFunctions("zelObjects", "Functions that create objects and look into collections.")
          .function("zel_CreateObject", &zel_CreateObject, {"sName", arg("sTitle") = u"Missing Component"},
                    "Creates a new instance of the object whose name is passed in via sName.")
          .function("zel_IsInCollection", &zel_IsInCollection, {"col", "vKey"},
                    "Looks for a Key in a collection.");
  return info;
}

}  // namespace zelUtilities
