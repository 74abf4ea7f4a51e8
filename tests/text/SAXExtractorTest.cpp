#include "automation/Error.h"
#include "support/PieceStream.h"
#include "support/Testing.h"
#include "text/zelSAXExtractor.h"

namespace zelUtilities {
namespace {

class SAXExtractor : public ::testing::Test {
 protected:
  // What came of a document: each text taken out and, at the end, the result.
  std::string extracted(StringView target, const Variant& source) {
    events_.clear();
    extractor->setTargetElement(target);
    const bool whole = extractor->Parse(source);
    return events_ + (whole ? "True" : "False");
  }

  Ref<zelSAXExtractor> extractor = make<zelSAXExtractor>();
  Reports reports{"zelSAXExtractor."};

 private:
  std::string events_;
  Subscription extracted_ = extractor->onTargetExtracted.subscribe([this] {
    std::string text = toUtf8(extractor->GetTargetXML());
    std::erase(text, '\r');
    events_ += text;
  });
  Subscription failed_ =
      extractor->onParserError.subscribe([this](std::int32_t line, std::int32_t column, StringView message) {
        EXPECT_FALSE(message.empty());
        events_ += "error in line " + std::to_string(line) + (column > 0 ? "" : " somewhere") + "\n";
      });
};

TEST_F(SAXExtractor, WritesEachTargetAnew) {
  const std::tuple<StringView, StringView, std::string> cases[] = {
      {u"r", u"<r><a>x</a></r>", "<r>\n  <a>\nx  </a>\n</r>\nTrue"},
      {u"a", u"<r><a>a&lt;b</a>-<a/></r>", "<a>\na&lt;b</a>\n<a>\n</a>\nTrue"},
      {u"", u"<r/>", "True"},
      {u"A", u"<r><a/></r>", "True"},
      {u"x:a", u"<r xmlns:x='u' xmlns:y='u'><a/><y:a/><x:a/></r>", "<x:a>\n</x:a>\nTrue"},
      {u"a", u"<a b='' c='d&quot;&amp;'/>", "<a c='d&quot;&amp;'>\n</a>\nTrue"},
      {u"a", u"<r xmlns:x='u'><a x:b='1' xmlns='v'><x:c xmlns:x='w'/></a></r>",
       "<a b='1' xmlns='v'>\n  <x:c xmlns:x='w'>\n  </x:c>\n</a>\nTrue"},
      {u"a", u"<a>1<!--c-->2<?p q?>3<![CDATA[<]]> </a>", "<a>\n123&lt; </a>\nTrue"},
      // Of targets within each other the inner one is given, and what follows it is left out.
      {u"a", u"<r><a>1<b><a>2</a>3</b>4</a><a>5</a></r>", "<a>\n2</a>\n<a>\n5</a>\nTrue"},
      {u"a", u"<r><a>1</a>\n<a>2</b></r>", "<a>\n1</a>\nerror in line 2\nFalse"},
  };
  for (const auto& [target, xml, expected] : cases)
    EXPECT_EQ(extracted(target, xml), expected) << toUtf8(xml);
  EXPECT_EQ(reports.taken().rfind("Parse|"), 0U) << "one report";
}

TEST_F(SAXExtractor, KeepsTheLastTarget) {
  extracted(u"a", u"<r><a>1</a><a>2</a></r>");
  EXPECT_EQ(extracted(u"a", u"<r><a>3"), "error in line 1\nFalse");
  EXPECT_EQ(reports.taken().rfind("Parse|"), 0U);
  EXPECT_EQ(extractor->GetTargetXML(), u"<a>\r\n2</a>\r\n");
  EXPECT_EQ(propertiesOf(*extractor->GetDOM(), u"text"), "2");
}

TEST_F(SAXExtractor, ReadsAStreamAndLogsItsFailure) {
  EXPECT_EQ(extracted(u"a", PieceStream::of(std::string_view("<r><a>\xC3\xA9</a></r>"), 5)),
            "<a>\n&#233;</a>\nTrue");
  EXPECT_EQ(reports.taken(), "");
  EXPECT_EQ(extracted(u"a", make<PieceStream>([]() -> Variant { throw Error(57); })), "False");
  EXPECT_EQ(extracted(u"a", 12), "False");
  EXPECT_EQ(reports.taken(), "Parse|57 Parse|13 ");
}

TEST_F(SAXExtractor, ListenersMayFailAndAskForMore) {
  const Subscription failing = extractor->onTargetExtracted.subscribe([&] {
    EXPECT_FALSE(extractor->Parse(u"<a/>"));  // one document at a time
    extractor->setTargetElement(u"b");
    throw Error(5);
  });
  EXPECT_EQ(extracted(u"a", u"<r><a/><a/><b/></r>"), "<a>\n</a>\n<b>\n</b>\nTrue");
  EXPECT_EQ(reports.taken(), "Parse|5 Parse|5 Parse|5 Parse|5 ");
}

}  // namespace
}  // namespace zelUtilities
