// What does it cost to read a long document as it streams by, counting its elements only, and what to take
// every element of one name out of it as a text? Beside it libxml2's push parser and reader, and expat, which
// read the same document as UTF-8; the extraction over expat is written by hand and gives the same text.
//
// Times are CPU time per element of the document, whose length in MB is the size. "text" is a document as
// UTF-16, "stream" one that an object gives as bytes in pieces of 64 KB.
#include <cstring>

#include "Measure.h"
#include "automation/ArrayData.h"
#include "platform/Xml.h"
#include "text/zelSAXExtractor.h"

#if HAVE_LIBXML2
#include <libxml/parser.h>
#include <libxml/xmlreader.h>
#endif
#if HAVE_EXPAT
#include <expat.h>
#endif

namespace {

using namespace zelUtilities;
using zelBenchmarks::countItems;
using zelBenchmarks::require;

constexpr std::size_t pieceSize = 65536;
constexpr std::int64_t elementsOfItem = 4;

struct Document {
  std::string utf8;
  String text;
  std::int64_t items = 0;

  std::int64_t elements() const { return items * elementsOfItem + 1; }
};

const Document& documentOf(std::int64_t megabytes) {
  static Document document;
  if (document.items != 0) return document;
  std::string& xml = document.utf8;
  xml = "<?xml version='1.0'?>\n<root>\n";
  while (xml.size() < static_cast<std::size_t>(megabytes) * 1'000'000) {
    const std::string number = std::to_string(document.items++);
    xml += "  <item id=\"" + number + "\" kind=\"k" + number.back() + "\">\n    <name>name of " + number +
           "</name>\n    <note>a &lt; b &amp; c</note>\n    <size>" + number + "</size>\n  </item>\n";
  }
  xml += "</root>\n";
  document.text = fromUtf8(xml);
  return document;
}

class Pieces : public Object {
 public:
  explicit Pieces(std::string_view bytes) : left_(bytes) {}
  Variant Invoke(StringView, InvokeKind, std::span<Variant>) override {
    const std::string_view piece = left_.substr(0, pieceSize);
    left_.remove_prefix(piece.size());
    return ArrayData::ofBytes({reinterpret_cast<const std::uint8_t*>(piece.data()), piece.size()});
  }

 private:
  std::string_view left_;
};

// The document's pieces, with whether it is the last one.
template <class Body>
void inPieces(std::string_view bytes, const Body& body) {
  while (!bytes.empty()) {
    const std::string_view piece = bytes.substr(0, pieceSize);
    bytes.remove_prefix(piece.size());
    body(piece.data(), static_cast<int>(piece.size()), bytes.empty());
  }
}

struct Counter final : XmlHandler {
  void startElement(const XmlName&, XmlAttributes&) override { ++elements; }
  bool wantsCharacters() const override { return false; }
  std::int64_t elements = 0;
};

Variant sourceOf(const Document& document, bool asText) {
  return asText ? Variant(document.text) : Variant(make<Pieces>(document.utf8));
}

void count(benchmark::State& state, bool asText) {
  const Document& document = documentOf(state.range(0));
  const Variant text = asText ? sourceOf(document, true) : Variant();
  for (auto _ : state) {
    Counter counter;
    xml().parse(asText ? text : sourceOf(document, false), counter);
    require(counter.elements == document.elements(), "elements");
  }
  countItems(state, document.elements());
}

// The length of all that is extracted, the same for everybody who writes the same text.
std::int64_t extractedUnits = 0;

void extract(benchmark::State& state, bool asText) {
  const Document& document = documentOf(state.range(0));
  const Variant text = asText ? sourceOf(document, true) : Variant();
  const auto extractor = make<zelSAXExtractor>();
  extractor->setTargetElement(u"item");
  std::int64_t units = 0;
  const Subscription watch = extractor->onTargetExtracted.subscribe(
      [&] { units += static_cast<std::int64_t>(extractor->GetTargetXML().size()); });
  for (auto _ : state) {
    units = 0;
    require(extractor->Parse(asText ? text : sourceOf(document, false)), "Parse");
    if (extractedUnits == 0) extractedUnits = units;
    require(units == extractedUnits, "length");
  }
  countItems(state, document.elements());
}

#if HAVE_LIBXML2
void countByLibxml2(benchmark::State& state) {
  const Document& document = documentOf(state.range(0));
  for (auto _ : state) {
    static std::int64_t elements;
    elements = 0;
    xmlSAXHandler handler{};
    handler.initialized = XML_SAX2_MAGIC;
    handler.startElementNs = [](void*, const xmlChar*, const xmlChar*, const xmlChar*, int, const xmlChar**,
                                int, int, const xmlChar**) { ++elements; };
    xmlParserCtxt* parser = xmlCreatePushParserCtxt(&handler, nullptr, nullptr, 0, nullptr);
    inPieces(document.utf8,
             [&](const char* data, int size, bool last) { xmlParseChunk(parser, data, size, last); });
    xmlFreeParserCtxt(parser);
    require(elements == document.elements(), "elements");
  }
  countItems(state, document.elements());
}

// As it stands in the document, which is less to write.
void extractByLibxml2(benchmark::State& state) {
  const Document& document = documentOf(state.range(0));
  for (auto _ : state) {
    xmlTextReader* reader =
        xmlReaderForMemory(document.utf8.data(), static_cast<int>(document.utf8.size()), nullptr, nullptr, 0);
    std::int64_t items = 0;
    int more = xmlTextReaderRead(reader);
    while (more == 1) {
      const bool isTarget =
          xmlTextReaderNodeType(reader) == XML_READER_TYPE_ELEMENT &&
          std::strcmp(reinterpret_cast<const char*>(xmlTextReaderConstName(reader)), "item") == 0;
      if (isTarget) {
        xmlChar* text = xmlTextReaderReadOuterXml(reader);
        items += text != nullptr;
        xmlFree(text);
      }
      more = isTarget ? xmlTextReaderNext(reader) : xmlTextReaderRead(reader);
    }
    xmlFreeTextReader(reader);
    require(items == document.items, "items");
  }
  countItems(state, document.elements());
}
#endif

#if HAVE_EXPAT
void countByExpat(benchmark::State& state) {
  const Document& document = documentOf(state.range(0));
  for (auto _ : state) {
    std::int64_t elements = 0;
    XML_Parser parser = XML_ParserCreate(nullptr);
    XML_SetUserData(parser, &elements);
    XML_SetElementHandler(
        parser, [](void* data, const char*, const char**) { ++*static_cast<std::int64_t*>(data); },
        [](void*, const char*) {});
    inPieces(document.utf8,
             [&](const char* data, int size, bool last) { XML_Parse(parser, data, size, last); });
    XML_ParserFree(parser);
    require(elements == document.elements(), "elements");
  }
  countItems(state, document.elements());
}

struct ByHand {
  std::string text;
  std::string taken;
  std::string margin;
  std::int64_t units = 0;
  bool capturing = false;

  void escape(const char* value, std::size_t size) {
    const char* const end = value + size;
    for (const char* at = value; at < end; ++at) {
      switch (*at) {
        case '&':
          text += "&amp;";
          break;
        case '<':
          text += "&lt;";
          break;
        case '>':
          text += "&gt;";
          break;
        case '\'':
          text += "&apos;";
          break;
        case '"':
          text += "&quot;";
          break;
        default:
          text += *at;
      }
    }
  }
  void start(const char* name, const char** attributes) {
    if (std::strcmp(name, "item") == 0) {
      capturing = true;
      text.clear();
      margin.clear();
    }
    if (!capturing) return;
    text.append(margin).append("<").append(name);
    for (; *attributes; attributes += 2) {
      text.append(" ").append(attributes[0]).append("='");
      escape(attributes[1], std::strlen(attributes[1]));
      text += '\'';
    }
    text += ">\r\n";
    margin += "  ";
  }
  void end(const char* name) {
    if (!capturing) return;
    margin.resize(margin.size() - 2);
    text.append(margin).append("</").append(name).append(">\r\n");
    if (std::strcmp(name, "item") != 0) return;
    capturing = false;
    taken = text;
    units += static_cast<std::int64_t>(taken.size());
  }
};

void extractByExpat(benchmark::State& state) {
  const Document& document = documentOf(state.range(0));
  for (auto _ : state) {
    ByHand byHand;
    XML_Parser parser = XML_ParserCreate(nullptr);
    XML_SetUserData(parser, &byHand);
    XML_SetElementHandler(
        parser,
        [](void* data, const char* name, const char** attributes) {
          static_cast<ByHand*>(data)->start(name, attributes);
        },
        [](void* data, const char* name) { static_cast<ByHand*>(data)->end(name); });
    XML_SetCharacterDataHandler(parser, [](void* data, const char* text, int size) {
      auto& hand = *static_cast<ByHand*>(data);
      if (hand.capturing) hand.escape(text, static_cast<std::size_t>(size));
    });
    inPieces(document.utf8,
             [&](const char* data, int size, bool last) { XML_Parse(parser, data, size, last); });
    XML_ParserFree(parser);
    if (extractedUnits == 0) extractedUnits = byHand.units;
    require(byHand.units == extractedUnits, "length");
  }
  countItems(state, document.elements());
}
#endif

void add(const char* name, void (*measured)(benchmark::State&)) {
  benchmark::RegisterBenchmark(name, measured)->Arg(100);
}

const bool registered = [] {
  for (const bool asText : {true, false}) {
    const std::string source = asText ? " (text)/MB/zel" : " (stream)/MB/zel";
    benchmark::RegisterBenchmark(("SAX, count" + source).c_str(), [asText](auto& state) {
      count(state, asText);
    })->Arg(100);
    benchmark::RegisterBenchmark(("SAX, extract" + source).c_str(), [asText](auto& state) {
      extract(state, asText);
    })->Arg(100);
  }
#if HAVE_LIBXML2
  add("SAX, count (text)/MB/libxml2", countByLibxml2);
  add("SAX, count (stream)/MB/libxml2", countByLibxml2);
  add("SAX, extract (text)/MB/libxml2", extractByLibxml2);
  add("SAX, extract (stream)/MB/libxml2", extractByLibxml2);
#endif
#if HAVE_EXPAT
  add("SAX, count (text)/MB/expat", countByExpat);
  add("SAX, count (stream)/MB/expat", countByExpat);
  add("SAX, extract (text)/MB/expat", extractByExpat);
  add("SAX, extract (stream)/MB/expat", extractByExpat);
#endif
  return true;
}();

}  // namespace
