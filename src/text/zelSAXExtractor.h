// zelSAXExtractor: takes elements of one name out of a document that is read as it streams by, each with all
// that is in it, as a text of its own.
//
//   auto extractor = make<zelSAXExtractor>();
//   extractor->setTargetElement(u"Order");
//   const Subscription watch =
//       extractor->onTargetExtracted.subscribe([&] { take(extractor->GetTargetXML()); });
//   bool whole = extractor->Parse(stream);
//
// Memory is that of the largest such element, however long the document. The text is written anew: each
// element on a line of its own, indented; attributes without prefix, but for declarations of name spaces, and
// without the empty ones; texts as they come; no comments and no processing instructions. Where such elements
// lie in each other, the inner one is given and the outer one is not.
#pragma once

#include <cstdint>

#include "automation/Event.h"
#include "automation/Object.h"
#include "automation/String.h"
#include "automation/Variant.h"
#include "platform/Xml.h"
#include "text/zelStringCat.h"

namespace zelUtilities {

class zelSAXExtractor final : public Object, private XmlHandler {
 public:
  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  // Raised inside Parse; failures of listeners are logged under "zelSAXExtractor.Parse". The next element
  // replaces the text, so take it at once.
  Event<> onTargetExtracted;
  // Why and where the document cannot be read further: lLine, lColumn, sMessage. Places count from 1, or are
  // 0 where the system's reader does not tell.
  Event<std::int32_t, std::int32_t, StringView> onParserError;

  // The name, prefix included, of the elements to take out; at first "", which is nobody's.
  const String& TargetElement() const { return targetElement_; }
  void setTargetElement(StringView targetElement) { targetElement_ = targetElement; }

  // Reads a text, or an object that gives one piece by piece (see Xml.h). True when it was read to its end;
  // failures are logged. Raises 5, logged, from within an event of the same object's Parse.
  bool Parse(const Variant& vSource);

  // The text of the last element taken out; "" before the first.
  const String& GetTargetXML() const { return targetText_; }
  // A document ("MSXML.DOMDocument") that has loaded it, or tried to; nothing, and the log knows why, where
  // there is no such class.
  Ref<Object> GetDOM() const;

 private:
  void startDocument() override { isCapturing_ = false; }
  void startElement(const XmlName& name, XmlAttributes& attributes) override;
  bool wantsCharacters() const override { return isCapturing_; }
  void characters(StringView text) override { capture_.ConcatenateEscaped(text); }
  void endElement(const XmlName& name) override;
  void fatalError(std::int32_t line, std::int32_t column, StringView message) override;

  void writeStart(const XmlName& name, XmlAttributes& attributes);
  void requireGrown(std::int32_t lengthBefore) const;

  String targetElement_;
  String targetText_;
  zelStringCat capture_;  // of the element being read
  bool isCapturing_ = false;
  bool isParsing_ = false;
};

}  // namespace zelUtilities
