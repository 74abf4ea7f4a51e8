// Xml: a document read as it streams by, in memory that does not grow with it.
//
//   struct Counter final : XmlHandler {
//     void startElement(const XmlName&, XmlAttributes&) override { ++elements; }
//     int elements = 0;
//   } counter;
//   xml().parse(u"<a><b/></a>", counter);                 // counter.elements is 2
//
// Nothing but the source is read: no network, no external entities, no document type of another file.
// Elements may be nested as deep as the system's reader allows, but no more than deepestXmlElement; what
// entities stand for may come to ten million characters and about ten times the document. More is an error of
// the document.
#pragma once

#include <cstdint>

#include "automation/String.h"
#include "automation/Variant.h"
#include "platform/Service.h"

namespace zelUtilities {

inline constexpr int deepestXmlElement = 5000;

struct XmlName {
  StringView namespaceUri;   // "" for none
  StringView localName;      // without prefix
  StringView qualifiedName;  // as written
};

// The attributes of one start tag: those written, then those that the document type adds, and last the
// declarations of name spaces, whose local name is "" and qualified name "xmlns" or "xmlns:<prefix>".
class XmlAttributes {
 public:
  struct Attribute {
    XmlName name;
    StringView value;
  };

  virtual std::size_t count() const = 0;
  // Counted from 0; its texts are good until the next call.
  virtual Attribute at(std::size_t index) = 0;

 protected:
  ~XmlAttributes() = default;
};

// What happens in a document. Texts are good during the call only. What a handler raises stops the reader and
// comes out of parse.
class XmlHandler {
 public:
  virtual void startDocument() {}
  virtual void startElement(const XmlName&, XmlAttributes&) {}
  // Whether texts are of interest at this place; asked after each of the other calls, and before each piece.
  virtual bool wantsCharacters() const { return true; }
  // A piece of text, or of a CDATA section; line ends are LF. Pieces end wherever the reader likes.
  virtual void characters(StringView) {}
  virtual void endElement(const XmlName&) {}
  // Why the document cannot be read further, and where: line and column from 1, or 0 where the reader does
  // not know. Comes once at most; then parse raises.
  virtual void fatalError(std::int32_t /*line*/, std::int32_t /*column*/, StringView /*message*/) {}

 protected:
  ~XmlHandler() = default;
};

struct Xml {
  virtual ~Xml() = default;

  // Reads a text, or what an object gives piece by piece. The object is a stream of the system's, where the
  // system has such, or has a method Read(count) that gives the next bytes, as a byte array of that many at
  // most, or the next characters, as a text; nothing more to come is an empty one, Null, Empty, or the error
  // 62. Bytes are in the encoding that their mark or the document declares; of texts the declared encoding is
  // not looked at.
  //
  // A document that cannot be read raises an Error with the reader's number and the message, after
  // fatalError; a source of another kind raises 13; what the source raises comes out as it is.
  virtual void parse(const Variant& source, XmlHandler& handler) = 0;

  static Xml& system();
};

inline Xml& xml() { return Service<Xml>::inForce(); }

}  // namespace zelUtilities
