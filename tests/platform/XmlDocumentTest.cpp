// What the XML document answers on every system.
#include <gtest/gtest.h>

#include "automation/Error.h"
#include "platform/LateBound.h"

namespace zelUtilities {
namespace {

LateBound newDocument(bool preserveWhiteSpace = false) {
  LateBound document = LateBound::create(u"MSXML.DOMDocument");
  document.put(u"async", false);
  document.put(u"preserveWhiteSpace", preserveWhiteSpace);
  return document;
}

LateBound documentOf(StringView xml, bool preserveWhiteSpace = false) {
  LateBound document = newDocument(preserveWhiteSpace);
  EXPECT_TRUE(document.isTrue(u"loadXML", xml)) << toUtf8(xml);
  return document;
}

LateBound rootOf(StringView xml, bool preserveWhiteSpace = false) {
  return documentOf(xml, preserveWhiteSpace).object(u"documentElement");
}

String namesIn(const std::vector<LateBound>& nodes) {
  String names;
  for (const LateBound& node : nodes) names.append(names.empty() ? u"" : u" ").append(node.text(u"nodeName"));
  return names;
}

TEST(XmlDocument, IsEmptyUntilItIsLoaded) {
  const LateBound document = newDocument();
  EXPECT_TRUE(document.object(u"documentElement").isNothing());
  EXPECT_TRUE(document.object(u"selectSingleNode", u"a").isNothing());
  EXPECT_EQ(document.text(u"xml"), u"");
  EXPECT_EQ(document.object(u"parseError").number(u"errorCode"), 0);
  EXPECT_FALSE(LateBound::create(u"MSXML.DOMDocument").isTrue(u"preserveWhiteSpace"));
}

TEST(XmlDocument, MembersAreFoundInAnyLetterCase) {
  LateBound document = newDocument();
  EXPECT_TRUE(document.isTrue(u"LOADxml", u"<a><b/></a>"));
  EXPECT_EQ(document.object(u"DocumentElement").object(u"FIRSTCHILD").text(u"NodeName"), u"b");
}

TEST(XmlDocument, NodesLeadToTheirNeighbours) {
  const LateBound root = rootOf(u"<a><b/>t<c/></a>");
  const LateBound text = root.object(u"firstChild").object(u"nextSibling");
  EXPECT_EQ(text.text(u"nodeValue"), u"t");
  EXPECT_EQ(text.object(u"previousSibling").text(u"nodeName"), u"b");
  EXPECT_EQ(root.object(u"lastChild").text(u"nodeName"), u"c");
  EXPECT_EQ(text.object(u"parentNode").text(u"tagName"), u"a");
  EXPECT_EQ(root.object(u"parentNode").text(u"nodeName"), u"#document");
  EXPECT_EQ(text.object(u"ownerDocument").object(u"documentElement").text(u"nodeName"), u"a");
}

TEST(XmlDocument, AMissingNodeIsNothing) {
  const LateBound root = rootOf(u"<a b='1'/>");
  for (const StringView name : {u"firstChild", u"lastChild", u"nextSibling", u"previousSibling"})
    EXPECT_TRUE(root.object(name).isNothing()) << toUtf8(name);
  EXPECT_TRUE(root.object(u"selectSingleNode", u"c").isNothing());
  EXPECT_TRUE(root.object(u"childNodes").object(u"item", 0).isNothing());
  EXPECT_TRUE(root.object(u"childNodes").object(u"item", -1).isNothing());
  EXPECT_TRUE(root.object(u"attributes").object(u"getNamedItem", u"c").isNothing());
  EXPECT_TRUE(root.object(u"attributes").object(u"item", 1).isNothing());
  EXPECT_FALSE(root.isTrue(u"hasChildNodes"));
}

TEST(XmlDocument, EveryKindOfNodeSaysWhatItIs) {
  const LateBound document =
      documentOf(u"<?xml version=\"1.0\"?><!--c--><a b='v'>t<![CDATA[<&]]><?p d?></a>");
  const LateBound root = document.object(u"documentElement");
  const auto child = [](const LateBound& of, int index) {
    return of.object(u"childNodes").object(u"item", index);
  };
  const struct {
    LateBound node;
    int type;
    StringView typeName, name, value;
  } kinds[] = {{child(document, 0), 7, u"processinginstruction", u"xml", u"version=\"1.0\""},
               {child(document, 1), 8, u"comment", u"#comment", u"c"},
               {root.object(u"attributes").object(u"item", 0), 2, u"attribute", u"b", u"v"},
               {child(root, 0), 3, u"text", u"#text", u"t"},
               {child(root, 1), 4, u"cdatasection", u"#cdata-section", u"<&"},
               {child(root, 2), 7, u"processinginstruction", u"p", u"d"}};
  for (const auto& kind : kinds) {
    EXPECT_EQ(kind.node.number(u"nodeType"), kind.type);
    EXPECT_EQ(kind.node.text(u"nodeTypeString"), kind.typeName);
    EXPECT_EQ(kind.node.text(u"nodeName"), kind.name);
    EXPECT_EQ(kind.node.text(u"nodeValue"), kind.value);
  }
  EXPECT_EQ(document.number(u"nodeType"), 9);
  EXPECT_EQ(root.number(u"nodeType"), 1);
  EXPECT_TRUE(child(root, 0).object(u"attributes").isNothing());
  EXPECT_TRUE(document(u"nodeValue").isNull());
  EXPECT_TRUE(root(u"nodeValue").isNull());
  EXPECT_THROW(root.put(u"nodeValue", u"x"), Error);
}

TEST(XmlDocument, TextJoinsAllTextsBelow) {
  EXPECT_EQ(rootOf(u"<a>x<b>y<!--no--><![CDATA[&z]]></b>&lt;</a>").text(u"text"), u"xy&z<");
  EXPECT_EQ(rootOf(u"<a/>").text(u"text"), u"");
}

TEST(XmlDocument, DropsTextsOfNothingButWhiteSpace) {
  const LateBound root = rootOf(u"<a>\r\n  <b>1</b>\t<b> x  y </b>\n</a>");
  EXPECT_EQ(root.object(u"childNodes").number(u"length"), 2);
  EXPECT_EQ(root.text(u"text"), u"1  x  y");  // words stay apart; none at the ends
  EXPECT_EQ(root.object(u"lastChild").object(u"firstChild").text(u"nodeValue"), u" x  y ");
  EXPECT_EQ(rootOf(u"<a>x<b> </b>y</a>").text(u"text"), u"x y");
  EXPECT_EQ(rootOf(u"<a><![CDATA[ ]]></a>").text(u"text"), u" ");
  EXPECT_EQ(rootOf(u"<a xml:space='preserve'> <b/> </a>").object(u"childNodes").number(u"length"), 3);
}

TEST(XmlDocument, KeepsWhiteSpaceOnDemand) {
  const LateBound root = rootOf(u"<a> <b>1</b>\n</a>", true);
  EXPECT_EQ(root.object(u"childNodes").number(u"length"), 3);
  EXPECT_EQ(root.text(u"text"), u" 1\n");
  EXPECT_EQ(root.text(u"xml"), u"<a> <b>1</b>\r\n</a>");
}

TEST(XmlDocument, LinesEndInLineFeedsInsideAndInBothOutside) {
  const LateBound document = documentOf(u"<a>1\r\n2\r3\n4</a>");
  EXPECT_EQ(document.object(u"documentElement").text(u"text"), u"1\n2\n3\n4");
  EXPECT_EQ(document.text(u"xml"), u"<a>1\r\n2\r\n3\r\n4</a>\r\n");
}

TEST(XmlDocument, ReadsAttributes) {
  const LateBound root = rootOf(u"<a x=' 1 ' y='&lt;&#10;&quot;' z=''/>");
  EXPECT_EQ(root.text(u"getAttribute", u"x"), u" 1 ");
  EXPECT_EQ(root.text(u"getAttribute", u"y"), u"<\n\"");
  EXPECT_EQ(root.text(u"getAttribute", u"z"), u"");
  EXPECT_TRUE(root(u"getAttribute", u"X").isNull());
  const LateBound attributes = root.object(u"attributes");
  EXPECT_EQ(attributes.number(u"length"), 3);
  EXPECT_EQ(attributes.object(u"getNamedItem", u"x").text(u"nodeValue"), u" 1 ");
  EXPECT_EQ(namesIn(attributes.items()), u"x y z");
  EXPECT_TRUE(attributes.object(u"item", 0).object(u"parentNode").isNothing());
  EXPECT_TRUE(attributes.object(u"item", 0).object(u"nextSibling").isNothing());
}

TEST(XmlDocument, SplitsNamesWithAPrefix) {
  const LateBound root = rootOf(u"<a xmlns='u:d' xmlns:p='u:p'><p:b p:c='1' d='2'/><e/></a>");
  const LateBound node = root.object(u"firstChild");
  EXPECT_EQ(node.text(u"nodeName"), u"p:b");
  EXPECT_EQ(node.text(u"baseName"), u"b");
  EXPECT_EQ(node.text(u"prefix"), u"p");
  EXPECT_EQ(node.text(u"namespaceURI"), u"u:p");
  EXPECT_EQ(root.object(u"lastChild").text(u"namespaceURI"), u"u:d");
  EXPECT_EQ(node.text(u"getAttribute", u"p:c"), u"1");
  EXPECT_EQ(root.text(u"getAttribute", u"xmlns:p"), u"u:p");
}

TEST(XmlDocument, SelectsByPatterns) {
  const LateBound root =
      rootOf(u"<r><c k='1'>A</c><c k='2'>B<e/></c><D><c k='3'>C</c></D><p:q xmlns:p='u:p'/></r>");
  const struct {
    StringView pattern, names;
  } cases[] = {{u"c", u"c c"},
               {u"//c", u"c c c"},
               {u"D/c", u"c"},
               {u"d", u""},
               {u"*", u"c c D p:q"},
               {u"/r", u"r"},
               {u".", u"r"},
               {u"..", u"#document"},
               {u"D | c", u"c c D"},
               {u"//@k", u"k k k"},
               {u"c[e]", u"c"},
               {u"c[not(e)]", u"c"},
               {u"//c[@k='1' or @k='3']", u"c c"},
               {u"//c[@k $eq$ '1' || @k='3']", u"c c"},
               {u"c[@k='1' and .='B']", u""},
               {u"p:q", u"p:q"},
               {u"c/text()", u"#text #text"}};
  for (const auto& [pattern, names] : cases)
    EXPECT_EQ(namesIn(root.object(u"selectNodes", pattern).items()), names) << toUtf8(pattern);
}

TEST(XmlDocument, PositionsInPatternsCountFromZero) {
  const LateBound root = rootOf(u"<r><c>A</c><c>[0]</c><c>C</c></r>");
  const auto selected = [&](StringView pattern) {
    return root.object(u"selectSingleNode", pattern).text(u"text");
  };
  EXPECT_EQ(selected(u"c[0]"), u"A");
  EXPECT_EQ(selected(u"c[ 2 ]"), u"C");
  EXPECT_EQ(selected(u"c[.='[0]']"), u"[0]");
  EXPECT_EQ(selected(u"c[index()=1]"), u"[0]");
  EXPECT_EQ(selected(u"c[end()]"), u"C");
  EXPECT_TRUE(root.object(u"selectSingleNode", u"c[3]").isNothing());
}

TEST(XmlDocument, WhatSelectsNoNodesIsAnError) {
  EXPECT_THROW(rootOf(u"<a/>")(u"selectNodes", u"count(b)"), Error);
}

TEST(XmlDocument, ListsAreWalkedByPositionAndByItem) {
  const LateBound root = rootOf(u"<a><b/><c/><d/></a>");
  for (const LateBound& list : {root.object(u"childNodes"), root.object(u"selectNodes", u"*")}) {
    EXPECT_EQ(list.number(u"length"), 3);
    EXPECT_EQ(list.object(u"", 2).text(u"nodeName"), u"d");
    EXPECT_EQ(list.object(u"item", 0).text(u"nodeName"), u"b");
    EXPECT_EQ(namesIn(list.items()), u"b c d");
  }
}

TEST(XmlDocument, ChildNodesFollowChanges) {
  const LateBound root = rootOf(u"<a><b/><c/><d/></a>");
  const LateBound children = root.object(u"childNodes");
  EXPECT_EQ(children.object(u"item", 1).text(u"nodeName"), u"c");
  root(u"removeChild", root.object(u"firstChild"));
  EXPECT_EQ(children.number(u"length"), 2);
  EXPECT_EQ(children.object(u"item", 1).text(u"nodeName"), u"d");
  root(u"appendChild", root.object(u"firstChild"));  // moves it
  EXPECT_EQ(namesIn(children.items()), u"d c");
}

TEST(XmlDocument, BuildsADocument) {
  const LateBound document = newDocument();
  const LateBound root = document.object(u"appendChild", document.object(u"createElement", u"a"));
  root(u"setAttribute", u"x", u"<\"&'\r\n\t>");
  root(u"setAttribute", u"n", 5);
  root(u"appendChild", document.object(u"createTextNode", u"q<&>\"'"));
  root(u"appendChild", document.object(u"createElement", u"b"));
  EXPECT_EQ(document.text(u"xml"),
            u"<a x=\"&lt;&quot;&amp;'&#13;&#10;&#9;&gt;\" n=\"5\">q&lt;&amp;&gt;\"'<b/></a>\r\n");
  EXPECT_EQ(root.text(u"getAttribute", u"x"), u"<\"&'\r\n\t>");
  root(u"removeAttribute", u"x");
  root(u"removeAttribute", u"none");
  EXPECT_EQ(root.object(u"attributes").number(u"length"), 1);
}

TEST(XmlDocument, WrittenTextTakesThePlaceOfAllChildren) {
  const LateBound root = rootOf(u"<a>1<b>2</b>3</a>");
  root.put(u"text", u"<&>");
  EXPECT_EQ(root.text(u"xml"), u"<a>&lt;&amp;&gt;</a>");
  root.object(u"firstChild").put(u"nodeValue", u"x");
  EXPECT_EQ(root.text(u"text"), u"x");
  root.put(u"nodeTypedValue", u"y");
  EXPECT_EQ(root.text(u"nodeTypedValue"), u"y");
}

TEST(XmlDocument, DeclaredTypesGiveTypedValues) {
  const auto typed = [](StringView type, StringView text) {
    String xml = u"<a xmlns:dt='urn:schemas-microsoft-com:datatypes' dt:dt='";
    return rootOf(xml.append(type).append(u"'>").append(text).append(u"</a>"))(u"nodeTypedValue");
  };
  EXPECT_EQ(typed(u"i4", u"-5").longInteger(), -5);
  EXPECT_EQ(typed(u"r8", u"1.5").doubleValue(), 1.5);
  EXPECT_TRUE(typed(u"boolean", u"1").boolean());
}

TEST(XmlDocument, ARemovedNodeLivesOn) {
  const LateBound root = rootOf(u"<a><b><c/></b></a>");
  const LateBound removed = root.object(u"removeChild", root.object(u"firstChild"));
  EXPECT_EQ(root.text(u"xml"), u"<a/>");
  EXPECT_EQ(removed.object(u"firstChild").text(u"xml"), u"<c/>");
  EXPECT_TRUE(removed.object(u"parentNode").isNothing());
  EXPECT_THROW(root(u"removeChild", removed), Error);
}

TEST(XmlDocument, ANodeKeepsItsDocumentAlive) {
  const LateBound child = documentOf(u"<a><b>x</b>y</a>").object(u"documentElement").object(u"lastChild");
  EXPECT_EQ(child.object(u"ownerDocument").text(u"text"), u"xy");
}

TEST(XmlDocument, WhatIsNotWellFormedEmptiesTheDocument) {
  const StringView refused[] = {u"",
                                u"x",
                                u"<a>",
                                u"<a></b>",
                                u"<a/><b/>",
                                u"<a>&x;</a>",
                                u"<a b='1",
                                u"<a b='1' b='2'/>",
                                u"<a>\u0001</a>",
                                u"<a><!-- </a>",
                                StringView(u"<a>\0</a>", 8)};
  for (const StringView xml : refused) {
    const LateBound document = documentOf(u"<before/>");
    EXPECT_FALSE(document.isTrue(u"loadXML", xml)) << toUtf8(xml);
    EXPECT_TRUE(document.object(u"documentElement").isNothing());
    EXPECT_NE(document.object(u"parseError").number(u"errorCode"), 0) << toUtf8(xml);
  }
  const String loneSurrogate = {u'<', u'a', u'>', 0xD800, u'<', u'/', u'a', u'>'};
  EXPECT_FALSE(newDocument().isTrue(u"loadXML", loneSurrogate));
}

TEST(XmlDocument, TextIsReadWhateverEncodingItDeclares) {
  const LateBound document =
      documentOf(u"<?xml version='1.0' encoding='ISO-8859-1'?><a>\u20AC\U0001F600</a>");
  EXPECT_EQ(document.text(u"text"), u"\u20AC\U0001F600");
}

TEST(XmlDocument, IsSavedAndLoadedByPath) {
  documentOf(u"<a>\u00E9<b/></a>")(u"save", u"saved.xml");
  const LateBound document = newDocument();
  ASSERT_TRUE(document.isTrue(u"load", u"saved.xml"));
  EXPECT_EQ(document.text(u"text"), u"\u00E9");
  EXPECT_FALSE(document.isTrue(u"async"));
  EXPECT_FALSE(document.isTrue(u"load", u"none.xml"));
  EXPECT_NE(document.object(u"parseError").number(u"errorCode"), 0);
}

}  // namespace
}  // namespace zelUtilities
