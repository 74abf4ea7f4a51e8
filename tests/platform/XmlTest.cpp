// What every reader of XML does: the system's own, and that over libxml2.
#include <gtest/gtest.h>

#include "platform/Xml.h"
#include "support/PieceStream.h"
#include "support/RaisedError.h"
#include "support/XmlEvents.h"

namespace zelUtilities {
namespace {

using namespace std::string_view_literals;

struct Case {
  StringView xml;
  std::string_view events;
};

TEST(Xml, TellsWhatADocumentHolds) {
  constexpr Case cases[] = {
      {u"<?xml version='1.0'?><r a='1' b=''><b>x</b></r>", "<r a=1 b=><b>x</b></r>"},
      {u"<?xml version='1.0' encoding='utf-8'?><r>\u20AC</r>", "<r>\u20AC</r>"},
      {u"\uFEFF<r/>", "<r></r>"},
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
  for (const Case& c : cases) EXPECT_EQ(XmlEvents::of(c.xml), c.events) << toUtf8(c.xml);
}

TEST(Xml, RefusesWhatIsNoDocumentOnceAndRaises) {
  constexpr StringView cases[] = {u"",
                                  u" ",
                                  u"abc",
                                  u"<",
                                  u"<r>",
                                  u"<r><a></r>",
                                  u"<r/>x",
                                  u"<r/><s/>",
                                  u"<r a='1' a='2'/>",
                                  u"<r a=1/>",
                                  u"<r a='<'/>",
                                  u"<x:r/>",
                                  u"<r x:a='1'/>",
                                  u"<r>&e;</r>",
                                  u"<r>&#0;</r>",
                                  u"<r>&#xD800;</r>",
                                  u"<r>\1</r>",
                                  u"<r>a\0b</r>"sv,
                                  u"<r a='\0'/>"sv,
                                  u"<r>\xD800 </r>"sv,
                                  u"<r>\xDC00 </r>"sv,
                                  u"<r><![CDATA[x</r>",
                                  u"<r><!-- x</r>",
                                  u"<?xml version='1.0'",
                                  u"<!DOCTYPE r [<!ENTITY e SYSTEM 'file:///etc/passwd'>]><r>&e;</r>",
                                  u"<!DOCTYPE r [<!ENTITY % p SYSTEM 'file:///etc/passwd'>%p;]><r/>",
                                  u"<!DOCTYPE r SYSTEM 'file:///etc/passwd'><r>&e;</r>",
                                  u"<!DOCTYPE r [<!ENTITY e '&f;'><!ENTITY f '&e;'>]><r>&e;</r>"};
  for (const StringView xml : cases) EXPECT_EQ(XmlEvents::of(xml).back(), '!') << toUtf8(xml);
}

TEST(Xml, TellsWhereTheFaultIs) {
  XmlEvents events;
  EXPECT_NE(raisedError([&] { xml().parse(u"<r>\n <a>\n <b></c></a></r>", events); }), "nothing");
  EXPECT_EQ(events.line, 3);
  EXPECT_GT(events.column, 0);
}

String repeated(StringView text, int count) {
  String result;
  for (int i = 0; i < count; ++i) result.append(text);
  return result;
}

TEST(Xml, IsBoundedWhereADocumentIsNot) {
  XmlEvents deep;
  EXPECT_NE(raisedError([&] { xml().parse(repeated(u"<a>", 1'000'000), deep); }), "nothing");
  EXPECT_LE(deep.text.size(), 3U * deepestXmlElement + 1);
  EXPECT_EQ(XmlEvents::of(repeated(u"<a>", 200) + repeated(u"</a>", 200)).size(), 1400U);

  String bomb = u"<!DOCTYPE r [<!ENTITY a 'xxxxxxxxxx'>";
  for (char16_t c = u'b'; c <= u'k'; ++c)
    bomb += u"<!ENTITY " + String(1, c) + u" '" + repeated(u"&" + String(1, c - 1) + u";", 10) + u"'>";
  EXPECT_EQ(XmlEvents::of(bomb + u"]><r>&k;</r>").back(), '!');
  EXPECT_EQ(XmlEvents::of(bomb + u"]><r a='&k;'/>").back(), '!');
}

// The same in every piece size.
void expectFromPieces(auto source, std::string_view events) {
  for (const std::size_t size : {1, 2, 3, 5, 7, 1000})
    EXPECT_EQ(XmlEvents::of(PieceStream::of(source, size)), events) << size;
}

TEST(Xml, ReadsStreamsOfBytesByTheirEncoding) {
  expectFromPieces("<r a='1'>\xC3\xA9\xF0\x9F\x98\x80</r>"sv, "<r a=1>\u00E9\U0001F600</r>");
  expectFromPieces("\xEF\xBB\xBF<r>x</r>"sv, "<r>x</r>");
  expectFromPieces("<?xml version='1.0' encoding='iso-8859-1'?><r>\xE9</r>"sv, "<r>\u00E9</r>");
  expectFromPieces("\xFF\xFE<\0r\0>\0\xAC\x20=\xD8\0\xDE<\0/\0r\0>\0"sv, "<r>\u20AC\U0001F600</r>");
  expectFromPieces("<r>\xE9 </r>"sv, "<r>!");
  expectFromPieces("<r><a>"sv, "<r><a>!");
  expectFromPieces("<?xml version='1.0' encoding='nobodys'?><r/>"sv, "?!");
  expectFromPieces("<?xml version='1.0' encoding='utf-16'?><r/>"sv, "?!");
}

TEST(Xml, ReadsStreamsOfTextWhateverEncodingTheyDeclare) {
  expectFromPieces(u"<r>\u20AC\xD83D\xDE00</r>"sv, "<r>\u20AC\U0001F600</r>");
  expectFromPieces(u"<?xml version='1.0' encoding='iso-8859-1' standalone='yes'?><r>\u20AC</r>"sv,
                   "<r>\u20AC</r>");
  expectFromPieces(u"\uFEFF<r/>"sv, "<r></r>");
}

TEST(Xml, ReadsLongStreams) {
  std::string document = "<r>";
  std::string events = "<r>";
  for (int i = 0; i < 20'000; ++i) {
    document += "<a b='" + std::to_string(i) + "'>\xC3\xA9 and so on</a>\n";
    events += "<a b=" + std::to_string(i) + ">\xC3\xA9 and so on</a>\n";
  }
  EXPECT_TRUE(XmlEvents::of(PieceStream::of(document + "</r>", 4099)) == events + "</r>");
}

TEST(Xml, EndsAStreamWhereItSaysSo) {
  const auto endedBy = [](const Variant& end) {
    return XmlEvents::of(make<PieceStream>([end, first = true]() mutable -> Variant {
      if (std::exchange(first, false)) return u"<r/>";
      if (end.isError()) throw Error(end.errorCode());
      return end;
    }));
  };
  for (const Variant& end :
       {Variant(), Variant::null(), Variant(u""), Variant::error(ErrorNumber::InputPastEnd)})
    EXPECT_EQ(endedBy(end), "<r></r>");
}

TEST(Xml, PassesOnWhatIsRaisedAround) {
  XmlEvents events;
  const auto raisedBy = [&](const Variant& source) {
    return raisedError([&] { xml().parse(source, events); });
  };
  const auto streamOf = [](PieceStream::Source source) { return make<PieceStream>(std::move(source)); };
  EXPECT_EQ(raisedBy(streamOf([]() -> Variant { throw Error(57, u"disk", u"Broken"); })), "57|disk|Broken");
  EXPECT_EQ(raisedBy(streamOf([] { return 12; })).substr(0, 2), "13");
  EXPECT_EQ(raisedBy(streamOf([i = 0]() mutable {
              return ++i == 1 ? Variant(u"<r>") : PieceStream::bytesOf("</r>");
            })).substr(0, 2),
            "13");
  EXPECT_EQ(raisedBy(1).substr(0, 2), "13");
  EXPECT_EQ(raisedBy(Variant(nullptr)).substr(0, 2), "91");
  EXPECT_EQ(raisedBy(make<Object>()).substr(0, 3), "438");
  EXPECT_EQ(events.errors, 0);

  struct Refusing : XmlEvents {
    void characters(StringView) override { throw Error(5, u"handler", u"Enough"); }
  } refusing;
  EXPECT_EQ(raisedError([&] { xml().parse(u"<r><a>x</a><b/></r>", refusing); }), "5|handler|Enough");
  EXPECT_EQ(refusing.text, "<r><a>");
}

}  // namespace
}  // namespace zelUtilities
