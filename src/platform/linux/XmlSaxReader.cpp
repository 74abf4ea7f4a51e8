// Reading XML by libxml2's push parser.
#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <exception>
#include <memory>
#include <new>

#include "automation/Error.h"
#include "platform/Xml.h"
#include "platform/XmlLimits.h"
#include "platform/XmlStream.h"
#include "platform/linux/XmlDocumentTree.h"
#include "platform/linux/XmlErrors.h"
#include "platform/linux/XmlSaxNames.h"
#include "platform/linux/XmlSaxText.h"

namespace zelUtilities {

namespace {

// Without XML_PARSE_HUGE: a tag, a comment and the like may be ten million bytes long.
constexpr int parserOptions = XML_PARSE_NOENT | XML_PARSE_NONET;
constexpr std::size_t pieceOfText = 16384;     // units
constexpr std::int32_t pieceOfStream = 65536;  // bytes or units

struct Fault {
  std::int32_t number = 0;  // 0: none
  String message;
  std::int32_t line = 0;
  std::int32_t column = 0;
};

// One parse. Entities are parsed in contexts of their own, which share it.
class Reading {
 public:
  explicit Reading(XmlHandler& to);
  ~Reading();
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;

  void read(StringView text);
  void read(XmlStream& stream);

  static Reading& of(void* data) {
    return *static_cast<Reading*>(static_cast<xmlParserCtxt*>(data)->_private);
  }

  // Keeps what the handler throws, and what goes too far, and stops the parser for it.
  template <class Body>
  void guarded(void* data, const Body& body) noexcept {
    if (isStopped()) return stop(data);  // one context has stopped, but those around it have not
    try {
      body();
    } catch (...) {
      raised_ = std::current_exception();
      stop(data);
    }
    if (limits_.exceeded()) refuse(data, XmlErrorNumber::Failed, limits_.sentence());
  }
  void refuse(void* data, std::int32_t number, StringView sentence) noexcept;
  // Has the parser tell of texts, or not, after a call that may have changed what the handler wants.
  void hearTexts();
  // From here on entities may repeat what is given.
  void count() {
    isCounting_ = true;
    hearTexts();
  }
  bool isCounting() const { return isCounting_; }
  // The first fault counts; those after it are mostly its consequences.
  void keep(std::int32_t number, String message);
  void ended() { isEnded_ = true; }

  XmlHandler& handler;
  XmlSaxNames names;
  XmlSaxDecoder decoder;

  XmlLimits& limits() { return limits_; }
  bool isStopped() const { return raised_ || fault_.number != 0; }

 private:
  bool feed(std::string_view utf8OrBytes);
  void finish();
  void stop(void* data) noexcept;

  xmlParserCtxt* context_;
  XmlLimits limits_;
  Fault fault_;
  bool isEnded_ = false;     // the parser has seen the document to its end
  bool isCounting_ = false;  // all that is given
  std::exception_ptr raised_;
};

xmlParserCtxt& contextOf(void* data) { return *static_cast<xmlParserCtxt*>(data); }

std::string_view view(const xmlChar* text, std::ptrdiff_t size) {
  return {reinterpret_cast<const char*>(text), static_cast<std::size_t>(size)};
}

// What the parser says of a start tag.
class Attributes final : public XmlAttributes {
 public:
  Attributes(Reading& reading, const xmlChar** spaces, int spaceCount, const xmlChar** attributes,
             int attributeCount)
      : reading_(reading),
        spaces_(spaces),
        attributes_(attributes),
        attributeCount_(static_cast<std::size_t>(attributeCount)),
        count_(attributeCount_ + static_cast<std::size_t>(spaceCount)) {}

  std::size_t count() const override { return count_; }
  Attribute at(std::size_t index) override {
    if (index < attributeCount_) {
      const xmlChar** found = attributes_ + 5 * index;  // name, prefix, address, start and end of the value
      return {reading_.names.name(found[0], found[1], found[2]),
              reading_.decoder.decode(view(found[3], found[4] - found[3]))};
    }
    const xmlChar** space = spaces_ + 2 * (index - attributeCount_);  // prefix and address
    return {reading_.names.declaration(space[0]), reading_.decoder.decode(viewOf(space[1]))};
  }

 private:
  Reading& reading_;
  const xmlChar** spaces_;
  const xmlChar** attributes_;
  std::size_t attributeCount_;
  std::size_t count_;
};

void onStartTag(void* data, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri, int spaceCount,
                const xmlChar** spaces, int attributeCount, int, const xmlChar** attributes) {
  Reading& reading = Reading::of(data);
  reading.guarded(data, [&] {
    reading.limits().entered();
    if (reading.limits().exceeded()) return;
    for (int i = 0; reading.isCounting() && i < attributeCount; ++i)
      reading.limits().gave(static_cast<std::size_t>(attributes[5 * i + 4] - attributes[5 * i + 3]));
    reading.names.prune();
    Attributes given(reading, spaces, spaceCount, attributes, attributeCount);
    reading.handler.startElement(reading.names.name(name, prefix, uri), given);
    reading.hearTexts();
  });
}

void onEndTag(void* data, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri) {
  Reading& reading = Reading::of(data);
  reading.guarded(data, [&] {
    reading.limits().left();
    reading.handler.endElement(reading.names.name(name, prefix, uri));
    reading.hearTexts();
  });
}

void onCharacters(void* data, const xmlChar* text, int size) {
  Reading& reading = Reading::of(data);
  reading.guarded(data, [&] {
    reading.limits().gave(static_cast<std::size_t>(size));
    if (reading.handler.wantsCharacters())
      reading.handler.characters(reading.decoder.decode(view(text, size)));
  });
}

void onDocumentType(void* data, const xmlChar* name, const xmlChar* publicId, const xmlChar* systemId) {
  xmlSAX2InternalSubset(data, name, publicId, systemId);
  Reading::of(data).count();
}

void onStart(void* data) {
  xmlSAX2StartDocument(data);  // entities are kept with the document
  Reading& reading = Reading::of(data);
  reading.guarded(data, [&] {
    reading.handler.startDocument();
    reading.hearTexts();
  });
}

void onEnd(void* data) { Reading::of(data).ended(); }

// Of a document that breaks off the parser says what it says of one that goes on behind its end.
bool breaksOff(void* data, const xmlError& error) {
  return error.code == XML_ERR_DOCUMENT_END && contextOf(data).instate != XML_PARSER_EPILOG;
}

void onError(void* data, xmlError* error) noexcept {
  // Any text may be a name space's address.
  if (error->level < XML_ERR_ERROR || error->code == XML_WAR_NS_URI) return;
  Reading& reading = Reading::of(data);
  reading.guarded(data, [&] {
    if (error->code == XML_ERR_NO_MEMORY) throw std::bad_alloc();
    if (breaksOff(data, *error)) {
      const auto number = contextOf(data).nameNr > 0 ? XML_ERR_TAG_NOT_FINISHED : XML_ERR_DOCUMENT_EMPTY;
      return reading.refuse(data, xmlErrorNumber(number), u"The document ends too early.");
    }
    reading.refuse(data, xmlErrorNumber(error->code), xmlErrorSentence(error->message));
  });
}

// What a use of an entity costs beside what it stands for, in units of that: the parser makes a context for
// each, and entities of nothing but entities give nothing to count.
constexpr std::size_t costOfEntity = 50;

// An external entity may be declared, but not used.
xmlEntity* usable(void* data, xmlEntity* entity) {
  Reading& reading = Reading::of(data);
  reading.guarded(data, [&] { reading.limits().gave(costOfEntity); });
  if (reading.isStopped()) return nullptr;
  const bool isExternal = entity && (entity->etype == XML_EXTERNAL_GENERAL_PARSED_ENTITY ||
                                     entity->etype == XML_EXTERNAL_PARAMETER_ENTITY);
  if (!isExternal) return entity;
  reading.refuse(data, XmlErrorNumber::Failed, u"External entities are not read.");
  return nullptr;
}
xmlEntity* entityNamed(void* data, const xmlChar* name) { return usable(data, xmlSAX2GetEntity(data, name)); }
xmlEntity* parameterEntityNamed(void* data, const xmlChar* name) {
  return usable(data, xmlSAX2GetParameterEntity(data, name));
}

xmlSAXHandler handlers() {
  xmlSAXHandler handler{};
  handler.initialized = XML_SAX2_MAGIC;
  handler.serror = onError;
  handler.startDocument = onStart;
  handler.endDocument = onEnd;
  handler.internalSubset = onDocumentType;
  handler.isStandalone = xmlSAX2IsStandalone;
  handler.hasInternalSubset = xmlSAX2HasInternalSubset;
  handler.hasExternalSubset = xmlSAX2HasExternalSubset;
  handler.entityDecl = xmlSAX2EntityDecl;
  handler.unparsedEntityDecl = xmlSAX2UnparsedEntityDecl;
  handler.getEntity = entityNamed;
  handler.getParameterEntity = parameterEntityNamed;
  handler.startElementNs = onStartTag;
  handler.endElementNs = onEndTag;
  return handler;
}

// The parser's complaints beside its handlers would go to the standard error stream.
class Silence {
 public:
  Silence()
      : structured_(xmlStructuredError),
        structuredContext_(xmlStructuredErrorContext),
        generic_(xmlGenericError),
        genericContext_(xmlGenericErrorContext) {
    xmlSetStructuredErrorFunc(nullptr, ignoreError);
    xmlSetGenericErrorFunc(nullptr, ignoreMessage);
  }
  ~Silence() {
    xmlSetStructuredErrorFunc(structuredContext_, structured_);
    xmlSetGenericErrorFunc(genericContext_, generic_);
  }
  Silence(const Silence&) = delete;
  Silence& operator=(const Silence&) = delete;

 private:
  static void ignoreError(void*, xmlError*) {}
  static void ignoreMessage(void*, const char*, ...) {}

  xmlStructuredErrorFunc structured_;
  void* structuredContext_;
  xmlGenericErrorFunc generic_;
  void* genericContext_;
};

Reading::Reading(XmlHandler& to) : handler(to) {
  xmlSAXHandler handler = handlers();
  context_ = xmlCreatePushParserCtxt(&handler, nullptr, nullptr, 0, nullptr);
  if (!context_) throw std::bad_alloc();
  context_->_private = this;
  hearTexts();
}

Reading::~Reading() {
  xmlFreeDoc(context_->myDoc);
  xmlFreeParserCtxt(context_);
}

void Reading::hearTexts() {
  xmlSAXHandler& told = *context_->sax;
  told.characters = isCounting_ || handler.wantsCharacters() ? onCharacters : nullptr;
  told.cdataBlock = told.characters;
  told.ignorableWhitespace = told.characters;  // the same, so that the parser does not guess which it is
}

void Reading::read(StringView text) {
  xmlCtxtUseOptions(context_, parserOptions | XML_PARSE_IGNORE_ENC);
  XmlSaxEncoder encoder;
  while (!text.empty() && feed(encoder.encode(text.substr(0, pieceOfText))))
    text.remove_prefix(std::min(pieceOfText, text.size()));
  feed(encoder.finish());
  finish();
}

void Reading::read(XmlStream& stream) {
  bool more = stream.next(pieceOfStream);
  const bool isText = more && stream.isText();
  xmlCtxtUseOptions(context_, parserOptions | (isText ? XML_PARSE_IGNORE_ENC : 0));
  XmlSaxEncoder encoder;
  for (; more; more = stream.next(pieceOfStream)) {
    if (stream.isText() != isText) throw Error(ErrorNumber::TypeMismatch);
    if (isText) {
      more = feed(encoder.encode(stream.text()));
    } else {
      const auto bytes = stream.bytes();
      more = feed(view(bytes.data(), static_cast<std::ptrdiff_t>(bytes.size())));
    }
    if (!more) break;
  }
  feed(encoder.finish());
  finish();
}

// False once nothing more is wanted.
bool Reading::feed(std::string_view utf8OrBytes) {
  // The parser counts in int, and is not at its best with large pieces.
  constexpr std::size_t most = 65536;
  for (; !utf8OrBytes.empty() && !isStopped();
       utf8OrBytes.remove_prefix(std::min(most, utf8OrBytes.size()))) {
    const std::string_view piece = utf8OrBytes.substr(0, most);
    limits_.took(piece.size());
    xmlParseChunk(context_, piece.data(), static_cast<int>(piece.size()), 0);
  }
  return !isStopped();
}

void Reading::finish() {
  if (!isStopped()) xmlParseChunk(context_, nullptr, 0, 1);
  // Of bytes that it cannot convert the parser says nothing; it leaves out what follows.
  if (!isStopped() && !isEnded_)
    keep(XmlErrorNumber::Failed, u"The document holds bytes that its encoding does not know.");
  if (raised_) std::rethrow_exception(raised_);
  if (fault_.number == 0) return;
  handler.fatalError(fault_.line, fault_.column, fault_.message);
  throw Error(fault_.number, {}, fault_.message);
}

void Reading::keep(std::int32_t number, String message) {
  if (isStopped()) return;
  const xmlParserInput* input = context_->input;
  fault_ = {number, std::move(message), input ? input->line : 0, input ? input->col : 0};
}

void Reading::refuse(void* data, std::int32_t number, StringView sentence) noexcept {
  try {
    keep(number, String(sentence));
  } catch (...) {
    raised_ = std::current_exception();
  }
  stop(data);
}

void Reading::stop(void* data) noexcept {
  xmlStopParser(&contextOf(data));
  xmlStopParser(context_);
}

class LinuxXml : public Xml {
 public:
  void parse(const Variant& source, XmlHandler& handler) override {
    const Silence silence;
    Reading reading(handler);
    if (source.isString()) return reading.read(source.text());
    if (!source.isObject()) throw Error(ErrorNumber::TypeMismatch);
    if (!source.object()) throw Error(ErrorNumber::ObjectNotSet);
    XmlStream stream{Ref<Object>(source.object())};
    reading.read(stream);
  }
};

}  // namespace

Xml& Xml::system() {
  static auto& service = *new LinuxXml;
  return service;
}

}  // namespace zelUtilities
