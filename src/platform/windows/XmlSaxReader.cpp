// Reading XML by the system's SAX reader.
#include <windows.h>

#include <objbase.h>
#include <oleauto.h>

#include <limits>
#include <new>
#include <optional>

#include "automation/Error.h"
#include "platform/Xml.h"
#include "platform/windows/ComErrors.h"
#include "platform/windows/ForeignObject.h"
#include "platform/windows/OwnedVariant.h"
#include "platform/windows/WideText.h"
#include "platform/windows/XmlSaxHandler.h"
#include "platform/windows/XmlSaxStream.h"

namespace zelUtilities {

namespace {

// A counted reference of the system's.
template <class Interface>
struct Held {
  Held() = default;
  ~Held() {
    if (object) object->Release();
  }
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;
  void** receive() { return reinterpret_cast<void**>(&object); }

  Interface* object = nullptr;
};

HRESULT createReader(Held<ISAXXMLReader>& reader) {
  return CoCreateInstance(saxReaderClass, nullptr, CLSCTX_INPROC_SERVER, saxReaderId, reader.receive());
}

void setUp(Held<ISAXXMLReader>& reader, XmlSaxHandler& handler) {
  HRESULT result = createReader(reader);
  // The client has not made its thread ready for COM, which is its business; without it nothing works.
  if (result == CO_E_NOTINITIALIZED && CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED) >= 0)
    result = createReader(reader);
  requireSuccess(result);
  for (const wchar_t* feature : {L"http://xml.org/sax/features/external-general-entities",
                                 L"http://xml.org/sax/features/external-parameter-entities"})
    requireSuccess(reader.object->putFeature(feature, VARIANT_FALSE));
  requireSuccess(reader.object->putContentHandler(&handler));
  requireSuccess(reader.object->putErrorHandler(&handler));
}

void putText(StringView text, VARIANT& source) {
  if (text.size() > std::numeric_limits<UINT>::max() / sizeof(char16_t))
    throw Error(ErrorNumber::OutOfMemory);
  source.bstrVal =
      SysAllocStringLen(reinterpret_cast<const wchar_t*>(text.data()), static_cast<UINT>(text.size()));
  if (!source.bstrVal) throw std::bad_alloc();
  source.vt = VT_BSTR;
}

// The object as a stream of the system's, where it is one.
void askForStream(Object& object, Held<ISequentialStream>& stream) {
  const auto* foreign = dynamic_cast<const ForeignObject*>(&object);
  if (foreign) foreign->dispatch()->QueryInterface(IID_ISequentialStream, stream.receive());
}

class WindowsXml : public Xml {
 public:
  void parse(const Variant& source, XmlHandler& handler) override {
    if (!source.isString() && !source.isObject()) throw Error(ErrorNumber::TypeMismatch);
    if (source.isObject() && !source.object()) throw Error(ErrorNumber::ObjectNotSet);
    XmlSaxHandler listener(handler);
    Held<ISAXXMLReader> reader;
    setUp(reader, listener);
    const HRESULT result = source.isString() ? readText(*reader.object, source.text(), listener)
                                             : readObject(*reader.object, *source.object(), listener);
    listener.finish(result);
  }

 private:
  static HRESULT readText(ISAXXMLReader& reader, StringView text, XmlSaxHandler& listener) {
    OwnedVariant passed;
    putText(text, passed);
    listener.limits().took(text.size());
    return reader.parse(passed);
  }

  static HRESULT readObject(ISAXXMLReader& reader, Object& object, XmlSaxHandler& listener) {
    Held<ISequentialStream> own;
    askForStream(object, own);
    std::optional<XmlSaxStream> stream;
    if (own.object) {
      stream.emplace(*own.object, listener);
    } else {
      stream.emplace(XmlStream{Ref<Object>(&object)}, listener);
    }
    VARIANT passed;  // owns nothing
    VariantInit(&passed);
    passed.vt = VT_UNKNOWN;
    passed.punkVal = &*stream;
    return reader.parse(passed);
  }
};

}  // namespace

Xml& Xml::system() {
  static auto& service = *new WindowsXml;
  return service;
}

}  // namespace zelUtilities
