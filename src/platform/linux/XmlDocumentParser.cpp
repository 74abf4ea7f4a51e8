#include "platform/linux/XmlDocumentParser.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <limits>
#include <new>
#include <unordered_map>
#include <vector>

#include "automation/Error.h"
#include "platform/XmlLimits.h"
#include "platform/linux/XmlDocumentText.h"
#include "platform/linux/XmlErrors.h"
#include "platform/linux/XmlSaxText.h"

namespace zelUtilities {

namespace {

constexpr int options = XML_PARSE_NOENT | XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_IGNORE_ENC;

// What one parse knows beyond its context. Entities are parsed in contexts of their own, which share it.
struct Progress {
  xmlParserCtxt* outermost;
  XmlFault fault = {};
  bool outOfMemory = false;
  XmlLimits limits = {};
  std::unordered_map<const xmlEntity*, std::size_t> entitySizes = {};
};

xmlParserCtxt& contextOf(void* data) { return *static_cast<xmlParserCtxt*>(data); }
Progress& progressOf(void* data) { return *static_cast<Progress*>(contextOf(data)._private); }

void place(XmlFault& fault, const xmlParserInput* input) {
  if (!input) return;
  fault.line = input->line;
  fault.linePosition = input->col;
}

// The first fault counts; those after it are mostly its consequences.
void keep(Progress& progress, std::int32_t code, StringView sentence) noexcept {
  if (progress.fault.code != 0) return;
  try {
    progress.fault = XmlFault::of(code, String(sentence));
    place(progress.fault, progress.outermost->input);
  } catch (...) {
    progress.outOfMemory = true;
  }
}

void onError(void* data, xmlError* error) noexcept {
  // Any text may be a name space's address.
  if (error->level < XML_ERR_ERROR || error->code == XML_WAR_NS_URI) return;
  Progress& progress = progressOf(data);
  // A value that is longer than the parser takes ends as one there is no memory for.
  if (error->code == XML_ERR_NO_MEMORY && progress.fault.code == 0) progress.outOfMemory = true;
  keep(progress, xmlErrorNumber(error->code), xmlErrorSentence(error->message));
}

void refuse(void* data, std::int32_t code, StringView sentence) noexcept {
  keep(progressOf(data), code, sentence);
  xmlStopParser(&contextOf(data));
  xmlStopParser(progressOf(data).outermost);
}

void refuseExcess(void* data) noexcept {
  const XmlLimits& limits = progressOf(data).limits;
  if (limits.exceeded()) refuse(data, XmlErrorNumber::Failed, limits.sentence());
}

// A document type can make much of little, so it has to do with the parser's own limits.
void onDocumentType(void* data, const xmlChar* name, const xmlChar* externalId, const xmlChar* systemId) {
  contextOf(data).options &= ~XML_PARSE_HUGE;
  xmlDictSetLimit(contextOf(data).dict, XML_MAX_DICTIONARY_LIMIT);
  xmlSAX2InternalSubset(data, name, externalId, systemId);
}

// An external entity may be declared, but not used.
xmlEntity* refusedIfExternal(void* data, xmlEntity* entity) {
  const bool isExternal = entity && (entity->etype == XML_EXTERNAL_GENERAL_PARSED_ENTITY ||
                                     entity->etype == XML_EXTERNAL_PARAMETER_ENTITY);
  if (!isExternal) return entity;
  refuse(data, XmlErrorNumber::Failed, u"External entities are not read.");
  return nullptr;
}

// What an entity gives. Once the parser has made nodes of it in the text, it copies these without a word.
std::size_t sizeOf(Progress& progress, const xmlEntity& entity) {
  if (!entity.children) return static_cast<std::size_t>(entity.length);
  std::size_t& size = progress.entitySizes[&entity];
  if (size > 0) return size;
  for (xmlNode* top = entity.children; top; top = top == entity.last ? nullptr : top->next)
    for (xmlNode* node = top; node; node = nextBelow(top, node))
      size += 1 + (node->type == XML_ELEMENT_NODE ? 0 : viewOf(node->content).size());
  return size;
}

xmlEntity* entityNamed(void* data, const xmlChar* name) {
  xmlEntity* entity = refusedIfExternal(data, xmlSAX2GetEntity(data, name));
  if (!entity) return nullptr;
  Progress& progress = progressOf(data);
  progress.limits.gave(sizeOf(progress, *entity));
  refuseExcess(data);
  return progress.limits.exceeded() ? nullptr : entity;
}
xmlEntity* parameterEntityNamed(void* data, const xmlChar* name) {
  return refusedIfExternal(data, xmlSAX2GetParameterEntity(data, name));
}

// Comes for entities only that are not declared: all others are replaced by what they stand for.
void onUnknownEntity(void* data, const xmlChar*) {
  refuse(data, xmlErrorNumber(XML_ERR_UNDECLARED_ENTITY), u"Reference to an undefined entity.");
}

void onStart(void* data) {
  xmlSAX2StartDocument(data);
  xmlDoc* document = contextOf(data).myDoc;
  if (!document || document->dict) return;
  document->dict = contextOf(data).dict;  // names are shared
  xmlDictReference(document->dict);
}

const xmlChar* nameAsWritten(const xmlParserCtxt& context, const xmlChar* name, const xmlChar* prefix) {
  return prefix ? xmlDictQLookup(context.dict, prefix, name) : name;
}

// Appends the attributes of one element, in constant time each.
class AttributeWriter {
 public:
  AttributeWriter(xmlDoc* document, xmlNode* element) : document_(document), element_(element) {}

  bool add(const xmlChar* name, const xmlChar* value, std::size_t length) {
    xmlAttr* attribute = xmlNewDocProp(document_, name, nullptr);
    if (!attribute) return false;
    attribute->parent = element_;
    attribute->prev = last_;
    (last_ ? last_->next : element_->properties) = attribute;
    last_ = attribute;
    if (length == 0) return true;
    xmlNode* text = xmlNewDocTextLen(document_, value, static_cast<int>(length));
    if (!text) return false;
    text->parent = reinterpret_cast<xmlNode*>(attribute);
    attribute->children = attribute->last = text;
    return true;
  }

 private:
  xmlDoc* document_;
  xmlNode* element_;
  xmlAttr* last_ = nullptr;
};

// What the parser says of a start tag.
struct StartTag {
  const xmlChar** spaces;  // prefix and address
  int spaceCount;
  const xmlChar** attributes;  // name, prefix, address, start and end of the value
  int attributeCount;
};

bool addAttributes(xmlParserCtxt& context, xmlNode* element, const StartTag& tag) {
  AttributeWriter writer(context.myDoc, element);
  for (const xmlChar** space = tag.spaces; space < tag.spaces + 2 * tag.spaceCount; space += 2) {
    const xmlChar* name =
        space[0] ? xmlDictQLookup(context.dict, BAD_CAST "xmlns", space[0]) : BAD_CAST "xmlns";
    if (!writer.add(name, space[1], viewOf(space[1]).size())) return false;
  }
  for (const xmlChar** attribute = tag.attributes; attribute < tag.attributes + 5 * tag.attributeCount;
       attribute += 5) {
    const auto length = static_cast<std::size_t>(attribute[4] - attribute[3]);
    progressOf(&context).limits.gave(length);
    if (!writer.add(nameAsWritten(context, attribute[0], attribute[1]), attribute[3], length)) return false;
  }
  return true;
}

void onStartTag(void* data, const xmlChar* name, const xmlChar* prefix, const xmlChar*, int spaceCount,
                const xmlChar** spaces, int attributeCount, int, const xmlChar** attributes) {
  xmlParserCtxt& context = contextOf(data);
  Progress& progress = progressOf(data);
  progress.limits.entered();
  if (progress.limits.exceeded()) return refuseExcess(data);
  xmlNode* element = xmlNewDocNodeEatName(
      context.myDoc, nullptr, const_cast<xmlChar*>(nameAsWritten(context, name, prefix)), nullptr);
  progress.outOfMemory = progress.outOfMemory || !element;
  if (!element) return xmlStopParser(&context);
  xmlAddChild(context.node ? context.node : reinterpret_cast<xmlNode*>(context.myDoc), element);
  context.nodemem = -1;  // the next text is a new node
  nodePush(&context, element);
  if (!addAttributes(context, element, {spaces, spaceCount, attributes, attributeCount}))
    progress.outOfMemory = true;
  refuseExcess(data);
}

void onEndTag(void* data, const xmlChar* name, const xmlChar* prefix, const xmlChar* address) {
  progressOf(data).limits.left();
  xmlSAX2EndElementNs(data, name, prefix, address);
}

void setHandlers(xmlSAXHandler& handler) {
  handler.serror = onError;
  handler.startDocument = onStart;
  handler.internalSubset = onDocumentType;
  handler.externalSubset = nullptr;
  handler.getEntity = entityNamed;
  handler.getParameterEntity = parameterEntityNamed;
  handler.reference = onUnknownEntity;
  handler.startElementNs = onStartTag;
  handler.endElementNs = onEndTag;
}

struct FreeContext {
  void operator()(xmlParserCtxt* context) const {
    xmlFreeDoc(context->myDoc);
    xmlFreeParserCtxt(context);
  }
};
using Context = std::unique_ptr<xmlParserCtxt, FreeContext>;

// The line that the fault lies in, and where it starts.
void quoteSource(XmlFault& fault, std::string_view utf8) {
  std::size_t start = 0;
  for (std::int32_t line = 1; line < fault.line; ++line) {
    const std::size_t end = utf8.find('\n', start);
    if (end == std::string_view::npos) return;
    start = end + 1;
  }
  std::string_view text = utf8.substr(start, utf8.find('\n', start) - start);
  if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
  fault.sourceText = fromUtf8(text);
  const auto before = std::count_if(utf8.begin(), utf8.begin() + static_cast<std::ptrdiff_t>(start),
                                    [](char byte) { return (byte & 0xC0) != 0x80; });
  fault.filePosition = static_cast<std::int32_t>(before) + std::max(fault.linePosition - 1, 0);
}

// The declaration at the head of a document is a node of it, though the parser makes none.
void addDeclaration(xmlDoc* document, std::string_view utf8) {
  if (utf8.starts_with("\xEF\xBB\xBF")) utf8.remove_prefix(3);
  if (document->standalone == -1) return;  // there is none
  const std::size_t start = utf8.find_first_not_of(" \t\r\n", 5);
  const std::size_t end = utf8.find_last_not_of(" \t\r\n", utf8.find("?>") - 1) + 1;
  std::string content(utf8.substr(start, end - start));
  std::replace(content.begin(), content.end(), '\'', '"');
  xmlNode* declaration = xmlNewDocPI(document, BAD_CAST "xml", asXml(content));
  if (!declaration) throw std::bad_alloc();
  if (document->children) {
    xmlAddPrevSibling(document->children, declaration);
  } else {
    xmlAddChild(reinterpret_cast<xmlNode*>(document), declaration);
  }
}

}  // namespace

XmlFault XmlFault::of(std::int32_t code, String sentence) {
  XmlFault fault;
  fault.code = code;
  fault.reason = sentence.append(u"\r\n");
  return fault;
}

ParsedXml parseXml(std::string utf8, bool preserveWhiteSpace) {
  if (utf8.size() > std::numeric_limits<int>::max()) throw Error(ErrorNumber::OutOfMemory);
  // The parser takes a NUL for an end, but no other control character for anything.
  std::replace(utf8.begin(), utf8.end(), '\0', '\1');

  const Context context(xmlNewParserCtxt());
  if (!context) throw std::bad_alloc();
  Progress progress{context.get()};
  context->_private = &progress;
  progress.limits.took(utf8.size());
  setHandlers(*context->sax);
  // The document stays with the context until it is known to be whole.
  context->myDoc =
      xmlCtxtReadMemory(context.get(), utf8.data(), static_cast<int>(utf8.size()), nullptr, "UTF-8", options);
  if (progress.outOfMemory) throw std::bad_alloc();
  if (!context->myDoc && progress.fault.code == 0)
    keep(progress, XmlErrorNumber::Failed, xmlErrorSentence(nullptr));
  if (progress.fault.code != 0) {
    quoteSource(progress.fault, utf8);
    return {nullptr, std::move(progress.fault)};
  }
  addDeclaration(context->myDoc, utf8);
  if (!preserveWhiteSpace) dropWhiteSpace(context->myDoc);
  auto tree = std::make_shared<XmlTree>(context->myDoc);
  context->myDoc = nullptr;
  return {std::move(tree), {}};
}

ParsedXml parseXml(StringView text, bool preserveWhiteSpace) {
  constexpr std::size_t piece = 65536;  // units
  XmlSaxEncoder encoder;
  std::string utf8;
  for (; !text.empty(); text.remove_prefix(std::min(piece, text.size())))
    utf8 += encoder.encode(text.substr(0, piece));
  utf8 += encoder.finish();
  return parseXml(std::move(utf8), preserveWhiteSpace);
}

}  // namespace zelUtilities
