// What the XML document answers on every system.
#include "platform/Files.h"
#include "platform/XmlNodes.h"
#include "support/ScratchFolder.h"
#include "support/XmlTexts.h"

namespace zelUtilities {
namespace {

using namespace std::string_view_literals;

LateBound nodeAt(const LateBound& from, StringView path) { return LateBound(xmlPaths::valueOf(from, path)); }

TEST(XmlDocument, IsEmptyUntilItIsLoadedByMembersInAnyLetterCase) {
  EXPECT_EQ(seen(newDocument(),
                 u"documentElement selectSingleNode{a} xml parseError.errorCode preserveWhiteSpace async "
                 u"LOADxml{<a><b/></a>} DocumentElement.FIRSTCHILD.NodeName"),
            "Nothing|Nothing||0|False|False|True|b");
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
  const std::pair<StringView, std::string> kinds[] = {
      {u"childNodes.item{0}", "7|processinginstruction|xml|version=\"1.0\""},
      {u"childNodes.item{1}", "8|comment|#comment|c"},
      {u"documentElement", "1|element|a|Null"},
      {u"documentElement.parentNode", "9|document|#document|Null"},
      {u"documentElement.attributes.item{0}", "2|attribute|b|v"},
      {u"documentElement.childNodes.item{0}", "3|text|#text|t"},
      {u"documentElement.childNodes.item{1}", "4|cdatasection|#cdata-section|<&"},
      {u"documentElement.childNodes.item{2}", "7|processinginstruction|p|d"}};
  for (const auto& [path, kind] : kinds)
    EXPECT_EQ(seen(nodeAt(document, path), u"nodeType nodeTypeString nodeName nodeValue"), kind);
  EXPECT_EQ(seen(document, u"documentElement.firstChild.attributes"), "Nothing");
  EXPECT_THROW(document.object(u"documentElement").put(u"nodeValue", u"x"), Error);
}

TEST(XmlDocument, TextJoinsAllTextsBelowButThoseOfNothingButWhiteSpace) {
  EXPECT_EQ(seen(u"<a>x<b>y<!--no--><![CDATA[&z]]></b>&lt;<c/></a>", u"text lastChild.text"), "xy&z<|");
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

TEST(XmlDocument, TextIsReadWhateverEncodingItDeclaresAndLinesEndInBothOutside) {
  EXPECT_EQ(seen(u"<?xml version='1.0' encoding='ISO-8859-1'?><a>\u20AC\U0001F600</a>", u"text"),
            "\u20AC\U0001F600");
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

TEST(XmlDocument, ARemovedNodeLivesOnAndANodeKeepsItsDocumentAlive) {
  const LateBound root = rootOf(u"<a><b><c/></b></a>");
  const LateBound removed = root.object(u"removeChild", root.object(u"firstChild"));
  EXPECT_EQ(seen(root, u"xml"), "<a/>");
  EXPECT_EQ(seen(removed, u"firstChild.xml parentNode"), "<c/>|Nothing");
  EXPECT_THROW(root(u"removeChild", removed), Error);
  EXPECT_EQ(seen(rootOf(u"<a><b>x</b>y</a>").object(u"lastChild"), u"ownerDocument.text"), "xy");
}

// Loads a document as a text and as files, over one that was there before.
void expectLoaded(const String& xml, bool isRead) {
  const ScratchFolder scratch;
  const String marked = u'\uFEFF' + xml;
  files().replaceWhole(u"8.xml", toUtf8(xml));
  files().replaceWhole(u"16.xml", {reinterpret_cast<const char*>(marked.data()), 2 * marked.size()});
  for (const StringView file : {u"", u"8.xml", u"16.xml"}) {
    const LateBound document = documentOf(u"<before/>");
    EXPECT_EQ(file.empty() ? document.isTrue(u"loadXML", xml) : document.isTrue(u"load", file), isRead)
        << toUtf8(xml.substr(0, 99)) << " " << toUtf8(file);
    EXPECT_EQ(seen(document, u"documentElement") == "Nothing", !isRead);
    EXPECT_EQ(seen(document, u"parseError.errorCode") == "0", isRead);
    EXPECT_EQ(seen(document, u"parseError.reason").size() < 3, isRead);
  }
}

TEST(XmlDocument, WhatIsNotWellFormedEmptiesTheDocument) {
  for (const StringView xml :
       {u""sv, u"x"sv, u"<a>"sv, u"<a></b>"sv, u"<a/><b/>"sv, u"<a>&x;</a>"sv, u"<a b='1"sv,
        u"<a b='1' b='2'/>"sv, u"<a>\1</a>"sv, u"<a><!-- </a>"sv, u"<a>\0</a>"sv})
    expectLoaded(String(xml), false);
  for (const StringView xml : {u"<a>\xD800</a>"sv, u"<a/>\0"sv, u"<a/>\0<b/>"sv})
    EXPECT_EQ(seen(documentOf(u"<before/>"), u"loadXML{" + String(xml) + u"} documentElement"),
              "False|Nothing");
}

TEST(XmlDocument, HostileDocumentsAreRefusedAndEntitiesReadWhereTheyAreNearAndFew) {
  const String large(100'000, u'x');
  const auto typed = [](StringView declarations, const String& rest) {
    return (String(u"<!-- <a> --><!DOCTYPE a [") += declarations).append(u"]>").append(rest);
  };
  const String uses = u"<a>" + repeated(u"&e;", 2000) + u"</a>", entity = u"<!ENTITY e '" + large + u"'>";
  for (const String& xml :
       {typed(entity, uses), typed(entity, u"<a b='" + repeated(u"&e;", 200) + u"'/>"),
        typed(entity, u"<a>" + repeated(u"<b c='&e;'/>", 2000) + u"</a>"),
        typed(u"<!ENTITY e '&#38;f;'><!ENTITY f '" + large + u"'>", uses),
        typed(u"<!ENTITY e '&#x26;e;'>", u"<a>&e;</a>"),
        typed(u"<!ENTITY % p '<!ENTITY e \"" + large + u"\">'>%p;", uses), entityBomb() + u"<a>&k;</a>",
        entityBomb() + u"<a b='&k;'/>", typed(u"<!ENTITY % p SYSTEM 'saved.xml'>%p;", u"<a/>"),
        repeated(u"<a>", 1'000'000), typed(u"<!ENTITY e SYSTEM 'saved.xml'>", u"<a>&e;</a>"),
        String(u"<!DOCTYPE a SYSTEM 'saved.xml'><a>&e;</a>")})
    expectLoaded(xml, false);
  for (const String& xml :
       {typed(u"<!ENTITY e SYSTEM 'saved.xml'><!ENTITY g ']>'><!-- ' --><!ENTITY f \"'\">",
              u"<a b='&f;'><!--&e;--><![CDATA[&e;]]><?p &e;?>&f;&amp;&#65;</a>"),
        typed(u"<!ENTITY % p '<!ENTITY e \"x\">'>%p;", u"<a>&e;</a>"),
        String(u"<!DOCTYPE a SYSTEM 'none[&e;'><a/>")})
    expectLoaded(xml, true);
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
