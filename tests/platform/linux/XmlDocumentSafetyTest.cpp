// Documents that mean harm, and sizes that break recursion and whatever is quadratic.
#include <gtest/gtest.h>

#include <string>

#include "automation/Error.h"
#include "platform/Files.h"
#include "platform/LateBound.h"

namespace zelUtilities {
namespace {

LateBound newDocument() { return LateBound::create(u"MSXML.DOMDocument"); }

String nested(int depth) {
  String xml;
  for (int i = 0; i < depth; ++i) xml.append(u"<a>");
  for (int i = 0; i < depth; ++i) xml.append(u"</a>");
  return xml;
}

void expectRefused(const LateBound& document, const String& xml, StringView reason) {
  EXPECT_FALSE(document.isTrue(u"loadXML", xml));
  const String given = document.object(u"parseError").text(u"reason");
  EXPECT_NE(given.find(reason), String::npos) << toUtf8(given);
}

TEST(XmlDocumentSafety, ElementsMayBeNestedFiveThousandDeep) {
  const LateBound document = newDocument();
  EXPECT_TRUE(document.isTrue(u"loadXML", nested(5000)));
  EXPECT_EQ(document.object(u"selectNodes", u"//a").number(u"length"), 5000);
  expectRefused(document, nested(5001), u"more than 5000 deep");
  expectRefused(document, nested(1'000'000), u"more than 5000 deep");
}

TEST(XmlDocumentSafety, ADocumentTypeHasTighterLimits) {
  EXPECT_TRUE(newDocument().isTrue(u"loadXML", u"<!DOCTYPE a>" + nested(200)));
  EXPECT_FALSE(newDocument().isTrue(u"loadXML", u"<!DOCTYPE a>" + nested(300)));
}

TEST(XmlDocumentSafety, EntitiesAreExpandedWithinLimits) {
  const LateBound document = newDocument();
  EXPECT_TRUE(document.isTrue(u"loadXML",
                              u"<!DOCTYPE a [<!ENTITY e 'x<b/>y'><!ENTITY f 'z'>]><a c='&f;'>&e;-&e;</a>"));
  const LateBound root = document.object(u"documentElement");
  EXPECT_EQ(root.text(u"xml"), u"<a c=\"z\">x<b/>y-x<b/>y</a>");

  String bomb = u"<!DOCTYPE a [<!ENTITY e0 'ten bytes.'>";
  for (char16_t i = u'1'; i <= u'9'; ++i) {
    bomb.append(u"<!ENTITY e").append(1, i).append(u" '");
    for (int j = 0; j < 10; ++j) bomb.append(u"&e").append(1, static_cast<char16_t>(i - 1)).append(u";");
    bomb.append(u"'>");
  }
  EXPECT_FALSE(document.isTrue(u"loadXML", bomb + u"]><a>&e9;</a>"));
  EXPECT_FALSE(document.isTrue(u"loadXML", bomb + u"]><a b='&e9;'/>"));
  EXPECT_FALSE(document.isTrue(u"loadXML", u"<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f '&e;'>]><a>&e;</a>"));

  // One long entity, often.
  String often = u"<!DOCTYPE a [<!ENTITY e '" + String(1'000'000, u'x') + u"'>]><a>";
  for (int i = 0; i < 1000; ++i) often.append(u"&e;");
  EXPECT_FALSE(document.isTrue(u"loadXML", often + u"</a>"));
}

TEST(XmlDocumentSafety, ValuesFromADocumentTypeAreBounded) {
  String xml = u"<!DOCTYPE a [<!ATTLIST b c CDATA '" + String(100'000, u'x') + u"'>]><a>";
  const LateBound document = newDocument();
  EXPECT_TRUE(document.isTrue(u"loadXML", xml + u"<b/></a>"));
  EXPECT_EQ(document.object(u"selectSingleNode", u"//@c").text(u"text").size(), 100'000U);
  for (int i = 0; i < 1000; ++i) xml.append(u"<b/>");
  expectRefused(document, xml + u"</a>", u"Too many values");
}

TEST(XmlDocumentSafety, NothingElseIsRead) {
  const String secret = files().fullPath(u"secret.txt");
  files().replaceWhole(secret, "<!ENTITY s 'secret'>");
  const String atSecret = u" SYSTEM '" + secret + u"'>";
  const LateBound document = newDocument();
  expectRefused(document, u"<!DOCTYPE a [<!ENTITY e" + atSecret + u"]><a>&e;</a>", u"External entities");
  expectRefused(document, u"<!DOCTYPE a [<!ENTITY e" + atSecret + u"]><a b='&e;'/>", u"xternal entit");
  expectRefused(document, u"<!DOCTYPE a [<!ENTITY % e" + atSecret + u"%e;]><a>&s;</a>", u"External entities");
  expectRefused(document, u"<!DOCTYPE a" + atSecret + u"<a>&s;</a>", u"not defined");
  expectRefused(document, u"<!DOCTYPE a" + atSecret + u"<a b='&s;'/>", u"not defined");
  // To name such things is no harm.
  EXPECT_TRUE(document.isTrue(u"loadXML", u"<!DOCTYPE a [<!ENTITY e" + atSecret + u"]><a/>"));
  EXPECT_TRUE(document.isTrue(u"loadXML", u"<!DOCTYPE a" + atSecret + u"<a/>"));
}

TEST(XmlDocumentSafety, ADocumentOfAMillionLevelsCanBeBuiltAndEnded) {
  const LateBound document = newDocument();
  LateBound inner = document.object(u"appendChild", document.object(u"createElement", u"a"));
  for (int i = 1; i < 1'000'000; ++i)
    inner = inner.object(u"appendChild", document.object(u"createElement", u"a"));
  inner.put(u"text", u"x");
  const LateBound root = document.object(u"documentElement");
  EXPECT_EQ(root.text(u"text"), u"x");
  EXPECT_EQ(root.text(u"xml").size(), 7U * 1'000'000 + 1);
  EXPECT_EQ(document.object(u"selectNodes", u"//text()").number(u"length"), 1);
  document(u"removeChild", root);
}

TEST(XmlDocumentSafety, ManyChildrenAreWalkedAndRemovedOneByOne) {
  constexpr int count = 300'000;
  String xml = u"<a>";
  for (int i = 0; i < count; ++i) xml.append(u"<b/>");
  const LateBound document = newDocument();
  ASSERT_TRUE(document.isTrue(u"loadXML", xml + u"</a>"));
  const LateBound root = document.object(u"documentElement");
  const LateBound children = root.object(u"childNodes");
  EXPECT_EQ(children.items().size(), static_cast<std::size_t>(count));
  for (int i = children.number(u"length") - 1; i >= 0; --i)
    EXPECT_FALSE(children.object(u"item", i).isNothing());
  EXPECT_EQ(root.object(u"selectNodes", u"b[@c or position()<10]").number(u"length"), 9);
  while (children.number(u"length") > 0) root(u"removeChild", children.object(u"item", 0));
  EXPECT_EQ(document.text(u"xml"), u"<a/>\r\n");
}

TEST(XmlDocumentSafety, LargeDocumentsAreReadAndSaved) {
  const LateBound document = newDocument();
  const String text(12'000'000, u'\u20AC');
  ASSERT_TRUE(
      document.isTrue(u"loadXML", u"<?xml version='1.0' encoding='ISO-8859-15'?><a>" + text + u"</a>"));
  const String path = files().fullPath(u"large.xml");
  document(u"save", path);
  EXPECT_EQ(files().details(path).length, 55 + text.size());
  ASSERT_TRUE(document.isTrue(u"load", path));
  EXPECT_TRUE(document.text(u"text") == text);
}

TEST(XmlDocumentSafety, PatternsDoNotLeadWhereNoNodesAre) {
  const LateBound document = newDocument();
  document(u"loadXML", u"<!DOCTYPE a [<!ENTITY e '<b c=\"1\"/>'>]><a d='2'>&e;</a>");
  const LateBound root = document.object(u"documentElement");
  EXPECT_EQ(root.object(u"selectNodes", u"preceding::* | preceding::*/@* | namespace::*").number(u"length"),
            0);
  EXPECT_TRUE(document.object(u"firstChild").object(u"selectSingleNode", u"node()").isNothing());
  const LateBound attribute = root.object(u"attributes").object(u"item", 0);
  root(u"removeAttribute", u"d");
  EXPECT_TRUE(attribute.object(u"selectSingleNode", u"preceding::*").isNothing());
}

TEST(XmlDocumentSafety, PatternsOfAnyShapeAreRefusedOrAnswered) {
  const LateBound document = newDocument();
  document(u"loadXML", u"<a/>");
  ::testing::internal::CaptureStderr();
  for (const String& pattern :
       {String(), String(u"["), String(u"'"), String(u"a["), String(u"a[0"), String(u":"), String(u"p:"),
        String(u"$x"), String(u"a]"), String(1, u'\xD800'), String(100'000, u'('), String(u"id('x') | $a"),
        String(u"document('x')")})
    EXPECT_THROW(document(u"selectSingleNode", pattern), Error) << toUtf8(pattern.substr(0, 20));
  EXPECT_TRUE(document.object(u"selectSingleNode", u"a[99999999999999999999]").isNothing());
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace zelUtilities
