#include "text/zelXML.h"

#include <gtest/gtest.h>

#include "automation/LocaleGuard.h"
#include "foundation/ClassRegistry.h"
#include "platform/Locale.h"
#include "text/TextClasses.h"

namespace zelUtilities {
namespace {

std::string toXML(StringView text) { return toUtf8(zel_ToXML(text)); }
std::string fromXML(StringView text) { return toUtf8(zel_FromXML(text)); }

TEST(XMLText, ReservedCharactersAreEscaped) {
  EXPECT_EQ(toXML(u"a<b & 'c'"), "a&lt;b &amp; &apos;c&apos;");
  EXPECT_EQ(toXML(u"\"x\">"), "&quot;x&quot;&gt;");
  EXPECT_EQ(toXML(u"&lt;"), "&amp;lt;");
  EXPECT_EQ(toXML(u"plain text\r\n"), "plain text\r\n");
  EXPECT_EQ(toXML(u""), "");
}

TEST(XMLText, NumericTextsStay) {
  EXPECT_EQ(toXML(u"12.5"), "12.5");
  Locale swiss;
  swiss.thousandsSeparator = String(1, u'\'');
  const LocaleGuard guard(swiss);
  EXPECT_EQ(toXML(u"1'000.50"), "1'000.50");
  EXPECT_EQ(toXML(u"1'000 <"), "1&apos;000 &lt;");
}

TEST(XMLText, CharactersBeyondAsciiAreWrittenByTheirCodePageValue) {
  EXPECT_EQ(toXML(u"caf\u00E9 \u20AC5<6"), "caf&#233; &#128;5&lt;6");
  EXPECT_EQ(toXML(u"\u0152uvre\u00FF"), "&#140;uvre&#255;");
}

TEST(XMLText, CharactersWithoutACodeStay) {
  EXPECT_EQ(toXML(u"\u4E2D<\U0001F600"), "\xE4\xB8\xAD&lt;\xF0\x9F\x98\x80");
}

TEST(XMLText, EntitiesAreReadOnceEach) {
  EXPECT_EQ(fromXML(u"&lt;&gt;&apos;&quot;&amp;"), "<>'\"&");
  EXPECT_EQ(fromXML(u"&amp;lt;"), "&lt;");
  EXPECT_EQ(fromXML(u"&amp;amp;"), "&amp;");
}

TEST(XMLText, WhatIsNoEntityStays) {
  EXPECT_EQ(fromXML(u"&#233;&&lt &LT; &l&lt;t;&"), "&#233;&&lt &LT; &l<t;&");
  EXPECT_EQ(fromXML(u"a&"), "a&");
  EXPECT_EQ(fromXML(u"no reference"), "no reference");
}

TEST(XMLText, WhatWasEscapedReadsBackWhereTheCodePageIsAscii) {
  const String text = u"<a b='c & d' e=\"f\">&lt;</a>";
  EXPECT_EQ(zel_FromXML(zel_ToXML(text)), text);
}

TEST(XMLText, TheOperationsAreGlobal) {
  ClassRegistry registry;
  registerText(registry);
  const auto operation = registry.findOperation(u"zel_ToXML");
  ASSERT_TRUE(operation);
  Variant source[] = {u"a<b"};
  Object& functions = *ClassRegistry::instance(*operation->functionClass).get();
  EXPECT_EQ(functions.Invoke(u"zel_ToXML", InvokeKind::Method, source).text(), u"a&lt;b");
  EXPECT_TRUE(registry.create(u"zelUtilities.zelStringCat"));
}

}  // namespace
}  // namespace zelUtilities
