// Documents that mean harm, and sizes that break recursion and whatever is quadratic.
#include "platform/Files.h"
#include "platform/XmlNodes.h"
#include "support/ScratchFolder.h"
#include "support/XmlTexts.h"

namespace zelUtilities {
namespace {

// Why a document was not read; nothing when it was.
std::string refusal(const String& xml) {
  const LateBound document = newDocument();
  return document.isTrue(u"loadXML", xml) ? "" : seen(document, u"parseError.reason");
}
void expectRefused(const String& xml, std::string_view reason) {
  EXPECT_NE(refusal(xml).find(reason), std::string::npos) << refusal(xml);
}

TEST(XmlDocumentSafety, ElementsMayBeNestedFiveThousandDeepAndLessWithADocumentType) {
  EXPECT_EQ(seen(documentOf(nested(5000)), u"selectNodes{//a}.length"), "5000");
  for (const int depth : {5001, 1'000'000}) expectRefused(nested(depth), "more than 5000 deep");
  EXPECT_EQ(refusal(u"<!DOCTYPE a>" + nested(200)), "");
  EXPECT_NE(refusal(u"<!DOCTYPE a>" + nested(300)), "");
}

TEST(XmlDocumentSafety, EntitiesAndValuesOfTheDocumentTypeAreExpandedWithinLimits) {
  EXPECT_EQ(seen(u"<!DOCTYPE a [<!ENTITY e 'x<b/>y'><!ENTITY f 'z'>]><a c='&f;'>&e;-&e;</a>", u"xml"),
            "<a c=\"z\">x<b/>y-x<b/>y</a>");
  const String type = u"<!DOCTYPE a [<!ATTLIST b c CDATA '" + String(100'000, u'x') + u"'>]>";
  EXPECT_EQ(seen(type + u"<a><b/></a>", u"selectSingleNode{//@c}.text").size(), 100'000U);
  expectRefused(type + u"<a>" + repeated(u"<b/>", 1000) + u"</a>", "stand for too much");
}

TEST(XmlDocumentSafety, NothingElseIsRead) {
  const ScratchFolder scratch;
  const String secret = files().fullPath(u"secret.txt");
  files().replaceWhole(secret, "<!ENTITY s 'secret'>");
  const String atSecret = u" SYSTEM '" + secret + u"'>";
  const String entity = u"<!DOCTYPE a [<!ENTITY e" + atSecret + u"]>", whole = u"<!DOCTYPE a" + atSecret;
  expectRefused(entity + u"<a>&e;</a>", "External entities");
  expectRefused(entity + u"<a b='&e;'/>", "xternal entit");
  expectRefused(u"<!DOCTYPE a [<!ENTITY % e" + atSecret + u"%e;]><a>&s;</a>", "External entities");
  for (const StringView use : {u"<a>&s;</a>", u"<a b='&s;'/>"})
    expectRefused(whole + String(use), "not defined");
  // To name such things is no harm.
  for (const String& named : {entity, whole}) EXPECT_EQ(refusal(named + u"<a/>"), "");
}

TEST(XmlDocumentSafety, ADocumentOfAMillionLevelsCanBeBuiltAndEnded) {
  const LateBound document = newDocument();
  LateBound inner = document;
  for (int i = 0; i < 1'000'000; ++i)
    inner = inner.object(u"appendChild", document.object(u"createElement", u"a"));
  inner.put(u"text", u"x");
  EXPECT_EQ(seen(document, u"text selectNodes{//text()}.length"), "x|1");
  EXPECT_EQ(document.object(u"documentElement").text(u"xml").size(), 7U * 1'000'000 + 1);
  document(u"removeChild", document.object(u"documentElement"));
}

TEST(XmlDocumentSafety, ManyChildrenAreWalkedAndRemovedOneByOne) {
  const LateBound root = rootOf(u"<a>" + repeated(u"<b/>", 300'000) + u"</a>");
  const LateBound children = root.object(u"childNodes");
  EXPECT_EQ(children.items().size(), 300'000U);
  for (int i = children.number(u"length") - 1; i >= 0; --i)
    EXPECT_FALSE(children.object(u"item", i).isNothing());
  EXPECT_EQ(seen(root, u"selectNodes{b[@c or position()<10]}.length"), "9");
  while (children.number(u"length") > 0) root(u"removeChild", children.object(u"item", 0));
  EXPECT_EQ(seen(root, u"xml"), "<a/>");
}

TEST(XmlDocumentSafety, LargeDocumentsAreReadAndSaved) {
  const ScratchFolder scratch;
  const String text(12'000'000, u'\u20AC');
  const String path = files().fullPath(u"large.xml");
  const LateBound document = documentOf(u"<?xml version='1.0' encoding='ISO-8859-15'?><a>" + text + u"</a>");
  document(u"save", path);
  EXPECT_EQ(files().details(path).length, 55 + text.size());
  ASSERT_TRUE(document.isTrue(u"load", path));
  EXPECT_TRUE(document.text(u"text") == text);
}

TEST(XmlDocumentSafety, PatternsDoNotLeadWhereNoNodesAre) {
  const LateBound root = rootOf(u"<!DOCTYPE a [<!ENTITY e '<b c=\"1\"/>'>]><a d='2'>&e;</a>");
  EXPECT_EQ(seen(root,
                 u"selectNodes{preceding::* | preceding::*/@* | namespace::*}.length "
                 u"ownerDocument.firstChild.selectSingleNode{node()}"),
            "0|Nothing");
  const LateBound attribute = root.object(u"attributes").object(u"item", 0);
  root(u"removeAttribute", u"d");
  EXPECT_EQ(seen(attribute, u"selectSingleNode{preceding::*}"), "Nothing");
}

TEST(XmlDocumentSafety, PatternsOfAnyShapeAreRefusedOrAnswered) {
  const LateBound root = rootOf(u"<a/>");
  ::testing::internal::CaptureStderr();
  for (const String& pattern :
       {String(), String(u"["), String(u"'"), String(u"a["), String(u"a[0"), String(u":"), String(u"p:"),
        String(u"$x"), String(u"a]"), String(1, u'\xD800'), String(100'000, u'('), String(u"id('x') | $a"),
        String(u"document('x')")})
    EXPECT_THROW(root(u"selectSingleNode", pattern), Error) << toUtf8(pattern.substr(0, 20));
  EXPECT_EQ(seen(root, u"selectSingleNode{a[99999999999999999999]}"), "Nothing");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace zelUtilities
