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
}

TEST(XMLText, NumericTextsStay) {
  EXPECT_EQ(toXML(u"12.5"), "12.5");
  Locale swiss;
  swiss.thousandsSeparator = String(1, u'\'');
  const LocaleGuard guard(swiss);
  EXPECT_EQ(toXML(u"1'000.50"), "1'000.50");
  EXPECT_EQ(toXML(u"1'000 <"), "1&apos;000 &lt;");
}

TEST(XMLText, CharactersBeyondAsciiAreWrittenByTheirCodePageValueIfTheyHaveOne) {
  EXPECT_EQ(toXML(u"caf\u00E9 \u20AC5<6"), "caf&#233; &#128;5&lt;6");
  EXPECT_EQ(toXML(u"\u0152uvre\u00FF"), "&#140;uvre&#255;");
  EXPECT_EQ(toXML(u"\u4E2D<\U0001F600"), "\xE4\xB8\xAD&lt;\xF0\x9F\x98\x80");
}

TEST(XMLText, WhatIsNoEntityStays) {
  EXPECT_EQ(fromXML(u"&#233;&&lt &LT; &l&lt;t;&"), "&#233;&&lt &LT; &l<t;&");
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
