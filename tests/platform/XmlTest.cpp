// What every reader of XML does: the system's own, and that over libxml2.
#include <gtest/gtest.h>

#include "platform/Xml.h"
#include "support/PieceStream.h"
#include "support/RaisedError.h"
#include "support/XmlEvents.h"
#include "support/XmlTexts.h"

namespace zelUtilities {
namespace {

using namespace std::string_view_literals;

TEST(Xml, TellsWhatADocumentHolds) {
  constexpr std::pair<StringView, std::string_view> cases[] = {
      {u"<?xml version='1.0'?><r a='1' b=''><b>x</b></r>", "<r a=1 b=><b>x</b></r>"},
      {u"<?xml version='1.0' encoding='utf-8'?><r>\u20AC</r>", "<r>\u20AC</r>"},
      {u"\uFEFF<r/>", "<r></r>"},
      {u"\uFEFF<?xml version='1.0' encoding='utf-8'?><r>\u20AC</r>", "<r>\u20AC</r>"},
      {u"<r xmlns:x='u' x:a='1' xmlns='d' b='2'><x:c x:d='3'/></r>",
       "<{d}r|r {u}a|x:a=1 b=2 {}|xmlns:x=u {}|xmlns=d><{u}c|x:c {u}d|x:d=3></x:c></r>"},
      {u"<r>a\r\nb\rc &lt;&amp;&#233;&#x1F600;\u00E9\xD83D\xDE00</r>",
       "<r>a\nb\nc <&\u00E9\U0001F600\u00E9\U0001F600</r>"},
      {u"<r><!--a-->b<![CDATA[<c>]]> <?d e?> </r>", "<r>b<c>  </r>"},
      {u"<r>\n  <a/>\n</r>", "<r>\n  <a></a>\n</r>"},
      {u"<!DOCTYPE r [<!ELEMENT r (a)><!ATTLIST r b CDATA 'c'>]><r> <a/></r>", "<r b=c> <a></a></r>"},
      {u"<!DOCTYPE r SYSTEM 'file:///missing'><r/>", "<r></r>"},
      {u"<\u00E9l\u00E9ment \u03B1='\u03B2'/>", "<\u00E9l\u00E9ment \u03B1=\u03B2></\u00E9l\u00E9ment>"},
  };
  for (const auto& [xml, events] : cases) EXPECT_EQ(XmlEvents::of(xml), events) << toUtf8(xml);
}

void expectRefused(std::initializer_list<StringView> cases) {
  for (const StringView xml : cases) EXPECT_EQ(XmlEvents::of(xml).back(), '!') << toUtf8(xml);
}
// A macro, so that several rows stand on a line.
#define EXPECT_REFUSED(...) expectRefused({__VA_ARGS__})

TEST(Xml, RefusesWhatIsNoDocumentOnceAndRaises) {
  EXPECT_REFUSED(u"", u" ", u"abc", u"<", u"<r>", u"<r><a></r>", u"<r/>x", u"<r/><s/>", u"<r a='1' a='2'/>",
                 u"<r a=1/>", u"<r a='<'/>", u"<x:r/>", u"<r x:a='1'/>", u"<r>&e;</r>", u"<r>&#0;</r>",
                 u"<r>&#xD800;</r>", u"<r>\1</r>", u"<r>a\0b</r>"sv, u"<r a='\0'/>"sv, u"<r>\xD800 </r>"sv,
                 u"<r>\xDC00 </r>"sv, u"<r/>\0"sv, u"<r/>\xD800"sv, u"<r><![CDATA[x</r>", u"<r><!-- x</r>",
                 u"<?xml version='1.0'");
  EXPECT_REFUSED(u"<!DOCTYPE r [<!ENTITY e SYSTEM 'file:///etc/passwd'>]><r>&e;</r>",
                 u"<!DOCTYPE r [<!ENTITY % p SYSTEM 'file:///etc/passwd'>%p;]><r/>",
                 u"<!DOCTYPE r SYSTEM 'file:///etc/passwd'><r>&e;</r>",
                 u"<!DOCTYPE r [<!ENTITY e '&f;'><!ENTITY f '&e;'>]><r>&e;</r>");
}

TEST(Xml, TellsWhereTheFaultIsAndIsBoundedWhereADocumentIsNot) {
  XmlEvents events, deep;
  EXPECT_NE(raisedError([&] { xml().parse(u"<r>\n <a>\n <b></c></a></r>", events); }), "nothing");
  EXPECT_TRUE(events.line == 3 && events.column > 0) << events.line;
  EXPECT_NE(raisedError([&] { xml().parse(repeated(u"<a>", 1'000'000), deep); }), "nothing");
  EXPECT_LE(deep.text.size(), 3U * deepestXmlElement + 1);
  EXPECT_EQ(XmlEvents::of(nested(200)).size(), 1400U);
  expectRefused({entityBomb() + u"<a>&k;</a>", entityBomb() + u"<a a='&k;'/>"});
}

// The same in every piece size.
void expectFromPieces(auto source, std::string_view events) {
  for (const std::size_t size : {1, 2, 3, 5, 7, 1000})
    EXPECT_EQ(XmlEvents::of(PieceStream::of(source, size)), events) << size;
}

TEST(Xml, ReadsStreamsOfBytesByTheirEncodingAndOfTextWhateverTheyDeclare) {
  expectFromPieces("<r a='1'>\xC3\xA9\xF0\x9F\x98\x80</r>"sv, "<r a=1>\u00E9\U0001F600</r>");
  expectFromPieces("\xEF\xBB\xBF<r>x</r>"sv, "<r>x</r>");
  expectFromPieces("<?xml version='1.0' encoding='iso-8859-1'?><r>\xE9</r>"sv, "<r>\u00E9</r>");
  expectFromPieces("\xFF\xFE<\0r\0>\0\xAC\x20=\xD8\0\xDE<\0/\0r\0>\0"sv, "<r>\u20AC\U0001F600</r>");
  expectFromPieces("<r>\xE9 </r>"sv, "<r>!");
  expectFromPieces("<r><a>"sv, "<r><a>!");
  expectFromPieces("<?xml version='1.0' encoding='nobodys'?><r/>"sv, "?!");
  expectFromPieces("<?xml version='1.0' encoding='utf-16'?><r/>"sv, "?!");
  expectFromPieces(u"<r>\u20AC\xD83D\xDE00</r>"sv, "<r>\u20AC\U0001F600</r>");
  expectFromPieces(u"<?xml version='1.0' encoding='iso-8859-1' standalone='yes'?><r>\u20AC</r>"sv,
                   "<r>\u20AC</r>");
  expectFromPieces(u"\uFEFF<r/>"sv, "<r></r>");
}

TEST(Xml, ReadsLongStreams) {
  std::string document = "<r>", events = "<r>";
  for (int i = 0; i < 20'000; ++i) {
    document += "<a b='" + std::to_string(i) + "'>\xC3\xA9 and so on</a>\n";
    events += "<a b=" + std::to_string(i) + ">\xC3\xA9 and so on</a>\n";
  }
  EXPECT_TRUE(XmlEvents::of(PieceStream::of(document + "</r>", 4099)) == events + "</r>");
}

TEST(Xml, EndsAStreamWhereItSaysSo) {
  for (const Variant& end :
       {Variant(), Variant::null(), Variant(u""), Variant::error(ErrorNumber::InputPastEnd)})
    EXPECT_EQ(XmlEvents::of(make<PieceStream>([end, first = true]() mutable -> Variant {
                if (std::exchange(first, false)) return u"<r/>";
                if (end.isError()) throw Error(end.errorCode());
                return end;
              })),
              "<r></r>");
}

TEST(Xml, PassesOnWhatIsRaisedAround) {
  XmlEvents events;
  const std::pair<Variant, std::string> sources[] = {
      {make<PieceStream>([]() -> Variant { throw Error(57, u"disk", u"Broken"); }), "57|disk|Broken"},
      {make<PieceStream>([] { return 12; }), "13|"},
      {make<PieceStream>([i = 0]() mutable { return ++i == 1 ? u"<r>" : PieceStream::bytesOf("</r>"); }),
       "13|"},
      {1, "13|"},
      {nullptr, "91|"},
      {make<Object>(), "438|"}};
  for (const auto& [source, raised] : sources)
    EXPECT_EQ(raisedError([&] { xml().parse(source, events); }).substr(0, raised.size()), raised);
  EXPECT_EQ(events.errors, 0);

  struct Refusing : XmlEvents {
    void characters(StringView) override { throw Error(5, u"handler", u"Enough"); }
  } refusing;
  EXPECT_EQ(raisedError([&] { xml().parse(u"<r><a>x</a><b/></r>", refusing); }), "5|handler|Enough");
  EXPECT_EQ(refusing.text, "<r><a>");
}

}  // namespace
}  // namespace zelUtilities
