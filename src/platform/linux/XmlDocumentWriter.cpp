#include "platform/linux/XmlDocumentWriter.h"

#include <libxml/xmlsave.h>

#include <algorithm>
#include <new>

#include "automation/Error.h"
#include "platform/linux/XmlDocumentEncoding.h"
#include "platform/linux/XmlDocumentTree.h"

namespace zelUtilities {

namespace {

constexpr std::size_t pieceLength = 1 << 20;

int appendTo(void* out, const char* bytes, int length) noexcept {
  try {
    static_cast<std::string*>(out)->append(bytes, static_cast<std::size_t>(length));
    return length;
  } catch (...) {
    return -1;
  }
}

void append(std::string& out, xmlNode* node) {
  constexpr int options = XML_SAVE_NO_DECL | XML_SAVE_NO_XHTML | XML_SAVE_AS_XML;
  xmlSaveCtxt* context = xmlSaveToIO(appendTo, nullptr, &out, "UTF-8", options);
  if (!context) throw std::bad_alloc();
  xmlSaveTree(context, node);
  if (xmlSaveClose(context) < 0) throw std::bad_alloc();
}

std::string withLineEnds(std::string_view text) {
  std::string out;
  out.reserve(text.size() + static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')));
  for (const char c : text) {
    if (c == '\n') out += '\r';
    out += c;
  }
  return out;
}

std::string encoded(std::string_view utf8, const std::string& encoding) {
  xmlCharEncodingHandler* handler = xmlFindCharEncodingHandler(encoding.c_str());
  if (!handler)
    throw Error(XmlErrorNumber::Failed, {}, u"The encoding \"" + fromUtf8(encoding) + u"\" is not known.");
  std::string out;
  xmlOutputBuffer* buffer = xmlOutputBufferCreateIO(appendTo, nullptr, &out, handler);
  if (!buffer) throw std::bad_alloc();
  for (; !utf8.empty(); utf8.remove_prefix(std::min(pieceLength, utf8.size())))
    xmlOutputBufferWrite(buffer, static_cast<int>(std::min(pieceLength, utf8.size())), utf8.data());
  if (xmlOutputBufferClose(buffer) < 0) throw std::bad_alloc();
  return out;
}

}  // namespace

std::string markupOf(xmlNode* node) {
  std::string out;
  if (node->type != XML_DOCUMENT_NODE) {
    append(out, node);
    // An attribute comes with the blank before it.
    return withLineEnds(node->type == XML_ATTRIBUTE_NODE ? std::string_view(out).substr(1) : out);
  }
  for (xmlNode* child = node->children; child; child = child->next) {
    append(out, child);
    if (!out.ends_with('\n')) out += '\n';
  }
  return withLineEnds(out);
}

std::string encodedMarkupOf(xmlNode* document) {
  std::string markup = markupOf(document);
  const std::string encoding = encodingInDeclaration(markup);
  return encoding.empty() || isUtf8(encoding) ? markup : encoded(markup, encoding);
}

}  // namespace zelUtilities
