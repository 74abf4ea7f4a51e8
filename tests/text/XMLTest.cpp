#include "text/zelXML.h"

#include <gtest/gtest.h>

#include "automation/ArrayData.h"
#include "automation/LocaleGuard.h"
#include "foundation/ClassRegistry.h"
#include "platform/Locale.h"
#include "support/RaisedError.h"
#include "support/Spelled.h"
#include "text/TextClasses.h"
#include "text/TextSearch.h"

namespace zelUtilities {
namespace {

std::string toXML(StringView text) { return toUtf8(zel_ToXML(text)); }
std::string fromXML(StringView text) { return toUtf8(zel_FromXML(text)); }

TEST(XMLText, ReservedCharactersAreEscapedAndReadBackOnceEach) {
  const std::pair<StringView, StringView> pairs[] = {{u"a<b & 'c'", u"a&lt;b &amp; &apos;c&apos;"},
                                                     {u"\"x\">", u"&quot;x&quot;&gt;"},
                                                     {u"&lt;", u"&amp;lt;"},
                                                     {u"plain text\r\n", u"plain text\r\n"},
                                                     {u"", u""}};
  for (const auto& [text, xml] : pairs) {
    EXPECT_EQ(toXML(text), toUtf8(xml));
    EXPECT_EQ(fromXML(xml), toUtf8(text));
  }
  EXPECT_EQ(fromXML(u"&amp;amp;"), "&amp;");
  EXPECT_EQ(fromXML(u"&#233;&&lt &LT; &l&lt;t;&"), "&#233;&&lt &LT; &l<t;&");  // what is no entity stays
}

TEST(XMLText, NumericTextsStay) {
  Locale swiss;
  swiss.thousandsSeparator = String(1, u'\'');
  const LocaleGuard guard(swiss);
  EXPECT_EQ(toXML(u"1'000.50") + toXML(u"1'000 <"), "1'000.501&apos;000 &lt;");
}

TEST(XMLText, CharactersBeyondAsciiAreWrittenByTheirCodePageValueIfTheyHaveOne) {
  EXPECT_EQ(toXML(u"\u0152uvre \u20AC5<6 caf\u00FF"), "&#140;uvre &#128;5&lt;6 caf&#255;");
  // Nor do look-alikes of the code page stand for a beta or a D with a stroke.
  EXPECT_EQ(toXML(u"\u4E2D<\U0001F600\u03B2\u0110"), "\xE4\xB8\xAD&lt;\xF0\x9F\x98\x80\xCE\xB2\xC4\x90");
}

TEST(XMLText, AnAttributeIsWrittenUnlessItsValueIsEmptyOrTheDefault) {
  const std::tuple<StringView, Variant, StringView> cases[] = {
      {u"5", u"5", u""},
      {u"", u"5", u""},
      {u"6", u"5", u" w='6'"},
      {u"a'b", u"", u" w='a&apos;b'"},
      {u"5", 5, u" w='5'"},  // a number is less than any text
      {u"5", Variant::null(), u" w='5'"}};
  for (const auto& [value, byDefault, attribute] : cases)
    EXPECT_EQ(toUtf8(zel_AttrFromValue(u"w", value, byDefault)), toUtf8(attribute));
  EXPECT_EQ(raisedError([] { zel_AttrFromValue(u"w", u"5", ArrayData::ofVariants({})); }),
            "13|mXML.AttrFromValue::|Type mismatch");
}

TEST(XMLText, AnElementIsALineAndChildMarkupStandsOnLinesOfItsOwn) {
  const auto element = [](StringView value, StringView attributes = {}, bool isChild = false,
                          StringView margin = {}) {
    return toUtf8(zel_ElementFromValue(u"A", value, margin, attributes, isChild, u"def"));
  };
  EXPECT_EQ(element(u"def") + toUtf8(zel_ElementFromValue(u"A", u"")), "");
  EXPECT_EQ(element(u"def", u"x='1'") + element(u"1<2"), "<A x='1'>def</A>\r\n<A>1&lt;2</A>\r\n");
  EXPECT_EQ(element(u"", u" x='1'", true, u"  "), "  <A x='1' />\r\n");
  EXPECT_EQ(element(u" <B>1</B>\r\n\r\n<C/> \r\n \r\n", u"", false, u" "),
            " <A>\r\n   <B>1</B>\r\n<C/> \r\n \r\n </A>\r\n");
  EXPECT_EQ(element(u"x", u"", true), "<A>\r\n  x\r\n</A>\r\n");
  for (const StringView noMarkup : {u"<B>", u"<B/>x", u"x<B/>", u"<B/>\n", u"<B/>\r\n\n"})
    EXPECT_EQ(element(noMarkup), "<A>" + toXML(noMarkup) + "</A>\r\n");
}

TEST(XMLText, FixedLines) {
  EXPECT_EQ(
      spelled({zel_XMLCatalogEntry(-7, u"k'", u"<d>"), zel_XMLError(u"a<b"), zel_SQLQuote(u"O'Brien \"''")}),
      "    <CatalogEntry ID='-7' Key='k'' Description='<d>' />\r\n|"
      "    <Error Description='a&lt;b' />\r\n|'O''Brien \"'''''");
  EXPECT_EQ(toUtf8(zel_XMLError(u"", u"s&", u"c'", u" ")),
            " <Error Description='' Source='s&amp;' Context='c&apos;' />\r\n");
  EXPECT_EQ(zel_ToXMLBoolean(zel_FromXMLBoolean(u"TRUE")), u"true");
  for (const StringView no : {u"-1", u"1", u"yes", u"true ", u""}) EXPECT_FALSE(zel_FromXMLBoolean(no));
}

TEST(XMLText, FormattingPutsEachTagOnALine) {
  const auto expect = [](StringView xml, StringView lines) {
    EXPECT_EQ(toUtf8(replaceEach(zel_FormatXML(xml), u"\r\n", u"|")), toUtf8(lines)) << toUtf8(xml);
  };
  expect(u"<a><b>x</b><c/></a>", u"<a>|    <b>|x</b>|    <c/>|</a>|");
  expect(u"  <a>  x y  </a>\r\n  <b />  ", u"<a>|x y</a>|<b />|");
  expect(u"<?xml?><a/>", u"<?xml?>|    <a/>|");
  expect(u"x<a>y<b>z", u"x<a>|y    <b>|z");
  expect(u"</a></a/><b>", u"</a>|</a/>|<b>|");
  expect(u"<a><b", u"<a>|    <b");
  expect(u"> \r\n x \r\n\n<", u">x \n<");
}

TEST(XMLText, FormattingCountsThePositionsOfTagsIn16Bits) {
  const String longest = u"<" + String(32765, u'a') + u">";
  EXPECT_EQ(zel_FormatXML(longest + u"text").size(), 32773U);
  EXPECT_EQ(zel_FormatXML(u"<a>" + String(100'000, u'x')).size(), 100'005U);
  for (const String& tooLong : {u"x" + longest, longest + u"<b", String(32767, u'x') + u"<"})
    EXPECT_EQ(raisedError([&] { zel_FormatXML(tooLong); }), "6|mXML.FormatXML::|Overflow");
}

TEST(XMLText, ItsClassesAndOperationsAreFoundByName) {
  ClassRegistry registry;
  registerText(registry);
  EXPECT_TRUE(registry.create(u"zelUtilities.zelStringCat"));
  Variant source[] = {u"a<b"};
  const Ref<Object> functions = ClassRegistry::instance(*registry.findOperation(u"zel_ToXML")->functionClass);
  EXPECT_EQ(functions->Invoke(u"zel_ToXML", InvokeKind::Method, source).text(), u"a&lt;b");
}

}  // namespace
}  // namespace zelUtilities
