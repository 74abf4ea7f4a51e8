// What the XML document answers on every system.
#include "platform/Files.h"
#include "platform/XmlNodes.h"
#include "support/ScratchFolder.h"
#include "support/XmlTexts.h"

namespace zelUtilities {
namespace {

TEST(XmlDocument, IsEmptyUntilItIsLoaded) {
  EXPECT_EQ(seen(newDocument(),
                 u"documentElement selectSingleNode{a} xml parseError.errorCode preserveWhiteSpace async"),
            "Nothing|Nothing||0|False|False");
}

TEST(XmlDocument, MembersAreFoundInAnyLetterCase) {
  EXPECT_EQ(seen(newDocument(), u"LOADxml{<a><b/></a>} DocumentElement.FIRSTCHILD.NodeName"), "True|b");
}

TEST(XmlDocument, NodesLeadToTheirNeighboursAndNowhereToNothing) {
  EXPECT_EQ(seen(u"<a><b/>t<c/></a>",
                 u"firstChild.nextSibling.nodeValue childNodes.item{1}.previousSibling lastChild "
                 u"lastChild.parentNode.tagName parentNode firstChild.ownerDocument.documentElement"),
            "t|b|c|a|#document|a");
  EXPECT_EQ(seen(u"<a b='1'/>",
                 u"firstChild lastChild nextSibling previousSibling selectSingleNode{c} childNodes.item{0} "
                 u"childNodes.item{-1} attributes.getNamedItem{c} attributes.item{1} hasChildNodes"),
            "Nothing|Nothing|Nothing|Nothing|Nothing|Nothing|Nothing|Nothing|Nothing|False");
}

TEST(XmlDocument, EveryKindOfNodeSaysWhatItIs) {
  const LateBound document =
      documentOf(u"<?xml version=\"1.0\"?><!--c--><a b='v'>t<![CDATA[<&]]><?p d?></a>");
  const LateBound root = document.object(u"documentElement");
  const std::tuple<LateBound, StringView, StringView> kinds[] = {
      {document, u"childNodes.item{0}", u"7|processinginstruction|xml|version=\"1.0\""},
      {document, u"childNodes.item{1}", u"8|comment|#comment|c"},
      {document, u"documentElement", u"1|element|a|Null"},
      {root, u"parentNode", u"9|document|#document|Null"},
      {root, u"attributes.item{0}", u"2|attribute|b|v"},
      {root, u"childNodes.item{0}", u"3|text|#text|t"},
      {root, u"childNodes.item{1}", u"4|cdatasection|#cdata-section|<&"},
      {root, u"childNodes.item{2}", u"7|processinginstruction|p|d"}};
  for (const auto& [from, path, kind] : kinds)
    EXPECT_EQ(seen(LateBound(xmlPaths::valueOf(from, path)), u"nodeType nodeTypeString nodeName nodeValue"),
              toUtf8(kind));
  EXPECT_EQ(seen(root, u"firstChild.attributes"), "Nothing");
  EXPECT_THROW(root.put(u"nodeValue", u"x"), Error);
}

TEST(XmlDocument, TextJoinsAllTextsBelow) {
  EXPECT_EQ(seen(u"<a>x<b>y<!--no--><![CDATA[&z]]></b>&lt;<c/></a>", u"text lastChild.text"), "xy&z<|");
}

TEST(XmlDocument, DropsTextsOfNothingButWhiteSpace) {
  EXPECT_EQ(seen(u"<a>\r\n  <b>1</b>\t<b> x  y </b>\n</a>",
                 u"childNodes.length text lastChild.firstChild.nodeValue"),
            "2|1  x  y| x  y ");  // words stay apart; none at the ends
  EXPECT_EQ(seen(u"<a>x<b> </b>y</a>", u"text"), "x y");
  EXPECT_EQ(seen(u"<a><![CDATA[ ]]></a>", u"text"), " ");
  EXPECT_EQ(seen(u"<a xml:space='preserve'> <b/> </a>", u"childNodes.length"), "3");
  EXPECT_EQ(seen(newDocument(),
                 u"preserveWhiteSpace={1} loadXML{<a> <b>1</b>\n</a>} "
                 u"documentElement.childNodes.length documentElement.text documentElement.xml"),
            "|True|3| 1\n|<a> <b>1</b>\r\n</a>");
}

TEST(XmlDocument, LinesEndInLineFeedsInsideAndInBothOutside) {
  EXPECT_EQ(seen(documentOf(u"<a>1\r\n2\r3\n4</a>"), u"documentElement.text xml"),
            "1\n2\n3\n4|<a>1\r\n2\r\n3\r\n4</a>\r\n");
}

TEST(XmlDocument, ReadsAttributes) {
  EXPECT_EQ(seen(u"<a x=' 1 ' y='&lt;&#10;&quot;' z=''/>",
                 u"getAttribute{x} getAttribute{y} getAttribute{z} getAttribute{X} attributes.length "
                 u"attributes.getNamedItem{x}.nodeValue attributes.* attributes.item{0}.parentNode "
                 u"attributes.item{0}.nextSibling"),
            " 1 |<\n\"||Null|3| 1 |x y z|Nothing|Nothing");
}

TEST(XmlDocument, SplitsNamesWithAPrefix) {
  const LateBound root = rootOf(u"<a xmlns='u:d' xmlns:p='u:p'><p:b p:c='1' d='2'/><e/></a>");
  EXPECT_EQ(seen(root.object(u"firstChild"), u"nodeName baseName prefix namespaceURI getAttribute{p:c}"),
            "p:b|b|p|u:p|1");
  EXPECT_EQ(seen(root, u"lastChild.namespaceURI getAttribute{xmlns:p}"), "u:d|u:p");
}

TEST(XmlDocument, SelectsByPatterns) {
  const LateBound root =
      rootOf(u"<r><c k='1'>A</c><c k='2'>B<e/></c><D><c k='3'>C</c></D><p:q xmlns:p='u:p'/></r>");
  EXPECT_EQ(
      seen(root,
           u"selectNodes{c}.* selectNodes{//c}.* selectNodes{D/c}.* selectNodes{d}.* selectNodes{*}.* "
           u"selectNodes{/r}.* selectNodes{.}.* selectNodes{..}.* selectNodes{D | c}.* selectNodes{//@k}.*"),
      "c c|c c c|c||c c D p:q|r|r|#document|c c D|k k k");
  EXPECT_EQ(seen(root,
                 u"selectNodes{c[e]}.* selectNodes{c[not(e)]}.* selectNodes{//c[@k='1' or @k='3']}.* "
                 u"selectNodes{//c[@k $eq$ '1' || @k='3']}.* selectNodes{c[@k='1' and .='B']}.* "
                 u"selectNodes{p:q}.* selectNodes{c/text()}.*"),
            "c|c|c c|c c||p:q|#text #text");
  EXPECT_THROW(root(u"selectNodes", u"count(c)"), Error);
}

TEST(XmlDocument, PositionsInPatternsCountFromZero) {
  EXPECT_EQ(
      seen(u"<r><c>A</c><c>[0]</c><c>C</c></r>",
           u"selectSingleNode{c[0]}.text selectSingleNode{c[ 2 ]}.text selectSingleNode{c[.='[0]']}.text "
           u"selectSingleNode{c[index()=1]}.text selectSingleNode{c[end()]}.text selectSingleNode{c[3]}"),
      "A|C|[0]|[0]|C|Nothing");
}

TEST(XmlDocument, ListsAreWalkedByPositionAndByItemAndChildNodesFollowChanges) {
  const LateBound root = rootOf(u"<a><b/><c/><d/></a>");
  const LateBound children = root.object(u"childNodes");
  for (const LateBound& list : {children, root.object(u"selectNodes", u"*")})
    EXPECT_EQ(seen(list, u"length {2} item{0} * item{1}"), "3|d|b|b c d|c");
  root(u"removeChild", root.object(u"firstChild"));
  EXPECT_EQ(seen(children, u"length item{1}"), "2|d");
  root(u"appendChild", root.object(u"firstChild"));  // moves it
  EXPECT_EQ(seen(children, u"*"), "d c");
}

TEST(XmlDocument, BuildsADocument) {
  const LateBound document = newDocument();
  const LateBound root = document.object(u"appendChild", document.object(u"createElement", u"a"));
  seen(root, u"setAttribute{x;<\"&'\r\n\t>} setAttribute{n;5}");
  seen(root,
       u"appendChild{@ownerDocument.createTextNode{q<&>\"'}} appendChild{@ownerDocument.createElement{b}}");
  EXPECT_EQ(document.text(u"xml"),
            u"<a x=\"&lt;&quot;&amp;'&#13;&#10;&#9;&gt;\" n=\"5\">q&lt;&amp;&gt;\"'<b/></a>\r\n");
  EXPECT_EQ(
      seen(root, u"getAttribute{x} removeAttribute{x} removeAttribute{none} attributes.length").substr(0, 8),
      "<\"&'\r\n\t>");
  EXPECT_EQ(seen(root, u"attributes.*"), "n");
}

TEST(XmlDocument, WrittenTextTakesThePlaceOfAllChildren) {
  EXPECT_EQ(seen(u"<a>1<b>2</b>3</a>",
                 u"text={<&>} xml firstChild.nodeValue={x} text nodeTypedValue={y} nodeTypedValue"),
            "|<a>&lt;&amp;&gt;</a>||x||y");
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
  EXPECT_EQ(seen(root, u"xml"), "<a/>");
  EXPECT_EQ(seen(removed, u"firstChild.xml parentNode"), "<c/>|Nothing");
  EXPECT_THROW(root(u"removeChild", removed), Error);
}

TEST(XmlDocument, ANodeKeepsItsDocumentAlive) {
  EXPECT_EQ(seen(rootOf(u"<a><b>x</b>y</a>").object(u"lastChild"), u"ownerDocument.text"), "xy");
}

TEST(XmlDocument, WhatIsNotWellFormedEmptiesTheDocument) {
  const char16_t loneSurrogate[] = {u'<', u'a', u'>', 0xD800, u'<', u'/', u'a', u'>'};
  for (const StringView xml :
       {StringView(), StringView(u"x"), StringView(u"<a>"), StringView(u"<a></b>"), StringView(u"<a/><b/>"),
        StringView(u"<a>&x;</a>"), StringView(u"<a b='1"), StringView(u"<a b='1' b='2'/>"),
        StringView(u"<a>\u0001</a>"), StringView(u"<a><!-- </a>"), StringView(u"<a>\0</a>", 8),
        StringView(u"<a/>\0", 5), StringView(u"<a/>\0<b/>", 9), StringView(loneSurrogate, 8)}) {
    const LateBound document = documentOf(u"<before/>");
    EXPECT_FALSE(document.isTrue(u"loadXML", xml)) << toUtf8(xml);
    EXPECT_EQ(seen(document, u"documentElement"), "Nothing");
    EXPECT_NE(seen(document, u"parseError.errorCode"), "0") << toUtf8(xml);
  }
}

TEST(XmlDocument, HostileDocumentsAreRefusedAndEntitiesReadWhereTheyAreNearAndFew) {
  const ScratchFolder scratch;
  const String large(100'000, u'x');
  const auto typed = [](StringView declarations, const String& rest) {
    return (String(u"<!-- <a> --><!DOCTYPE a [") += declarations).append(u"]>").append(rest);
  };
  const String uses = u"<a>" + repeated(u"&e;", 2000) + u"</a>", entity = u"<!ENTITY e '" + large + u"'>";
  const std::pair<String, bool> cases[] = {
      {typed(entity, uses), false},
      {typed(entity, u"<a b='" + repeated(u"&e;", 200) + u"'/>"), false},
      {typed(entity, u"<a>" + repeated(u"<b c='&e;'/>", 2000) + u"</a>"), false},
      {typed(u"<!ENTITY e '&#38;f;'><!ENTITY f '" + large + u"'>", uses), false},
      {typed(u"<!ENTITY e '&#x26;e;'>", u"<a>&e;</a>"), false},
      {typed(u"<!ENTITY % p '<!ENTITY e \"" + large + u"\">'>%p;", uses), false},
      {entityBomb() + u"<a>&k;</a>", false},
      {entityBomb() + u"<a b='&k;'/>", false},
      {typed(u"<!ENTITY % p SYSTEM 'saved.xml'>%p;", u"<a/>"), false},
      {repeated(u"<a>", 1'000'000), false},
      {typed(u"<!ENTITY e SYSTEM 'saved.xml'>", u"<a>&e;</a>"), false},
      {u"<!DOCTYPE a SYSTEM 'saved.xml'><a>&e;</a>", false},
      {typed(u"<!ENTITY e SYSTEM 'saved.xml'><!ENTITY g ']>'><!-- ' --><!ENTITY f \"'\">",
             u"<a b='&f;'><!--&e;--><![CDATA[&e;]]><?p &e;?>&f;&amp;&#65;</a>"),
       true},
      {typed(u"<!ENTITY % p '<!ENTITY e \"x\">'>%p;", u"<a>&e;</a>"), true},
      {u"<!DOCTYPE a SYSTEM 'none[&e;'><a/>", true}};
  for (const auto& [xml, isRead] : cases) {
    const String marked = u'\uFEFF' + xml;
    files().replaceWhole(u"8.xml", toUtf8(xml));
    files().replaceWhole(u"16.xml", {reinterpret_cast<const char*>(marked.data()), 2 * marked.size()});
    const LateBound document = newDocument();
    for (const char16_t* file : {u"", u"8.xml", u"16.xml"})
      EXPECT_EQ(*file ? document.isTrue(u"load", file) : document.isTrue(u"loadXML", xml), isRead)
          << toUtf8(xml.substr(0, 99)) << " " << toUtf8(file);
    EXPECT_EQ(seen(document, u"documentElement") == "Nothing", !isRead);
    EXPECT_EQ(seen(document, u"parseError.reason").size() < 3, isRead);
  }
}

TEST(XmlDocument, TextIsReadWhateverEncodingItDeclares) {
  EXPECT_EQ(seen(u"<?xml version='1.0' encoding='ISO-8859-1'?><a>\u20AC\U0001F600</a>", u"text"),
            "\u20AC\U0001F600");
}

TEST(XmlDocument, IsSavedAndLoadedByPath) {
  const ScratchFolder scratch;
  documentOf(u"<a>\u00E9<b/></a>")(u"save", u"saved.xml");
  const LateBound document = newDocument();
  EXPECT_EQ(seen(document, u"load{saved.xml} text load{none.xml}"), "True|\u00E9|False");
  EXPECT_NE(seen(document, u"parseError.errorCode"), "0");
}

}  // namespace
}  // namespace zelUtilities
