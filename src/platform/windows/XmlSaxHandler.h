// XmlSaxHandler: hears the system's SAX reader on behalf of an XmlHandler.
#pragma once

#include <windows.h>

#include <msxml2.h>

#include <exception>
#include <vector>

#include "platform/Xml.h"
#include "platform/XmlLimits.h"

namespace zelUtilities {

extern const CLSID saxReaderClass;
extern const IID saxReaderId;

// The system's interfaces have no virtual destructor; nobody deletes through them.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// Lives as long as one parse, whoever holds references.
class XmlSaxHandler final : public ISAXContentHandler, public ISAXErrorHandler {
 public:
  explicit XmlSaxHandler(XmlHandler& handler) : handler_(handler) {}
  XmlSaxHandler(const XmlSaxHandler&) = delete;
  XmlSaxHandler& operator=(const XmlSaxHandler&) = delete;

  XmlLimits& limits() { return limits_; }
  // Keeps what is being thrown, for finish to raise; the reader is to stop. Call it in a catch block.
  HRESULT keepRaised() noexcept;
  // Once the reader is done: raises what was kept, or the error of a document that could not be read.
  void finish(HRESULT result);

  HRESULT WINAPI QueryInterface(REFIID id, void** out) override;
  ULONG WINAPI AddRef() override { return 2; }
  ULONG WINAPI Release() override { return 1; }

  HRESULT WINAPI putDocumentLocator(ISAXLocator*) override { return S_OK; }
  HRESULT WINAPI startDocument() override;
  HRESULT WINAPI endDocument() override { return S_OK; }
  HRESULT WINAPI startPrefixMapping(const wchar_t*, int, const wchar_t*, int) override { return S_OK; }
  HRESULT WINAPI endPrefixMapping(const wchar_t*, int) override { return S_OK; }
  HRESULT WINAPI startElement(const wchar_t* uri, int uriSize, const wchar_t* localName, int localSize,
                              const wchar_t* qualifiedName, int qualifiedSize,
                              ISAXAttributes* attributes) override;
  HRESULT WINAPI endElement(const wchar_t* uri, int uriSize, const wchar_t* localName, int localSize,
                            const wchar_t* qualifiedName, int qualifiedSize) override;
  HRESULT WINAPI characters(const wchar_t* text, int size) override;
  HRESULT WINAPI ignorableWhitespace(const wchar_t* text, int size) override {
    return characters(text, size);
  }
  HRESULT WINAPI processingInstruction(const wchar_t*, int, const wchar_t*, int) override { return S_OK; }
  HRESULT WINAPI skippedEntity(const wchar_t* name, int size) override;

  HRESULT WINAPI error(ISAXLocator*, const wchar_t*, HRESULT) override { return S_OK; }
  HRESULT WINAPI fatalError(ISAXLocator* locator, const wchar_t* message, HRESULT code) override;
  HRESULT WINAPI ignorableWarning(ISAXLocator*, const wchar_t*, HRESULT) override { return S_OK; }

 private:
  template <class Body>
  HRESULT guarded(const Body& body) noexcept;
  void refuse(StringView sentence);

  XmlHandler& handler_;
  XmlLimits limits_;
  std::vector<int> order_;  // of a tag's attributes
  std::exception_ptr raised_;
  bool isRefused_ = false;  // there is a fault
  HRESULT code_ = E_FAIL;
  String message_;
  int line_ = 0;
  int column_ = 0;
};

#pragma GCC diagnostic pop

}  // namespace zelUtilities
