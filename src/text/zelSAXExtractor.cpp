#include "text/zelSAXExtractor.h"

#include <string_view>

#include "automation/Binder.h"
#include "automation/Error.h"
#include "foundation/Handled.h"
#include "platform/Objects.h"

namespace zelUtilities {

using namespace std::string_view_literals;  // of known length, where much is asked for

namespace {

// What a failed listener is logged under.
void logFailedListener() { logCurrent(u"zelSAXExtractor.Parse"); }

// True for as long as this lives.
class Marked {
 public:
  explicit Marked(bool& mark) : mark_(mark) { mark_ = true; }
  ~Marked() { mark_ = false; }
  Marked(const Marked&) = delete;
  Marked& operator=(const Marked&) = delete;

 private:
  bool& mark_;
};

[[noreturn]] void raiseTooLarge() {
  throw Error(ErrorNumber::OutOfMemory, {}, u"The element is too large to be extracted.");
}

}  // namespace

bool zelSAXExtractor::Parse(const Variant& vSource) {
  const Ref<zelSAXExtractor> self(this);  // a listener may let go of it
  bool whole = false;
  handled(u"zelSAXExtractor.Parse", [&] {
    if (isParsing_)
      throw Error(ErrorNumber::InvalidProcedureCall, {}, u"The extractor is reading another document.");
    const Marked parsing(isParsing_);
    xml().parse(vSource, *this);
    whole = true;
  });
  if (!isParsing_) capture_.Start();  // gives back what a large element took
  return whole;
}

Ref<Object> zelSAXExtractor::GetDOM() const {
  Ref<Object> document;
  handled(u"zelSAXExtractor.GetDOM", [&] {
    const Ref<Object> created = createObject(u"MSXML.DOMDocument");
    Variant text[] = {targetText_};
    created->Invoke(u"loadXML", InvokeKind::Method, text);
    document = created;
  });
  return document;
}

// What is written. The builder logs its own failures, of which memory is the likely one, and goes on, which
// here would give a text with holes, and a line in the log for each element that is still to come. So a text
// that did not grow ends the parse.

inline void zelSAXExtractor::requireGrown(std::int32_t lengthBefore) const {
  if (capture_.length() == lengthBefore) raiseTooLarge();
}

void zelSAXExtractor::startElement(const XmlName& name, XmlAttributes& attributes) {
  handledAndRaised(u"zelSAXExtractor.IVBSAXContentHandler_startElement"sv, [&] {
    if (name.qualifiedName == targetElement_) {
      capture_.Start();
      isCapturing_ = true;
    }
    if (isCapturing_) writeStart(name, attributes);
  });
}

void zelSAXExtractor::writeStart(const XmlName& name, XmlAttributes& attributes) {
  std::int32_t before = capture_.length();
  capture_.StartElement(name.qualifiedName);
  requireGrown(before);
  static const Variant noDefault(u"");  // made once
  const std::size_t count = attributes.count();
  for (std::size_t i = 0; i < count; ++i) {
    const auto [attribute, value] = attributes.at(i);
    if (value.empty()) continue;
    before = capture_.length();
    // Only declarations of name spaces have no local name; they keep the one they have, so that the text
    // loads.
    capture_.AddAttribute(attribute.localName.empty() ? attribute.qualifiedName : attribute.localName, value,
                          noDefault);
    requireGrown(before);
  }
  before = capture_.length();
  capture_.FinishElement(true);
  requireGrown(before);
}

void zelSAXExtractor::endElement(const XmlName& name) {
  if (!isCapturing_) return;
  const std::int32_t before = capture_.length();
  capture_.CloseElement();
  requireGrown(before);
  if (name.qualifiedName != targetElement_) return;
  isCapturing_ = false;
  targetText_ = capture_.text();
  onTargetExtracted.raise(logFailedListener);
}

void zelSAXExtractor::fatalError(std::int32_t line, std::int32_t column, StringView message) {
  onParserError.raise(logFailedListener, line, column, message);
}

const ClassInfo& zelSAXExtractor::describeClass() {
  using T = zelSAXExtractor;
  static const ClassInfo info =
      describe<T>("zelSAXExtractor", "Extracts elements from a document as it is parsed.")
          .creatable()
          .property("TargetElement", &T::TargetElement, &T::setTargetElement,
                    "The qualified name of the elements to extract.")
          .method("Parse", &T::Parse, {"vSource"},
                  "Parses a text or a stream; True when it was read to its end.")
          .method("GetTargetXML", &T::GetTargetXML, "The text of the last element extracted.")
          .method("GetDOM", &T::GetDOM, "A document loaded from the last element extracted.")
          .event("TargetExtracted", &T::onTargetExtracted, "An element was read completely.")
          .event("ParserError", &T::onParserError, {"lLine", "lColumn", "sMessage"},
                 "The document cannot be read further.");
  return info;
}

}  // namespace zelUtilities
