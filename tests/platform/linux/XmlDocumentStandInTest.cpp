// What the stand-in for the XML document promises beyond what every system's has in common.
#include <gtest/gtest.h>

#include <functional>

#include "automation/Error.h"
#include "platform/Files.h"
#include "platform/LateBound.h"

namespace zelUtilities {
namespace {

constexpr std::int32_t failed = -2147467259;

LateBound documentOf(StringView xml) {
  LateBound document = LateBound::create(u"MSXML.DOMDocument");
  EXPECT_TRUE(document.isTrue(u"loadXML", xml)) << toUtf8(xml);
  return document;
}

std::int32_t raisedBy(const std::function<void()>& action) {
  try {
    action();
  } catch (const Error& error) {
    EXPECT_FALSE(error.description().empty());
    return error.number();
  }
  return 0;
}

TEST(XmlStandIn, IsFoundUnderItsOtherNames) {
  for (const StringView name : {u"microsoft.xmldom", u"MSXML2.DOMDocument", u"MSXML2.DOMDocument.3.0"})
    EXPECT_TRUE(LateBound::create(name).isTrue(u"loadXML", u"<a/>"));
}

TEST(XmlStandIn, AParseErrorSaysWhatAndWhere) {
  const struct {
    StringView xml;
    std::uint32_t code;
    std::int32_t line;
    StringView source;
  } cases[] = {{u"", 0xC00CE558, 1, u""},
               {u"<a>\r\n<b>\r\n</c>\r\n</a>", 0xC00CE56D, 3, u"</c>"},
               {u"<a>\n<b>", 0xC00CE553, 2, u"<b>"},
               {u"<a/>\n\n<b/>", 0xC00CE556, 3, u"<b/>"},
               {u"\u20AC<a/>", 0xC00CE558, 1, u"\u20AC<a/>"},
               {u"<a>\n\u20AC&x;</a>", 0xC00CE00D, 2, u"\u20AC&x;</a>"},
               {u"<a b=1/>", 0xC00CE502, 1, u"<a b=1/>"},
               {u"<a b/>", 0xC00CE501, 1, u"<a b/>"},
               {u"<a b='1' b='2'/>", 0xC00CE554, 1, u"<a b='1' b='2'/>"},
               {u"<a>\n\u0001</a>", 0xC00CE508, 2, u"\u0001</a>"},
               {u"<p:a/>", 0xC00CE01D, 1, u"<p:a/>"}};
  const LateBound document = LateBound::create(u"MSXML.DOMDocument");
  for (const auto& expected : cases) {
    EXPECT_FALSE(document.isTrue(u"loadXML", expected.xml)) << toUtf8(expected.xml);
    const LateBound error = document.object(u"parseError");
    EXPECT_EQ(error.number(u"errorCode"), static_cast<std::int32_t>(expected.code)) << toUtf8(expected.xml);
    EXPECT_EQ(error.number(u"line"), expected.line) << toUtf8(expected.xml);
    EXPECT_GT(error.number(u"linepos"), 0);
    EXPECT_EQ(error.text(u"srcText"), expected.source);
    EXPECT_TRUE(error.text(u"reason").ends_with(u"\r\n"));
    EXPECT_EQ(error.text(u"url"), u"");
  }
  EXPECT_TRUE(document.isTrue(u"loadXML", u"<a/>"));
  EXPECT_EQ(document.object(u"parseError").number(u"errorCode"), 0);
  EXPECT_EQ(document.object(u"parseError").text(u"reason"), u"");
}

TEST(XmlStandIn, AParseErrorNamesTheFile) {
  const LateBound document = LateBound::create(u"MSXML.DOMDocument");
  EXPECT_FALSE(document.isTrue(u"load", u"none.xml"));
  EXPECT_EQ(document.object(u"parseError").number(u"errorCode"), static_cast<std::int32_t>(0x800C0006));
  EXPECT_EQ(document.object(u"parseError").text(u"url"), u"none.xml");
  EXPECT_EQ(document.object(u"parseError").number(u"line"), 0);
  files().replaceWhole(u"broken.xml", "<a>\n  <b></a>");
  EXPECT_FALSE(document.isTrue(u"load", u"broken.xml"));
  const LateBound error = document.object(u"parseError");
  EXPECT_EQ(error.text(u"url"), u"broken.xml");
  EXPECT_EQ(error.number(u"filepos"), 4 + error.number(u"linepos") - 1);
}

TEST(XmlStandIn, ANodeHasOneObject) {
  const LateBound document = documentOf(u"<a b='1'><c/></a>");
  const LateBound root = document.object(u"documentElement");
  EXPECT_EQ(root.get(), document.object(u"selectSingleNode", u"a").get());
  EXPECT_EQ(root.object(u"parentNode").get(), document.get());
  EXPECT_EQ(root.object(u"ownerDocument").get(), document.get());
  const LateBound attribute = root.object(u"attributes").object(u"item", 0);
  EXPECT_EQ(attribute.get(), document.object(u"selectSingleNode", u"a/@b").get());
  EXPECT_EQ(attribute.text(u"name"), u"b");
  EXPECT_EQ(attribute.text(u"value"), u"1");
}

TEST(XmlStandIn, NodesOutliveWhatTheyWereIn) {
  LateBound document = documentOf(u"<a b='1'>t<c><d>x</d></c></a>");
  const LateBound root = document.object(u"documentElement");
  const LateBound text = root.object(u"firstChild");
  const LateBound attribute = root.object(u"attributes").object(u"item", 0);
  const LateBound attributeText = attribute.object(u"firstChild");
  const LateBound deep = root.object(u"selectSingleNode", u"c/d");
  root(u"removeAttribute", u"b");
  attribute.put(u"text", u"2");
  EXPECT_EQ(attributeText.text(u"text"), u"1");
  root.put(u"text", u"");
  EXPECT_EQ(text.text(u"text"), u"t");
  EXPECT_EQ(deep.object(u"parentNode").text(u"xml"), u"<c><d>x</d></c>");
  document(u"loadXML", u"<new/>");
  document = LateBound();
  EXPECT_EQ(root.text(u"xml"), u"<a/>");
  EXPECT_EQ(deep.object(u"ownerDocument").text(u"xml"), u"<new/>\r\n");
}

TEST(XmlStandIn, AppendingKeepsTheDocumentWellFormed) {
  const LateBound document = documentOf(u"<a><b><c/></b></a>");
  const LateBound root = document.object(u"documentElement");
  const LateBound inner = document.object(u"selectSingleNode", u"//c");
  const auto append = [](const LateBound& parent, const LateBound& child) {
    return raisedBy([&] { parent(u"appendChild", child); });
  };
  EXPECT_EQ(append(inner, root), failed);
  EXPECT_EQ(append(inner, inner), failed);
  EXPECT_EQ(append(document, document.object(u"createElement", u"z")), failed);
  EXPECT_EQ(append(document, document.object(u"createTextNode", u"z")), failed);
  EXPECT_EQ(append(root, document), failed);
  EXPECT_EQ(append(document.object(u"createTextNode", u"z"), inner), failed);
  EXPECT_EQ(append(root, documentOf(u"<z/>").object(u"documentElement")), -2147024809);
  EXPECT_EQ(append(root, LateBound()), -2147024809);
  EXPECT_EQ(document.text(u"xml"), u"<a><b><c/></b></a>\r\n");
}

TEST(XmlStandIn, AdjacentTextsStayApart) {
  const LateBound document = documentOf(u"<a/>");
  const LateBound root = document.object(u"documentElement");
  for (const StringView text : {u"1", u"2"}) root(u"appendChild", document.object(u"createTextNode", text));
  EXPECT_EQ(root.object(u"childNodes").number(u"length"), 2);
  EXPECT_EQ(root.text(u"text"), u"12");
}

TEST(XmlStandIn, WhatXmlDoesNotAllowIsNotWritten) {
  const LateBound document = documentOf(u"<a b='1'>x</a>");
  const LateBound root = document.object(u"documentElement");
  for (const String& text : {String(1, u'\0'), String(u"a\u0001"), String(1, u'\xDC00'), String(1, u'\xD800'),
                             String(u"\uFFFE"), String({0xDC00, 0xD800})}) {
    EXPECT_EQ(raisedBy([&] { root.put(u"text", text); }), 5);
    EXPECT_EQ(raisedBy([&] { root(u"setAttribute", u"n", text); }), 5);
    EXPECT_EQ(raisedBy([&] { document(u"createTextNode", text); }), 5);
  }
  for (const StringView name : {u"", u"1", u"a b", u"a:b:c", u"<", u"a\U0001F600="}) {
    EXPECT_EQ(raisedBy([&] { document(u"createElement", name); }), failed) << toUtf8(name);
    EXPECT_EQ(raisedBy([&] { root(u"setAttribute", name, u""); }), failed) << toUtf8(name);
  }
  EXPECT_EQ(root.text(u"xml"), u"<a b=\"1\">x</a>");
}

TEST(XmlStandIn, WhatIsWrittenCanBeReadAgain) {
  const LateBound document = documentOf(u"<?xml version='1.0'?><a><!--c--><?p d?><![CDATA[x]]></a>");
  const LateBound root = document.object(u"documentElement");
  const auto child = [&](int index) { return root.object(u"childNodes").object(u"item", index); };
  EXPECT_EQ(raisedBy([&] { child(0).put(u"text", u"--"); }), failed);
  EXPECT_EQ(raisedBy([&] { child(0).put(u"text", u"c-"); }), failed);
  EXPECT_EQ(raisedBy([&] { child(1).put(u"nodeValue", u"?>"); }), failed);
  EXPECT_EQ(raisedBy([&] { root(u"appendChild", document.object(u"firstChild")); }), failed);
  child(2).put(u"text", u"]]>");
  EXPECT_EQ(documentOf(document.text(u"xml")).text(u"text"), u"]]>");
}

TEST(XmlStandIn, NamesMatchAsTheyAreWritten) {
  const LateBound document = documentOf(u"<a xmlns='u:1' xmlns:p='u:2'><p:b p:c='3'/><p:d/></a>");
  EXPECT_EQ(document.object(u"selectSingleNode", u"a/p:b/@p:c").text(u"text"), u"3");
  EXPECT_EQ(document.object(u"selectNodes", u"a/p:*").number(u"length"), 2);
  EXPECT_EQ(document.object(u"documentElement").text(u"getAttribute", u"xmlns"), u"u:1");
  EXPECT_EQ(document.text(u"xml"), u"<a xmlns=\"u:1\" xmlns:p=\"u:2\"><p:b p:c=\"3\"/><p:d/></a>\r\n");
}

TEST(XmlStandIn, WhatWasSavedIsLoadedAgain) {
  const String path = files().fullPath(u"saved.xml");
  documentOf(u"<?xml version='1.0'?><a b='&#10;'>\u00E9\u20AC\n&lt;<![CDATA[ ]]></a>")(u"save", path);
  const LateBound document = LateBound::create(u"MSXML.DOMDocument");
  ASSERT_TRUE(document.isTrue(u"load", path));
  EXPECT_EQ(document.text(u"xml"),
            u"<?xml version=\"1.0\"?>\r\n<a b=\"&#10;\">\u00E9\u20AC\r\n&lt;<![CDATA[ ]]></a>\r\n");
  files().remove(path);
  EXPECT_FALSE(document.isTrue(u"load", path));
  EXPECT_TRUE(document.object(u"documentElement").isNothing());
  EXPECT_NE(document.object(u"parseError").number(u"errorCode"), 0);
}

TEST(XmlStandIn, FilesAreReadInTheirEncoding) {
  const auto load = [](char16_t name, const std::string& contents) {
    const String path = files().fullPath(String(1, name) + u".xml");
    files().replaceWhole(path, contents);
    LateBound document = LateBound::create(u"MSXML.DOMDocument");
    document(u"load", path);
    return document;
  };
  const std::string contents[] = {
      "<a>\xC3\xA9</a>",
      "\xEF\xBB\xBF<a>\xC3\xA9</a>",
      "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE9</a>",
      {"\xFF\xFE<\0a\0>\0\xE9\0<\0/\0a\0>\0", 18},
  };
  char16_t name = u'a';
  for (const std::string& bytes : contents) EXPECT_EQ(load(name++, bytes).text(u"text"), u"\u00E9") << bytes;
  EXPECT_TRUE(load(name, "<a>\xE9</a>").object(u"documentElement").isNothing());
}

TEST(XmlStandIn, SavesInTheDeclaredEncoding) {
  const auto saved = [](StringView encoding) {
    documentOf(u"<?xml version='1.0' encoding='" + String(encoding) + u"'?><a>\u00E9\u20AC\n</a>")(u"save",
                                                                                                   u"s.xml");
    return files().readWhole(u"s.xml");
  };
  EXPECT_EQ(saved(u"utf-8"),
            "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<a>\xC3\xA9\xE2\x82\xAC\r\n</a>\r\n");
  EXPECT_EQ(saved(u"ISO-8859-1"),
            "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<a>\xE9&#8364;\r\n</a>\r\n");
  EXPECT_TRUE(saved(u"UTF-16").starts_with(std::string("\xFF\xFE<\0?\0", 6)));
  EXPECT_EQ(raisedBy([&] { saved(u"none"); }), failed);
  EXPECT_TRUE(saved(u"UTF-16").starts_with("\xFF\xFE"));
}

TEST(XmlStandIn, XmlTextHasNoEncoding) {
  EXPECT_EQ(documentOf(u"<?xml version='1.0' encoding='UTF-16' standalone='yes'?><a/>").text(u"xml"),
            u"<?xml version=\"1.0\" standalone=\"yes\"?>\r\n<a/>\r\n");
}

TEST(XmlStandIn, ADocumentTypeIsKept) {
  const LateBound document = documentOf(
      u"<!DOCTYPE html PUBLIC \"-//W3C//DTD XHTML 1.0 Strict//EN\" "
      u"\"http://www.w3.org/TR/xhtml1/DTD/xhtml1-strict.dtd\">"
      u"<html xmlns='http://www.w3.org/1999/xhtml'><head/></html>");
  EXPECT_EQ(document.object(u"firstChild").number(u"nodeType"), 10);
  EXPECT_FALSE(document.object(u"firstChild").isTrue(u"hasChildNodes"));
  EXPECT_TRUE(
      document.text(u"xml").ends_with(u"<html xmlns=\"http://www.w3.org/1999/xhtml\"><head/></html>\r\n"));
  EXPECT_TRUE(document.text(u"xml").starts_with(u"<!DOCTYPE html PUBLIC "));
}

TEST(XmlStandIn, EncodingsThatDoNotFitAreParseErrors) {
  const struct {
    std::string bytes;
    std::uint32_t code;
  } cases[] = {{"<?xml version='1.0' encoding='none'?><a/>", 0xC00CE56E},
               {"<?xml version='1.0' encoding='UTF-8//IGNORE'?><a/>", 0xC00CE56E},
               {"<?xml version='1.0' encoding='UTF-16'?><a/>", 0xC00CE56F},
               {"<?xml version='1.0' encoding='Shift_JIS'?><a>\x81</a>", 0xC00CE508},
               {"<a>\xC3</a>", 0xC00CE508},
               {std::string("<a/>\0", 5), 0xC00CE556},
               {std::string("\xFF\xFE<\0a\0>", 7), 0xC00CE508}};
  const LateBound document = LateBound::create(u"MSXML.DOMDocument");
  for (const auto& [bytes, code] : cases) {
    files().replaceWhole(u"e.xml", bytes);
    EXPECT_FALSE(document.isTrue(u"load", u"e.xml")) << bytes;
    EXPECT_EQ(document.object(u"parseError").number(u"errorCode"), static_cast<std::int32_t>(code)) << bytes;
  }
}

}  // namespace
}  // namespace zelUtilities
