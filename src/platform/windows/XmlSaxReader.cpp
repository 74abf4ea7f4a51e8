// Reading XML by the system's SAX reader.
#include <windows.h>

#include <msxml2.h>
#include <objbase.h>
#include <objidl.h>
#include <oleauto.h>

#include <algorithm>
#include <cstring>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "automation/Error.h"
#include "platform/Xml.h"
#include "platform/XmlLimits.h"
#include "platform/XmlStream.h"
#include "platform/windows/ComErrors.h"
#include "platform/windows/ForeignObject.h"
#include "platform/windows/WideText.h"
#include "platform/windows/XmlScreening.h"

// The system's interfaces have no virtual destructor; nobody deletes through them.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

namespace zelUtilities {

namespace {

// What hears the reader on behalf of an XmlHandler.
// Lives as long as one parse, whoever holds references.
class XmlSaxHandler final : public ISAXContentHandler, public ISAXErrorHandler {
 public:
  explicit XmlSaxHandler(XmlHandler& handler) : handler_(handler) {}
  XmlSaxHandler(const XmlSaxHandler&) = delete;
  XmlSaxHandler& operator=(const XmlSaxHandler&) = delete;

  XmlLimits& limits() { return limits_; }
  // There is a fault in the document; the reader is to stop.
  void refuse(StringView sentence);
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

// No library that is linked has these.
constexpr CLSID saxReaderClass = {
    0x3124C396, 0xFB13, 0x4836, {0xA6, 0xAD, 0x13, 0x17, 0xF1, 0x71, 0x36, 0x88}};
constexpr IID saxReaderId = {0xA4F96ED0, 0xF829, 0x476E, {0x81, 0xC0, 0xCD, 0xC7, 0xBD, 0x2A, 0x08, 0x02}};

constexpr IID contentHandlerId = {
    0x1545CDFA, 0x9E4E, 0x4497, {0xA8, 0xA4, 0x2B, 0xF7, 0xD0, 0x11, 0x2C, 0x44}};
constexpr IID errorHandlerId = {0xA60511C4, 0xCCF5, 0x479E, {0x98, 0xA3, 0xDC, 0x8D, 0xC5, 0x45, 0xB7, 0xD0}};

StringView view(const wchar_t* text, int size) {
  return size > 0 ? StringView(reinterpret_cast<const char16_t*>(text), static_cast<std::size_t>(size))
                  : StringView();
}

bool isDeclaration(StringView qualifiedName) {
  return qualifiedName == u"xmlns" || qualifiedName.starts_with(u"xmlns:");
}

StringView qualifiedNameOf(ISAXAttributes& attributes, int index) {
  const wchar_t* name = nullptr;
  int size = 0;
  requireSuccess(attributes.getQName(index, &name, &size));
  return view(name, size);
}

// A tag's attributes with its declarations of name spaces behind the others, wherever the reader has them.
class Attributes final : public XmlAttributes {
 public:
  Attributes(ISAXAttributes& attributes, std::vector<int>& order, XmlLimits& limits)
      : attributes_(attributes), order_(order), limits_(limits) {
    order_.clear();
    int count = 0;
    requireSuccess(attributes_.getLength(&count));
    for (const bool declarations : {false, true}) {
      for (int i = 0; i < count; ++i)
        if (isDeclaration(qualifiedNameOf(attributes_, i)) == declarations) order_.push_back(i);
    }
  }

  std::size_t count() const override { return order_.size(); }
  Attribute at(std::size_t index) override {
    const wchar_t* uri = nullptr;
    const wchar_t* localName = nullptr;
    const wchar_t* qualifiedName = nullptr;
    const wchar_t* value = nullptr;
    int uriSize = 0;
    int localSize = 0;
    int qualifiedSize = 0;
    int valueSize = 0;
    requireSuccess(attributes_.getName(order_[index], &uri, &uriSize, &localName, &localSize, &qualifiedName,
                                       &qualifiedSize));
    requireSuccess(attributes_.getValue(order_[index], &value, &valueSize));
    limits_.gave(static_cast<std::size_t>(valueSize));
    if (limits_.exceeded()) valueSize = 0;
    const StringView qualified = view(qualifiedName, qualifiedSize);
    if (isDeclaration(qualified)) return {{{}, {}, qualified}, view(value, valueSize)};
    return {{view(uri, uriSize), view(localName, localSize), qualified}, view(value, valueSize)};
  }

 private:
  ISAXAttributes& attributes_;
  std::vector<int>& order_;
  XmlLimits& limits_;
};

HRESULT XmlSaxHandler::keepRaised() noexcept {
  if (!raised_) raised_ = std::current_exception();
  return E_FAIL;
}

// Nothing is thrown into the reader, which stops at a failure.
template <class Body>
HRESULT XmlSaxHandler::guarded(const Body& body) noexcept {
  if (raised_ || isRefused_) return E_FAIL;
  try {
    body();
    if (limits_.exceeded()) refuse(limits_.sentence());
  } catch (...) {
    return keepRaised();
  }
  return isRefused_ ? E_FAIL : S_OK;
}

void XmlSaxHandler::refuse(StringView sentence) {
  isRefused_ = true;
  message_ = sentence;
}

void XmlSaxHandler::finish(HRESULT result) {
  if (raised_) std::rethrow_exception(raised_);
  if (!isRefused_ && result >= 0) return;
  // Of some documents the reader does not say what is wrong, of an empty one for instance.
  if (message_.empty()) message_ = u"The document cannot be read.";
  handler_.fatalError(line_, column_, message_);
  throw Error(isRefused_ ? code_ : result, {}, message_);
}

HRESULT XmlSaxHandler::QueryInterface(REFIID id, void** out) {
  *out = nullptr;
  if (id == IID_IUnknown || id == contentHandlerId) *out = static_cast<ISAXContentHandler*>(this);
  if (id == errorHandlerId) *out = static_cast<ISAXErrorHandler*>(this);
  return *out ? S_OK : E_NOINTERFACE;
}

HRESULT XmlSaxHandler::startDocument() {
  return guarded([&] { handler_.startDocument(); });
}

HRESULT XmlSaxHandler::startElement(const wchar_t* uri, int uriSize, const wchar_t* localName, int localSize,
                                    const wchar_t* qualifiedName, int qualifiedSize,
                                    ISAXAttributes* attributes) {
  return guarded([&] {
    limits_.entered();
    if (limits_.exceeded()) return;
    Attributes given(*attributes, order_, limits_);
    handler_.startElement(
        {view(uri, uriSize), view(localName, localSize), view(qualifiedName, qualifiedSize)}, given);
  });
}

HRESULT XmlSaxHandler::endElement(const wchar_t* uri, int uriSize, const wchar_t* localName, int localSize,
                                  const wchar_t* qualifiedName, int qualifiedSize) {
  return guarded([&] {
    limits_.left();
    handler_.endElement({view(uri, uriSize), view(localName, localSize), view(qualifiedName, qualifiedSize)});
  });
}

HRESULT XmlSaxHandler::characters(const wchar_t* text, int size) {
  return guarded([&] {
    limits_.gave(static_cast<std::size_t>(size));
    if (handler_.wantsCharacters()) handler_.characters(view(text, size));
  });
}

// An external entity may be declared, but not used. A document type of another file is left out.
HRESULT XmlSaxHandler::skippedEntity(const wchar_t* name, int size) {
  return guarded([&] {
    if (view(name, size) != u"[dtd]") refuse(u"External entities are not read.");
  });
}

HRESULT XmlSaxHandler::fatalError(ISAXLocator* locator, const wchar_t* message, HRESULT code) {
  if (locator && line_ == 0) {
    locator->getLineNumber(&line_);
    locator->getColumnNumber(&column_);
  }
  return guarded([&] {
    String sentence = fromWide(message);
    sentence.erase(sentence.find_last_not_of(u"\r\n") + 1);
    refuse(sentence);
    code_ = code;
  });
}

// A document on its way to the reader, as a stream of the system's.

// Can be read, once, and nothing else. Lives as long as one parse, whoever holds references.
class XmlSaxStream final : public IStream {
 public:
  // Failures of the source are kept by the handler.
  XmlSaxStream(StringView text, XmlSaxHandler& handler);
  XmlSaxStream(XmlStream source, XmlSaxHandler& handler);
  XmlSaxStream(ISequentialStream& source, XmlSaxHandler& handler);
  XmlSaxStream(const XmlSaxStream&) = delete;
  XmlSaxStream& operator=(const XmlSaxStream&) = delete;

  HRESULT WINAPI QueryInterface(REFIID id, void** out) override;
  ULONG WINAPI AddRef() override { return 2; }
  ULONG WINAPI Release() override { return 1; }

  HRESULT WINAPI Read(void* buffer, ULONG size, ULONG* read) override;
  HRESULT WINAPI Write(const void*, ULONG, ULONG*) override { return E_NOTIMPL; }
  HRESULT WINAPI Seek(LARGE_INTEGER, DWORD, ULARGE_INTEGER*) override { return E_NOTIMPL; }
  HRESULT WINAPI SetSize(ULARGE_INTEGER) override { return E_NOTIMPL; }
  HRESULT WINAPI CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI Commit(DWORD) override { return E_NOTIMPL; }
  HRESULT WINAPI Revert() override { return E_NOTIMPL; }
  HRESULT WINAPI LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
  HRESULT WINAPI UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
  HRESULT WINAPI Stat(STATSTG*, DWORD) override { return E_NOTIMPL; }
  HRESULT WINAPI Clone(IStream**) override { return E_NOTIMPL; }

 private:
  std::function<std::string()> next_;  // the next bytes; none at the end
  XmlSaxHandler& handler_;
  std::string piece_;
  std::size_t done_ = 0;  // of the piece
  bool isAtEnd_ = false;
};

constexpr std::int32_t pieceSize = 65536;  // bytes or units

// Blanks out what the declaration at a document's head says of an encoding, which is not that of a text.
void blankEncoding(String& document) {
  const StringView declaration = StringView(document).substr(0, document.find(u"?>"));
  const std::size_t start = declaration.find(u"encoding");
  const std::size_t quote = declaration.find_first_of(u"\"'", start);
  if (start == StringView::npos || quote == StringView::npos) return;
  const std::size_t end = declaration.find(declaration[quote], quote + 1);
  if (end == StringView::npos) return;
  std::fill(document.begin() + static_cast<std::ptrdiff_t>(start),
            document.begin() + static_cast<std::ptrdiff_t>(end) + 1, u' ');
}

bool mayHoldMoreOfDeclaration(StringView start) {
  constexpr StringView declaration = u"<?xml ";
  constexpr std::size_t longest = 1024;  // units; nobody writes a longer one
  if (start.size() < declaration.size()) return declaration.starts_with(start);
  return start.starts_with(declaration) && start.find(u"?>") == StringView::npos && start.size() < longest;
}

std::string bytesOf(StringView text) {
  return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)};
}

// The start of a text as the reader takes it for UTF-16.
std::string marked(String start) {
  if (!start.starts_with(u'\uFEFF')) start.insert(0, 1, u'\uFEFF');
  if (StringView(start).substr(1).starts_with(u"<?xml")) blankEncoding(start);
  return bytesOf(start);
}

// The bytes of an object that gives bytes, or texts as UTF-16 with a mark.
class Pieces {
 public:
  explicit Pieces(XmlStream source) : source_(std::move(source)) {}

  std::string next() {
    if (!source_.next(pieceSize)) return {};
    if (isFirst_) {
      isFirst_ = false;
      isText_ = source_.isText();
      if (isText_) return firstText();
    }
    if (source_.isText() != isText_) throw Error(ErrorNumber::TypeMismatch);
    if (isText_) return bytesOf(source_.text());
    const auto bytes = source_.bytes();
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
  }

 private:
  std::string firstText() {
    String start(source_.text());
    while (mayHoldMoreOfDeclaration(start) && source_.next(pieceSize)) {
      if (!source_.isText()) throw Error(ErrorNumber::TypeMismatch);
      start.append(source_.text());
    }
    return marked(std::move(start));
  }

  XmlStream source_;
  bool isFirst_ = true;
  bool isText_ = false;
};

std::string readSome(ISequentialStream& source) {
  std::string bytes(pieceSize, '\0');
  ULONG size = 0;
  requireSuccess(source.Read(bytes.data(), pieceSize, &size));
  bytes.resize(size);
  return bytes;
}

XmlSaxStream::XmlSaxStream(StringView text, XmlSaxHandler& handler)
    : next_([text, isFirst = true]() mutable {
        const StringView piece = text.substr(0, pieceSize);
        text.remove_prefix(piece.size());
        return std::exchange(isFirst, false) ? marked(String(piece)) : bytesOf(piece);
      }),
      handler_(handler) {}

XmlSaxStream::XmlSaxStream(XmlStream source, XmlSaxHandler& handler)
    : next_([pieces = Pieces(std::move(source))]() mutable { return pieces.next(); }), handler_(handler) {}

XmlSaxStream::XmlSaxStream(ISequentialStream& source, XmlSaxHandler& handler)
    : next_([&source] { return readSome(source); }), handler_(handler) {}

HRESULT XmlSaxStream::QueryInterface(REFIID id, void** out) {
  const bool isOurs = id == IID_IUnknown || id == IID_ISequentialStream || id == IID_IStream;
  *out = isOurs ? this : nullptr;
  return isOurs ? S_OK : E_NOINTERFACE;
}

HRESULT XmlSaxStream::Read(void* buffer, ULONG size, ULONG* read) {
  ULONG given = 0;
  try {
    while (given < size && !isAtEnd_) {
      if (done_ == piece_.size()) {
        piece_ = next_();
        done_ = 0;
        isAtEnd_ = piece_.empty();
        handler_.limits().took(piece_.size());
      }
      const auto count = static_cast<ULONG>(std::min<std::size_t>(size - given, piece_.size() - done_));
      std::memcpy(static_cast<char*>(buffer) + given, piece_.data() + done_, count);
      done_ += count;
      given += count;
    }
  } catch (...) {
    return handler_.keepRaised();
  }
  if (read) *read = given;
  return given < size ? S_FALSE : S_OK;
}

// The reader.

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

// The object as a stream of the system's, where it is one.
void askForStream(Object& object, Held<ISequentialStream>& stream) {
  IUnknown* asked = nullptr;
  if (const ForeignObject* foreign = foreignObject(&object)) asked = foreign->dispatch();
  if (const ForeignStream* bare = foreignStream(&object)) asked = bare->stream();
  if (asked) asked->QueryInterface(IID_ISequentialStream, stream.receive());
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
    if (const String refusal = refusalOfXml(text); !refusal.empty()) {
      listener.refuse(refusal);
      return E_FAIL;
    }
    // As a whole it would take some readers a look back over the line for each element.
    XmlSaxStream stream(text, listener);
    return readStream(reader, stream);
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
    return readStream(reader, *stream);
  }

  static HRESULT readStream(ISAXXMLReader& reader, XmlSaxStream& stream) {
    VARIANT passed;  // owns nothing
    VariantInit(&passed);
    passed.vt = VT_UNKNOWN;
    passed.punkVal = &stream;
    return reader.parse(passed);
  }
};

}  // namespace

Xml& Xml::system() {
  static auto& service = *new WindowsXml;
  return service;
}

}  // namespace zelUtilities
