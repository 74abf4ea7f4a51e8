#include "platform/windows/XmlDocument.h"

#include "automation/CaseFolding.h"
#include "automation/Error.h"
#include "platform/Files.h"
#include "platform/Xml.h"
#include "platform/windows/ForeignObject.h"
#include "platform/windows/XmlScreening.h"

namespace zelUtilities {

namespace {

constexpr std::int32_t failedNumber = -2147467259;  // 0x80004005, as the system's own document has it

// Of the members of a parse error, those that are known.
class RefusalError : public Object {
 public:
  explicit RefusalError(StringView reason) : reason_(String(reason) + u"\r\n") {}

  Variant Invoke(StringView name, InvokeKind kind, std::span<Variant> arguments) override {
    if (equalFolded(name, u"reason")) return reason_;
    if (equalFolded(name, u"errorCode")) return failedNumber;
    if (equalFolded(name, u"line") || equalFolded(name, u"linepos")) return 0;
    return Object::Invoke(name, kind, arguments);
  }

 private:
  String reason_;
};

// What cannot be read here, an address for instance, is for the system's document to read or refuse.
String refusalOfFile(StringView path) {
  try {
    return refusalOfXml(files().readWhole(path));
  } catch (const Error&) {
    return {};
  }
}

class BoundedXmlDocument : public ForeignObject {
 public:
  using ForeignObject::ForeignObject;

  Variant Invoke(StringView name, InvokeKind kind, std::span<Variant> arguments) override {
    if (equalFolded(name, u"parseError") && !refusal_.empty()) return make<RefusalError>(refusal_);
    const bool isText = equalFolded(name, u"loadXML");
    if (!isText && !equalFolded(name, u"load")) return ForeignObject::Invoke(name, kind, arguments);
    refusal_.clear();
    if (arguments.size() == 1 && arguments[0].isString())
      refusal_ = isText ? refusalOfXml(arguments[0].text()) : refusalOfFile(arguments[0].text());
    if (refusal_.empty()) return ForeignObject::Invoke(name, kind, arguments);
    Variant nothing[] = {u""};
    return ForeignObject::Invoke(u"loadXML", InvokeKind::Method, nothing);  // empties the document
  }

 private:
  String refusal_;  // of the last document, or ""
};

// The nesting of elements, which some versions can bound themselves; others have a bound of their own.
void boundDepth(Object& document) {
  Variant depth[] = {u"MaxElementDepth", deepestXmlElement};
  try {
    document.Invoke(u"setProperty", InvokeKind::Method, depth);
  } catch (const Error&) {  // as it is, then
  }
}

}  // namespace

bool isXmlDocument(StringView progId) {
  constexpr StringView versions = u"MSXML2.DOMDocument";
  return equalFolded(progId, u"MSXML.DOMDocument") || equalFolded(progId, u"Microsoft.XMLDOM") ||
         equalFolded(progId.substr(0, versions.size()), versions);
}

Ref<Object> boundedXmlDocument(IDispatch* document) {
  const Ref<Object> bounded = make<BoundedXmlDocument>(document);
  boundDepth(*bounded);
  return bounded;
}

}  // namespace zelUtilities
