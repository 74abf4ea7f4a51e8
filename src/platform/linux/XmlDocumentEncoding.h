// The encodings that documents in files come in.
#pragma once

#include <string>
#include <string_view>

#include "platform/linux/XmlDocumentParser.h"

namespace zelUtilities {

// What the declaration at the head of a document gives as its encoding; "" where it gives none.
std::string encodingInDeclaration(std::string_view document);
// The declaration, as at the head of a document, without its encoding.
std::string withoutEncoding(std::string document);

bool isUtf8(const std::string& encoding);

// A file's contents as UTF-8, by its byte order mark or its declaration; UTF-8 is taken as it is, well-formed
// or not. A fault where the encoding is not known, contradicts the bytes, or does not fit them.
struct DecodedXml {
  std::string utf8;
  XmlFault fault;
};
DecodedXml decodeXml(std::string bytes);

}  // namespace zelUtilities
