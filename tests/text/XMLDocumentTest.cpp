// Documents as clients load and read them, with the system's parser or its stand-in.
#include <gtest/gtest.h>

#include <map>

#include "automation/CaseFolding.h"
#include "automation/Conversions.h"
#include "platform/Files.h"
#include "platform/Objects.h"
#include "support/RaisedError.h"
#include "support/RecordingDialogs.h"
#include "text/zelXML.h"

namespace zelUtilities {
namespace {

constexpr StringView sample =
    u"<r a='1.5x' b='true' d='3/5/2007' z='0:00'><n> 12 abc</n><e/><t>2007-03-05 14:07:09</t><f>False</f>"
    u"<m><x>1</x></m><q>text<x/></q><zero>0:00</zero><in><n>7</n></in></r>";

Ref<Object> root() { return zel_SearchForChild(u"r", zel_LoadXMLDocument(sample)); }

// "Kind value"
std::string shown(const Variant& value) {
  return toUtf8(typeName(value) + (value.isNull() ? u"" : u" " + toText(value)));
}

TEST(XMLValues, AnElementIsReadAsTheKindOfTheDefault) {
  const Ref<Object> r = root();
  const std::tuple<StringView, Variant, std::string> cases[] = {
      {u"n", Variant::missing(), "String 12 abc"},
      {u"n", Variant(), "String 12 abc"},
      {u"n", u"", "String 12 abc"},
      {u"n", std::int16_t{1}, "Double 12"},
      {u"n", 1, "Double 12"},
      {u"n", 1.5F, "Double 12"},
      {u"n", 1.5, "Double 12"},
      {u"n", std::uint8_t{1}, "String 12 abc"},
      {u"f", true, "Boolean False"},
      {u"t", Variant::date(1), "Date 3/5/2007 2:07:09 PM"},
      {u"zero", Variant::date(1), "Null"},
      {u"e", 5, "String "},
      {u"m", u"", "String <x>1</x>"},
      {u"q", 1, "Double 0"},
      {u"in/n", 0.0, "Double 7"},
      {u"none", 5, "Long 5"},
      {u"none", Variant::null(), "Null"}};
  for (const auto& [path, byDefault, value] : cases)
    EXPECT_EQ(shown(zel_ValueFromElement(path, r, byDefault)), value) << toUtf8(path);
  EXPECT_EQ(shown(zel_ValueFromChildElement(u"in", u"n", r)), "String 7");
  EXPECT_EQ(shown(zel_ValueFromChildElement(u"in", u"none", r, 3)), "Long 3");
  EXPECT_EQ(shown(zel_ValueFromChildElement(u"none", u"n", r, 4)), "Long 4");
}

TEST(XMLValues, AnAttributeIsReadAsTheKindOfTheDefault) {
  const Ref<Object> r = root();
  const std::tuple<StringView, Variant, std::string> cases[] = {{u"a", Variant::missing(), "String 1.5x"},
                                                                {u"a", u"", "String 1.5x"},
                                                                {u"a", Variant(), "Double 1.5"},
                                                                {u"a", std::uint8_t{1}, "Double 1.5"},
                                                                {u"b", false, "Boolean True"},
                                                                {u"b", 1, "Double 0"},
                                                                {u"d", Variant::date(1), "Date 3/5/2007"},
                                                                {u"z", Variant::date(1), "Null"},
                                                                {u"none", 5, "Long 5"}};
  for (const auto& [name, byDefault, value] : cases)
    EXPECT_EQ(shown(zel_ValueFromAttribute(name, r, byDefault)), value) << toUtf8(name);
  EXPECT_EQ(shown(zel_ValueFromAttribute(u"a", zel_LoadXMLDocument(sample), 5)), "Long 5");
}

TEST(XMLValues, WhatIsMissingOrDoesNotConvertIsRaisedWithItsSources) {
  const Ref<Object> r = root();
  const std::string missing = "::zelUtilities.XMLFunctions|Missing ";
  EXPECT_EQ(raisedError([&] { zel_ValueFromElement(u"x", r); }),
            "-2147219991|mXML.ValueFromElement" + missing + "Element: x");
  EXPECT_EQ(raisedError([&] { zel_ValueFromAttribute(u"x", r); }),
            "-2147219991|mXML.ValueFromAttribute" + missing + "Attribute: x");
  EXPECT_EQ(raisedError([&] { zel_ValueFromChildElement(u"p", u"c", r); }),
            "-2147219991|mXML.ValueFromChildElement" + missing + "Element: p");
  EXPECT_EQ(raisedError([&] { zel_ValueFromChildElement(u"in", u"c", r); }),
            "-2147219991|mXML.ValueFromChildElement::mXML.ValueFromElement" + missing + "Element: c");
  EXPECT_EQ(raisedError([&] { zel_ValueFromElement(u"n", r, true); }),
            "13|mXML.ValueFromElement::|Type mismatch");
  EXPECT_EQ(raisedError([&] { zel_ValueFromAttribute(u"a", r, Variant::date(1)); }),
            "13|mXML.ValueFromAttribute::|Type mismatch");
  EXPECT_EQ(raisedError([&] { zel_ValueFromElement(u"n", nullptr, 1); }),
            "91|mXML.ValueFromElement::|Object variable not set");
}

TEST(XMLDocument, IsLoadedFromAFileAtOnce) {
  files().replaceWhole(u"job.xml", "<?xml version='1.0' encoding='ISO-8859-1'?><r><n>\xE9</n></r>");
  const Ref<Object> document = zel_LoadXMLDocument(u"job.xml", true);
  EXPECT_EQ(shown(zel_ValueFromElement(u"r/n", document)), "String \xC3\xA9");
  EXPECT_FALSE(zel_LoadXMLDocument(u"none.xml", true, false));
  EXPECT_TRUE(
      raisedError([] { zel_LoadXMLDocument(u"none.xml", true); }).starts_with("-2147219991||XML Error: "));
}

TEST(XMLDocument, TheDescriptionOfTheLastErrorElementIsFound) {
  const std::pair<StringView, StringView> cases[] = {
      {u"<r><Error Description='1'/><a><Error Description='2&lt;'/></a></r>", u"Description:\t2<"},
      {u"<r><Error Description='1'/><Error/></r>", u"Description:\t"},
      {u"<r><Errors/></r>", u""},
      {u"<error Description='1'/>", u""},
      {u"<Error", u""},
      {u"", u""}};
  for (const auto& [xml, message] : cases) EXPECT_EQ(zel_XMLParseErrorMessage(xml), message) << toUtf8(xml);
}

// A parser, or its error, with these properties and no others.
struct Fake : Object {
  Variant Invoke(StringView name, InvokeKind kind, std::span<Variant> arguments) override {
    if (equalFolded(name, u"loadXML")) return false;
    const auto found = properties.find(foldCase(name));
    return found == properties.end() ? Object::Invoke(name, kind, arguments) : found->second;
  }
  void set(StringView name, Variant value) { properties[foldCase(name)] = std::move(value); }
  std::map<String, Variant> properties;
};

TEST(XMLDocument, TheParseErrorTextHasALineForWhatTheParserKnows) {
  const auto error = make<Fake>();
  const auto parser = make<Fake>();
  EXPECT_EQ(zel_XMLParseErrorText(parser), u"");
  parser->set(u"parseError", error);
  EXPECT_EQ(zel_XMLParseErrorText(parser), u"XML Error: MSXML Error Code: .");
  error->set(u"reason", u"Why.\r\n");
  error->set(u"srcText", u"<a>");
  error->set(u"url", u"x.xml");
  error->set(u"line", 3);
  error->set(u"linepos", 7);
  error->set(u"errorCode", -5);
  const String text =
      u"XML Error: Why.\r\nXML Source: \"<a>\"\r\nURL: \"x.xml\"\r\n"
      u"Line number 3, column number 7.\r\nMSXML Error Code: -5.";
  EXPECT_EQ(zel_XMLParseErrorText(parser), text);
  registerObject(u"MSXML.DOMDocument", [&] { return parser; });
  EXPECT_EQ(raisedError([] { zel_LoadXMLDocument(u"x"); }), "-2147219991||" + toUtf8(text));
  EXPECT_FALSE(zel_LoadXMLDocument(u"x", false, false));
  registerObject(u"MSXML.DOMDocument", {});
}

TEST(XMLDocument, AMissingParserIsShown) {
  RecordingDialogs dialogs;
  const Replaced<Dialogs> inForce(dialogs);
  registerObject(u"MSXML.DOMDocument", []() -> Ref<Object> { throw Error(ErrorNumber::CannotCreateObject); });
  EXPECT_FALSE(zel_LoadXMLDocument(u"<a/>", false, false));
  EXPECT_TRUE(raisedError([] { zel_LoadXMLDocument(u"<a/>"); }).starts_with("91|mXML.LoadXMLDocument::|"));
  registerObject(u"MSXML.DOMDocument", {});
  ASSERT_EQ(dialogs.boxes.size(), 2U);
  EXPECT_EQ(dialogs.boxes[0].title + u"|" + dialogs.boxes[0].text,
            u"Missing Component|Object Descriptor: MSXML.DOMDocument");
}

// Nothing but the text itself is read, however it is nested, and what it may grow to is bounded.
TEST(XMLDocument, HostileTextsAreRefusedOrBounded) {
  String bomb = u"<!DOCTYPE a [<!ENTITY e0 '0123456789'>";
  for (char16_t i = u'1'; i <= u'9'; ++i) {
    bomb.append(u"<!ENTITY e").append(1, i).append(u" '");
    for (int j = 0; j < 10; ++j) bomb.append(u"&e").append(1, static_cast<char16_t>(i - 1)).append(u";");
    bomb.append(u"'>");
  }
  bomb.append(u"]><a>&e9;</a>");
  files().replaceWhole(u"secret.txt", "secret");
  String deep;
  for (int i = 0; i < 1'000'000; ++i) deep.append(u"<a>");
  const String texts[] = {bomb,
                          deep,
                          u"<!DOCTYPE a [<!ENTITY e SYSTEM 'secret.txt'>]><a>&e;</a>",
                          u"<!DOCTYPE a [<!ENTITY % p SYSTEM 'secret.txt'> %p;]><a/>",
                          u"<!DOCTYPE a [<!ENTITY % p '<!ENTITY e \"x\">'> %p;]><a>&e;&e;</a>",
                          u"<!DOCTYPE a [<!ENTITY e '&e;'>]><a>&e;</a>",
                          u"<!DOCTYPE a SYSTEM 'secret.txt'><a/>",
                          u"<a>" + String(1, u'\0') + u"</a>",
                          u"<a>" + String(1, u'\xD800') + u"</a>",
                          u"<a><b>",
                          u"<a b='",
                          u"\uFEFF"};
  for (const String& text : texts) {
    const Ref<Object> document = zel_LoadXMLDocument(text, false, false);
    if (!document) continue;
    const String read = toText(document->Invoke(u"text", InvokeKind::Get, {}));
    EXPECT_EQ(read.find(u"secret"), String::npos) << toUtf8(text.substr(0, 60));
    EXPECT_LT(read.size(), 20'000'000U) << toUtf8(text.substr(0, 60));
  }
}

}  // namespace
}  // namespace zelUtilities
