#include "platform/Objects.h"

#include "automation/Conversions.h"
#include "platform/ObjectTable.h"
#include "platform/linux/FileSystemObject.h"
#include "platform/linux/XmlDocument.h"

namespace zelUtilities {

namespace {

// There is no class store: what the program registered, else the stand-ins.
class LinuxObjects : public Objects {
 public:
  LinuxObjects() {
    registerStandIn(u"Scripting.FileSystemObject", [] { return Ref<Object>(new FileSystemObject); });
    registerXmlDocument();
  }

  Ref<Object> create(StringView progId) override {
    Ref<Object> object = createRegistered(progId);
    if (!object) object = createStandIn(progId);
    if (!object) raiseCannotCreate(progId, u"no such class is registered");
    return object;
  }
};

}  // namespace

String className(Object& object) { return typeName(Variant(&object)); }

Objects& Objects::system() {
  static auto& service = *new LinuxObjects;
  return service;
}

}  // namespace zelUtilities
