// What the stand-in for the XML document promises beyond what every system's has in common.
#include "platform/Files.h"
#include "platform/XmlNodes.h"
#include "support/RaisedError.h"
#include "support/ScratchFolder.h"

namespace zelUtilities {
namespace {

const std::string failed = "!-2147467259";

std::string errorCode(const LateBound& document) {
  char text[9] = {};
  std::snprintf(text, sizeof text, "%08X", document.object(u"parseError").number(u"errorCode"));
  return text;
}

// A document of a file with these bytes.
LateBound loaded(StringView name, const std::string& bytes) {
  files().replaceWhole(name, bytes);
  LateBound document = newDocument();
  document(u"load", name);
  return document;
}

TEST(XmlStandIn, IsFoundUnderItsOtherNames) {
  for (const StringView name : {u"microsoft.xmldom", u"MSXML2.DOMDocument", u"MSXML2.DOMDocument.3.0"})
    EXPECT_EQ(seen(LateBound::create(name), u"loadXML{<a/>}"), "True");
}

TEST(XmlStandIn, AParseErrorSaysWhatAndWhere) {
  const std::pair<StringView, std::string> cases[] = {{u"", "C00CE558|1|"},
                                                      {u"<a>\r\n<b>\r\n</c>\r\n</a>", "C00CE56D|3|</c>"},
                                                      {u"<a>\n<b>", "C00CE553|2|<b>"},
                                                      {u"<a/>\n\n<b/>", "C00CE556|3|<b/>"},
                                                      {u"\u20AC<a/>", "C00CE558|1|\u20AC<a/>"},
                                                      {u"<a>\n\u20AC&x;</a>", "C00CE00D|2|\u20AC&x;</a>"},
                                                      {u"<a b=1/>", "C00CE502|1|<a b=1/>"},
                                                      {u"<a b/>", "C00CE501|1|<a b/>"},
                                                      {u"<a b='1' b='2'/>", "C00CE554|1|<a b='1' b='2'/>"},
                                                      {u"<a>\n\u0001</a>", "C00CE508|2|\u0001</a>"},
                                                      {u"<p:a/>", "C00CE01D|1|<p:a/>"}};
  const LateBound document = newDocument();
  for (const auto& [xml, expected] : cases) {
    EXPECT_FALSE(document.isTrue(u"loadXML", xml)) << toUtf8(xml);
    const LateBound error = document.object(u"parseError");
    EXPECT_EQ(errorCode(document) + "|" + seen(error, u"line srcText"), expected);
    EXPECT_GT(error.number(u"linepos"), 0);
    EXPECT_TRUE(error.text(u"reason").ends_with(u"\r\n"));
    EXPECT_EQ(error.text(u"url"), u"");
  }
  EXPECT_EQ(seen(document, u"loadXML{<a/>} parseError.errorCode parseError.reason"), "True|0|");
}

TEST(XmlStandIn, AParseErrorNamesTheFile) {
  const ScratchFolder scratch;
  const LateBound document = newDocument();
  EXPECT_EQ(seen(document, u"load{none.xml} parseError.url parseError.line"), "False|none.xml|0");
  EXPECT_EQ(errorCode(document), "800C0006");
  EXPECT_EQ(seen(loaded(u"broken.xml", "<a>\n  <b></a>"),
                 u"parseError.url parseError.line parseError.linepos parseError.filepos"),
            "broken.xml|2|10|13");
}

TEST(XmlStandIn, ANodeHasOneObject) {
  const LateBound document = documentOf(u"<a b='1'><c/></a>");
  const LateBound root = document.object(u"documentElement");
  EXPECT_EQ(root.get(), document.object(u"selectSingleNode", u"a").get());
  for (const StringView way : {u"parentNode", u"ownerDocument"})
    EXPECT_EQ(root.object(way).get(), document.get());
  const LateBound attribute = root.object(u"attributes").object(u"item", 0);
  EXPECT_EQ(attribute.get(), document.object(u"selectSingleNode", u"a/@b").get());
  EXPECT_EQ(seen(attribute, u"name value"), "b|1");
}

TEST(XmlStandIn, NodesOutliveWhatTheyWereIn) {
  const LateBound root = rootOf(u"<a b='1'>t<c><d>x</d></c></a>");
  const LateBound text = root.object(u"firstChild");
  const LateBound attribute = root.object(u"attributes").object(u"item", 0);
  const LateBound attributeText = attribute.object(u"firstChild");
  const LateBound deep = root.object(u"selectSingleNode", u"c/d");
  seen(root, u"removeAttribute{b} text={}");
  attribute.put(u"text", u"2");
  EXPECT_EQ(seen(attributeText, u"text") + seen(text, u"text"), "1t");
  EXPECT_EQ(seen(deep, u"parentNode.xml ownerDocument.loadXML{<new/>}"), "<c><d>x</d></c>|True");
  EXPECT_EQ(seen(root, u"xml"), "<a/>");
  EXPECT_EQ(seen(deep, u"ownerDocument.xml"), "<new/>\r\n");
}

TEST(XmlStandIn, AppendingKeepsTheDocumentWellFormed) {
  const LateBound document = documentOf(u"<a><b><c/></b></a>");
  for (const StringView append :
       {u"selectSingleNode{//c}.appendChild{@documentElement}",
        u"selectSingleNode{//c}.appendChild{@selectSingleNode{//c}}", u"appendChild{@createElement{z}}",
        u"appendChild{@createTextNode{z}}", u"documentElement.appendChild{@documentElement.parentNode}",
        u"createTextNode{z}.appendChild{@selectSingleNode{//c}}"})
    EXPECT_EQ(seen(document, append), failed) << toUtf8(append);
  EXPECT_EQ(seen(document, u"documentElement.appendChild{@parentNode}"), "!-2147024809");
  const auto appendForeign = [&] { document.object(u"documentElement")(u"appendChild", rootOf(u"<z/>")); };
  EXPECT_TRUE(raisedError(appendForeign).starts_with("-2147024809|"));
  EXPECT_EQ(seen(document, u"xml"), "<a><b><c/></b></a>\r\n");
}

TEST(XmlStandIn, WhatXmlDoesNotAllowIsNotWritten) {
  const LateBound root = rootOf(u"<a b='1'>x</a>");
  for (const String& text : {String(1, u'\0'), String(u"a\u0001"), String(1, u'\xDC00'), String(1, u'\xD800'),
                             String(u"\uFFFE"), String({0xDC00, 0xD800})})
    EXPECT_EQ(seen(root, u"text={" + text + u"} setAttribute{n;" + text + u"} ownerDocument.createTextNode{" +
                             text + u"}"),
              "!5|!5|!5");
  for (const String name : {u"", u"1", u"a b", u"a:b:c", u"<", u"a\U0001F600="})
    EXPECT_EQ(seen(root, u"ownerDocument.createElement{" + name + u"} setAttribute{" + name + u";x}"),
              failed + "|" + failed)
        << toUtf8(name);
  EXPECT_EQ(seen(root, u"xml"), "<a b=\"1\">x</a>");
}

TEST(XmlStandIn, WhatIsWrittenCanBeReadAgainAndAdjacentTextsStayApart) {
  const LateBound document = documentOf(u"<?xml version='1.0'?><a><!--c--><?p d?><![CDATA[x]]></a>");
  for (const StringView write :
       {u"selectSingleNode{a/comment()}.text={--}", u"selectSingleNode{a/comment()}.text={c-}",
        u"documentElement.childNodes.item{1}.nodeValue={?>}", u"documentElement.appendChild{@firstChild}"})
    EXPECT_EQ(seen(document, write), failed) << toUtf8(write);
  EXPECT_EQ(seen(document, u"documentElement.lastChild.text={]]>}"), "");
  EXPECT_EQ(seen(document.text(u"xml"), u"text"), "]]>");
  for (const StringView text : {u"1", u"2"})
    document.object(u"documentElement")(u"appendChild", document.object(u"createTextNode", text));
  EXPECT_EQ(seen(document, u"documentElement.childNodes.length text"), "5|]]>12");
}

TEST(XmlStandIn, NamesMatchAsTheyAreWritten) {
  EXPECT_EQ(seen(documentOf(u"<a xmlns='u:1' xmlns:p='u:2'><p:b p:c='3'/><p:d/></a>"),
                 u"selectSingleNode{a/p:b/@p:c}.text selectNodes{a/p:*}.length "
                 u"documentElement.getAttribute{xmlns} xml"),
            "3|2|u:1|<a xmlns=\"u:1\" xmlns:p=\"u:2\"><p:b p:c=\"3\"/><p:d/></a>\r\n");
}

TEST(XmlStandIn, FilesAreReadInTheirEncodingAndRefusedWhereThatDoesNotFit) {
  const ScratchFolder scratch;
  const std::pair<std::string, std::string> cases[] = {
      {"<a>\xC3\xA9</a>", "\u00E9"},
      {"\xEF\xBB\xBF<a>\xC3\xA9</a>", "\u00E9"},
      {"<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE9</a>", "\u00E9"},
      {{"\xFF\xFE<\0a\0>\0\xE9\0<\0/\0a\0>\0", 18}, "\u00E9"},
      {"<a>\xE9</a>", "C00CE508"},
      {"<?xml version='1.0' encoding='none'?><a/>", "C00CE56E"},
      {"<?xml version='1.0' encoding='UTF-8//IGNORE'?><a/>", "C00CE56E"},
      {"<?xml version='1.0' encoding='UTF-16'?><a/>", "C00CE56F"},
      {"<?xml version='1.0' encoding='Shift_JIS'?><a>\x81</a>", "C00CE508"},
      {"<a>\xC3</a>", "C00CE508"},
      {{"<a/>\0", 5}, "C00CE556"},
      {{"\xFF\xFE<\0a\0>", 7}, "C00CE508"}};
  for (const auto& [bytes, expected] : cases) {
    const LateBound document = loaded(u"a.xml", bytes);
    EXPECT_EQ(errorCode(document) == "00000000" ? seen(document, u"text") : errorCode(document), expected);
    EXPECT_EQ(seen(document, u"documentElement") == "Nothing", expected[0] == 'C');
  }
}

TEST(XmlStandIn, SavesInTheDeclaredEncodingWhichXmlTextDoesNotHave) {
  const ScratchFolder scratch;
  const String content = u"<a b='&#10;'>\u00E9\u20AC\n&lt;<![CDATA[ ]]></a>";
  const auto saved = [&](const String& encoding) {
    documentOf(u"<?xml version='1.0' encoding='" + encoding + u"'?>" + content)(u"save", u"s.xml");
    return files().readWhole(u"s.xml");
  };
  EXPECT_EQ(saved(u"utf-8"),
            "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
            "<a b=\"&#10;\">\xC3\xA9\xE2\x82\xAC\r\n&lt;<![CDATA[ ]]></a>\r\n");
  EXPECT_EQ(saved(u"ISO-8859-1"),
            "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n"
            "<a b=\"&#10;\">\xE9&#8364;\r\n&lt;<![CDATA[ ]]></a>\r\n");
  EXPECT_TRUE(saved(u"UTF-16").starts_with(std::string("\xFF\xFE<\0?\0", 6)));
  EXPECT_EQ(seen(newDocument(), u"load{s.xml} documentElement.xml"),
            "True|<a b=\"&#10;\">\u00E9\u20AC\r\n&lt;<![CDATA[ ]]></a>");
  EXPECT_TRUE(raisedError([&] { saved(u"none"); }).starts_with("-2147467259|"));
  EXPECT_TRUE(files().readWhole(u"s.xml").starts_with("\xFF\xFE"));  // still what was saved before
  EXPECT_EQ(seen(documentOf(u"<?xml version='1.0' encoding='UTF-16' standalone='yes'?><a/>"), u"xml"),
            "<?xml version=\"1.0\" standalone=\"yes\"?>\r\n<a/>\r\n");
}

TEST(XmlStandIn, ADocumentTypeIsKept) {
  const LateBound document = documentOf(
      u"<!DOCTYPE html PUBLIC \"-//W3C//DTD XHTML 1.0 Strict//EN\" "
      u"\"http://www.w3.org/TR/xhtml1/DTD/xhtml1-strict.dtd\">"
      u"<html xmlns='http://www.w3.org/1999/xhtml'><head/></html>");
  EXPECT_EQ(seen(document, u"firstChild.nodeType firstChild.hasChildNodes"), "10|False");
  const String xml = document.text(u"xml");
  EXPECT_TRUE(xml.starts_with(u"<!DOCTYPE html PUBLIC "));
  EXPECT_TRUE(xml.ends_with(u"<html xmlns=\"http://www.w3.org/1999/xhtml\"><head/></html>\r\n"));
}

}  // namespace
}  // namespace zelUtilities
