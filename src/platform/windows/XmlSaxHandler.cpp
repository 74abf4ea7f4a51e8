#include "platform/windows/XmlSaxHandler.h"

#include "automation/Error.h"
#include "platform/windows/ComErrors.h"
#include "platform/windows/WideText.h"

namespace zelUtilities {

// No library that is linked has these.
const CLSID saxReaderClass = {0x3124C396, 0xFB13, 0x4836, {0xA6, 0xAD, 0x13, 0x17, 0xF1, 0x71, 0x36, 0x88}};
const IID saxReaderId = {0xA4F96ED0, 0xF829, 0x476E, {0x81, 0xC0, 0xCD, 0xC7, 0xBD, 0x2A, 0x08, 0x02}};

namespace {

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

}  // namespace

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

}  // namespace zelUtilities
