#include "datalist/XmlSource.h"

#include "automation/Conversions.h"
#include "foundation/bas_Main.h"

namespace zelUtilities {

namespace {

Ref<Object> objectOf(const Variant& value) {
  return value.isObject() ? Ref<Object>(value.object()) : Ref<Object>();
}

}  // namespace

Ref<Object> parsedDocument(StringView sXML) {
  const Ref<Object> document = CreateNamedObject(u"MSXML.DOMDocument", u"");
  if (!document) return {};
  Variant source[] = {sXML};
  return toBoolean(document->Invoke(u"loadXML", InvokeKind::Method, source)) ? document : Ref<Object>();
}

Ref<Object> objectProperty(Object& object, StringView name) {
  return objectOf(object.Invoke(name, InvokeKind::Get, {}));
}

Ref<Object> selectedNode(Object& document, StringView path) {
  Variant query[] = {path};
  return objectOf(document.Invoke(u"selectSingleNode", InvokeKind::Method, query));
}

}  // namespace zelUtilities
