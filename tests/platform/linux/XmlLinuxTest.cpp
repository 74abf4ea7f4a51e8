// Where the reader over libxml2 goes further than the contract asks, and where it stops.
#include <gtest/gtest.h>

#include "support/PieceStream.h"
#include "support/RaisedError.h"
#include "support/XmlEvents.h"
#include "support/XmlTexts.h"

namespace zelUtilities {
namespace {

std::string message(const Variant& source) {
  XmlEvents events;
  raisedError([&] { xml().parse(source, events); });
  return events.message;
}

TEST(XmlLinux, ReplacesTheDocumentsOwnEntities) {
  EXPECT_EQ(
      XmlEvents::of(u"<!DOCTYPE r [<!ENTITY e 'x<b c=\"&f;\"/>y'><!ENTITY f 'z'>]><r a='&f;'>&e;-&e;</r>"),
      "<r a=z>x<b c=z></b>y-x<b c=z></b>y</r>");
  EXPECT_EQ(XmlEvents::of(u"<!DOCTYPE r [<!ENTITY % p '<!ENTITY e \"x\">'>%p;]><r>&e;</r>"), "<r>x</r>");
  EXPECT_EQ(message(u"<!DOCTYPE r [<!ENTITY e SYSTEM 'file:///etc/passwd'>]><r>&e;</r>"),
            "External entities are not read.");
}

TEST(XmlLinux, StopsWhereADocumentGoesTooFarOrNotFarEnough) {
  for (const StringView xml : {u"", u"<r", u"<r>\n<a>x</a>", u"<r><![CDATA["})
    EXPECT_EQ(message(xml), "The document ends too early.");
  EXPECT_EQ(message(u"<r/><s/>"), "Extra content at the end of the document");
  EXPECT_EQ(message(nested(5000)), "");
  EXPECT_EQ(message(repeated(u"<a>", 5001)), "Elements are nested more than 5000 deep.");
  const String million(1'000'000, u'x');
  for (const String& xml : {u"<!ENTITY e '" + million + u"'>]><r>" + repeated(u"&e;", 1000),
                            u"<!ENTITY e '" + million + u"'>]><r>" + repeated(u"<a b='&e;'/>", 1000),
                            u"<!ENTITY e '" + repeated(u"<a/>", 10'000) + u"'>]><r>" + repeated(u"&e;", 2000),
                            u"<!ATTLIST a b CDATA '" + million + u"'>]><r>" + repeated(u"<a/>", 1000)})
    EXPECT_EQ(message(u"<!DOCTYPE r [" + xml + u"</r>"), "The document's entities stand for too much.");
  for (const auto& [start, end] : {std::pair(u"<r a='", u"'/>"), std::pair(u"<!--", u"--><r/>")})
    EXPECT_NE(message(start + repeated(million, 20) + end), "");
  EXPECT_EQ(message(u"<r>" + repeated(million, 20) + u"</r>"), "");
}

TEST(XmlLinux, RefusesWhatIsNoCharacterWhereverItStands) {
  for (const char16_t unit : {u'\0', u'\xD800', u'\xDC00'}) {
    for (const StringView xml :
         {u"<r>@</r>", u"<r/>@", u"@<r/>", u"<r a='@'/>", u"<r@/>", u"<r><!--@--></r>"}) {
      String bad(xml);
      bad[bad.find(u'@')] = unit;
      EXPECT_EQ(XmlEvents::of(bad).back(), '!') << toUtf8(xml) << " " << static_cast<int>(unit);
    }
  }
}

TEST(XmlLinux, KeepsItsComplaintsToItself) {
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(
      XmlEvents::of(PieceStream::of(std::string_view("\xFF\xFE<\0r\0>\0\0\xD8<\0/\0r\0>\0", 18), 100)).back(),
      '!');
  EXPECT_EQ(XmlEvents::of(u"<r xmlns='a b'/>"), "<{a b}r|r {}|xmlns=a b></r>");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

TEST(XmlLinux, ManyNamesAreToldApart) {
  String xml = u"<r>";
  std::string expected = "<r>";
  for (int i = 0; i < 40'000; ++i) {
    const std::string name = "n" + std::to_string(i);
    xml += fromUtf8("<" + name + " xmlns='" + name + "'/>");
    expected += "<{" + name + "}" + name + "|" + name + " {}|xmlns=" + name + "></" + name + ">";
  }
  EXPECT_TRUE(XmlEvents::of(xml + u"</r>") == expected + "</r>");
}

}  // namespace
}  // namespace zelUtilities
