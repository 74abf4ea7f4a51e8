// Documents as clients load and read them, with the system's parser or its stand-in.
#include <gtest/gtest.h>

#include <map>

#include "automation/CaseFolding.h"
#include "automation/Conversions.h"
#include "platform/Files.h"
#include "platform/Objects.h"
#include "support/RaisedError.h"
#include "support/RecordingDialogs.h"
#include "support/ScratchFolder.h"
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

struct Case {
  StringView name;
  Variant byDefault;
  std::string value;
};
using Reader = Variant (*)(StringView, const Ref<Object>&, const Variant&);
void expectValues(Reader read, std::initializer_list<Case> cases) {
  const Ref<Object> r = root();
  for (const auto& [name, byDefault, value] : cases)
    EXPECT_EQ(shown(read(name, r, byDefault)), value) << toUtf8(name);
}
// A macro, so that several rows stand on a line.
#define EXPECT_VALUES(read, ...) expectValues(read, {__VA_ARGS__})

TEST(XMLValues, AreReadAsTheKindOfTheDefault) {
  const Variant noDefault = Variant::missing();
  const Variant date = Variant::date(1);
  const std::uint8_t byte = 1;
  const std::int16_t whole = 1;
  EXPECT_VALUES(zel_ValueFromElement, {u"n", noDefault, "String 12 abc"}, {u"n", Variant(), "String 12 abc"},
                {u"n", u"", "String 12 abc"}, {u"n", whole, "Double 12"}, {u"n", 1, "Double 12"},
                {u"n", 1.5F, "Double 12"}, {u"in/n", 1.5, "Double 7"}, {u"n", byte, "String 12 abc"},
                {u"f", true, "Boolean False"}, {u"t", date, "Date 3/5/2007 2:07:09 PM"},
                {u"zero", date, "Null"}, {u"e", 5, "String "}, {u"m", u"", "String <x>1</x>"},
                {u"q", 1, "Double 0"}, {u"none", 5, "Long 5"}, {u"none", Variant::null(), "Null"});
  EXPECT_VALUES(zel_ValueFromAttribute, {u"a", noDefault, "String 1.5x"}, {u"a", u"", "String 1.5x"},
                {u"a", Variant(), "Double 1.5"}, {u"a", byte, "Double 1.5"}, {u"b", false, "Boolean True"},
                {u"b", 1, "Double 0"}, {u"d", date, "Date 3/5/2007"}, {u"z", date, "Null"},
                {u"none", 5, "Long 5"});
  const auto inChild = [](StringView name, const Ref<Object>& node, const Variant& byDefault) {
    return zel_ValueFromChildElement(u"in", name, node, byDefault);
  };
  EXPECT_VALUES(inChild, {u"n", noDefault, "String 7"}, {u"none", 3, "Long 3"});
  EXPECT_EQ(shown(zel_ValueFromChildElement(u"none", u"n", root(), 4)), "Long 4");
}

TEST(XMLValues, WhatIsMissingOrDoesNotConvertIsRaisedWithItsSources) {
  const Ref<Object> r = root();
  const Variant none = Variant::missing();
  const auto missing = [](const std::string& source, const std::string& what) {
    return "-2147219991|mXML.ValueFrom" + source + "::zelUtilities.XMLFunctions|Missing " + what;
  };
  EXPECT_EQ(raisedError([&] { zel_ValueFromElement(u"x", r, none); }), missing("Element", "Element: x"));
  EXPECT_EQ(raisedError([&] { zel_ValueFromElement(u"n", r, true); }),
            "13|mXML.ValueFromElement::|Type mismatch");
  EXPECT_EQ(raisedError([&] { zel_ValueFromElement(u"n", nullptr, 1); }),
            "91|mXML.ValueFromElement::|Object variable not set");
  EXPECT_EQ(raisedError([&] { zel_ValueFromAttribute(u"x", r, none); }),
            missing("Attribute", "Attribute: x"));
  for (const auto& [child, source, lacking] : {std::tuple(u"p", "ChildElement", "Element: p"),
                                               {u"in", "ChildElement::mXML.ValueFromElement", "Element: c"}})
    EXPECT_EQ(raisedError([&, child = child] { zel_ValueFromChildElement(child, u"c", r, none); }),
              missing(source, lacking));
}

TEST(XMLDocument, IsLoadedFromAFileAtOnce) {
  const ScratchFolder scratch;
  files().replaceWhole(u"job.xml", "<?xml version='1.0' encoding='ISO-8859-1'?><r><n>\xE9</n></r>");
  EXPECT_EQ(shown(zel_ValueFromElement(u"r/n", zel_LoadXMLDocument(u"job.xml", true))), "String \xC3\xA9");
  EXPECT_FALSE(zel_LoadXMLDocument(u"none.xml", true, false));
  EXPECT_TRUE(
      raisedError([] { zel_LoadXMLDocument(u"none.xml", true); }).starts_with("-2147219991||XML Error: "));
}

TEST(XMLDocument, TheDescriptionOfTheLastErrorElementIsFound) {
  EXPECT_EQ(zel_XMLParseErrorMessage(u"<r><Error Description='1'/><a><Error Description='2&lt;'/></a></r>"),
            u"Description:\t2<");
  EXPECT_EQ(zel_XMLParseErrorMessage(u"<r><Error Description='1'/><Error/></r>"), u"Description:\t");
  for (const StringView none : {u"<r><Errors/></r>", u"<error Description='1'/>", u"<Error", u""})
    EXPECT_EQ(zel_XMLParseErrorMessage(none), u"") << toUtf8(none);
}

// A parser, or its error, with these properties and no others.
struct Fake : Object {
  Variant Invoke(StringView name, InvokeKind kind, std::span<Variant> arguments) override {
    if (equalFolded(name, u"loadXML")) return false;
    const auto found = properties.find(foldCase(name));
    return found == properties.end() ? Object::Invoke(name, kind, arguments) : found->second;
  }
  std::map<String, Variant> properties;  // by their names in small letters
};

TEST(XMLDocument, TheParseErrorTextHasALineForWhatTheParserKnows) {
  const auto error = make<Fake>(), parser = make<Fake>();
  EXPECT_EQ(zel_XMLParseErrorText(parser), u"");
  parser->properties[u"parseerror"] = error;
  EXPECT_EQ(zel_XMLParseErrorText(parser), u"XML Error: MSXML Error Code: .");
  error->properties = {{u"reason", u"Why.\r\n"}, {u"srctext", u"<a>"}, {u"url", u"x.xml"}, {u"line", 3},
                       {u"linepos", 7},          {u"errorcode", -5}};
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
  const RecordingDialogs::Box box{u"Object Descriptor: MSXML.DOMDocument", u"Missing Component", 48};
  EXPECT_EQ(dialogs.boxes, (std::vector{box, box}));
}

}  // namespace
}  // namespace zelUtilities
