// Reading XML text into a tree, without ever reading anything else: no network, no external entities, no
// document type of another file.
//
// What is accepted is bounded. Elements may be nested 5000 deep; the document refuses more with a parse
// error. In a document with a document type, whose entities could multiply, the parser's own tighter limits
// hold: 256 levels, 40 entities within each other, ten million characters a text, and no more than about ten
// times its own length by entities. What entities and the values of left-out attributes come to in all is
// bounded as XmlLimits has it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "automation/String.h"
#include "platform/linux/XmlDocumentTree.h"

namespace zelUtilities {

// Why a document was not read. The numbers are those of the system's own document where it has one.
struct XmlFault {
  std::int32_t code = 0;  // 0: it was read
  String reason;          // a sentence and a line end
  String sourceText;      // the line of the document that the fault lies in
  std::int32_t line = 0;  // from 1, as are positions in the line; 0 where it is not known
  std::int32_t linePosition = 0;
  std::int32_t filePosition = 0;  // characters from the start

  static XmlFault of(std::int32_t code, String sentence);
};

struct ParsedXml {
  std::shared_ptr<XmlTree> tree;  // nothing where there is a fault
  XmlFault fault;
};

// The encoding that the text declares is not looked at. Texts that are nothing but white space are dropped
// unless they are to be preserved by the argument or by an attribute xml:space. Raises 7 for want of memory.
ParsedXml parseXml(std::string utf8, bool preserveWhiteSpace);
// A NUL or a lone surrogate is a fault.
ParsedXml parseXml(StringView text, bool preserveWhiteSpace);

}  // namespace zelUtilities
