// XML texts and dates, and documents as clients load and read them, with the system's parser or its stand-in.
#include <map>

#include "automation/Calendar.h"
#include "automation/CaseFolding.h"
#include "automation/LocaleGuard.h"
#include "foundation/ClassRegistry.h"
#include "platform/Files.h"
#include "platform/LateBound.h"
#include "platform/TimeZone.h"
#include "support/RecordingDialogs.h"
#include "support/Testing.h"
#include "text/TextClasses.h"
#include "text/TextSearch.h"
#include "text/XmlDates.h"
#include "text/zelXML.h"

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
  EXPECT_EQ(fromXML(u"&#233;&&lt &LT; &l&lt;t;&"), "&#233;&&lt &LT; &l<t;&");  // what is no entity stays
}

TEST(XMLText, NumericTextsStay) {
  Locale swiss;
  swiss.thousandsSeparator = String(1, u'\'');
  const LocaleGuard guard(swiss);
  EXPECT_EQ(toXML(u"1'000.50") + toXML(u"1'000 <"), "1'000.501&apos;000 &lt;");
}

TEST(XMLText, CharactersBeyondAsciiAreWrittenByTheirCodePageValueIfTheyHaveOne) {
  EXPECT_EQ(toXML(u"\u0152uvre \u20AC5<6 caf\u00FF"), "&#140;uvre &#128;5&lt;6 caf&#255;");
  // Nor do look-alikes of the code page stand for a beta or a D with a stroke.
  EXPECT_EQ(toXML(u"\u4E2D<\U0001F600\u03B2\u0110"), "\xE4\xB8\xAD&lt;\xF0\x9F\x98\x80\xCE\xB2\xC4\x90");
}

TEST(XMLText, AnAttributeIsWrittenUnlessItsValueIsEmptyOrTheDefault) {
  const std::tuple<StringView, Variant, StringView> cases[] = {
      {u"5", u"5", u""},
      {u"", u"5", u""},
      {u"6", u"5", u" w='6'"},
      {u"a'b", u"", u" w='a&apos;b'"},
      {u"5", 5, u" w='5'"},  // a number is less than any text
      {u"5", Variant::null(), u" w='5'"}};
  for (const auto& [value, byDefault, attribute] : cases)
    EXPECT_EQ(toUtf8(zel_AttrFromValue(u"w", value, byDefault)), toUtf8(attribute));
  EXPECT_EQ(raisedError([] { zel_AttrFromValue(u"w", u"5", ArrayData::ofVariants({})); }),
            "13|mXML.AttrFromValue::|Type mismatch");
}

TEST(XMLText, AnElementIsALineAndChildMarkupStandsOnLinesOfItsOwn) {
  const auto element = [](StringView value, StringView attributes = {}, bool isChild = false,
                          StringView margin = {}) {
    return toUtf8(zel_ElementFromValue(u"A", value, margin, attributes, isChild, u"def"));
  };
  EXPECT_EQ(element(u"def") + toUtf8(zel_ElementFromValue(u"A", u"")), "");
  EXPECT_EQ(element(u"def", u"x='1'") + element(u"1<2"), "<A x='1'>def</A>\r\n<A>1&lt;2</A>\r\n");
  EXPECT_EQ(element(u"", u" x='1'", true, u"  "), "  <A x='1' />\r\n");
  EXPECT_EQ(element(u" <B>1</B>\r\n\r\n<C/> \r\n \r\n", u"", false, u" "),
            " <A>\r\n   <B>1</B>\r\n<C/> \r\n \r\n </A>\r\n");
  EXPECT_EQ(element(u"x", u"", true), "<A>\r\n  x\r\n</A>\r\n");
  for (const StringView noMarkup : {u"<B>", u"<B/>x", u"x<B/>", u"<B/>\n", u"<B/>\r\n\n"})
    EXPECT_EQ(element(noMarkup), "<A>" + toXML(noMarkup) + "</A>\r\n");
}

TEST(XMLText, FixedLines) {
  EXPECT_EQ(
      spelled({zel_XMLCatalogEntry(-7, u"k'", u"<d>"), zel_XMLError(u"a<b"), zel_SQLQuote(u"O'Brien \"''")}),
      "    <CatalogEntry ID='-7' Key='k'' Description='<d>' />\r\n|"
      "    <Error Description='a&lt;b' />\r\n|'O''Brien \"'''''");
  EXPECT_EQ(toUtf8(zel_XMLError(u"", u"s&", u"c'", u" ")),
            " <Error Description='' Source='s&amp;' Context='c&apos;' />\r\n");
  EXPECT_EQ(spelled({zel_XMLHeader(), zel_XMLMargin(), zel_XMLTrue(), zel_XMLFalse(), zel_XMLDoNotTrim()}),
            "<?xml version='1.0' standalone='yes'?>\r\n|  |true|false| xml:space='preserve'");
  EXPECT_EQ(zel_ToXMLBoolean(zel_FromXMLBoolean(u"TRUE")), u"true");
  for (const StringView no : {u"-1", u"1", u"yes", u"true ", u""}) EXPECT_FALSE(zel_FromXMLBoolean(no));
}

TEST(XMLText, FormattingPutsEachTagOnALine) {
  const auto expect = [](StringView xml, StringView lines) {
    EXPECT_EQ(toUtf8(replaceEach(zel_FormatXML(xml), u"\r\n", u"|")), toUtf8(lines)) << toUtf8(xml);
  };
  expect(u"<a><b>x</b><c/></a>", u"<a>|    <b>|x</b>|    <c/>|</a>|");
  expect(u"  <a>  x y  </a>\r\n  <b />  ", u"<a>|x y</a>|<b />|");
  expect(u"<?xml?><a/>", u"<?xml?>|    <a/>|");
  expect(u"x<a>y<b>z", u"x<a>|y    <b>|z");
  expect(u"</a></a/><b>", u"</a>|</a/>|<b>|");
  expect(u"<a><b", u"<a>|    <b");
  expect(u"> \r\n x \r\n\n<", u">x \n<");
}

TEST(XMLText, FormattingCountsThePositionsOfTagsIn16Bits) {
  const String longest = u"<" + String(32765, u'a') + u">";
  EXPECT_EQ(zel_FormatXML(longest + u"text").size(), 32773U);
  EXPECT_EQ(zel_FormatXML(u"<a>" + String(100'000, u'x')).size(), 100'005U);
  for (const String& tooLong : {u"x" + longest, longest + u"<b", String(32767, u'x') + u"<"})
    EXPECT_EQ(raisedError([&] { zel_FormatXML(tooLong); }), "6|mXML.FormatXML::|Overflow");
}

TEST(XMLText, ItsClassesAndOperationsAreFoundByName) {
  ClassRegistry registry;
  registerText(registry);
  EXPECT_TRUE(registry.create(u"zelUtilities.zelStringCat"));
  const LateBound functions(ClassRegistry::instance(*registry.findOperation(u"zel_ToXML")->functionClass));
  EXPECT_EQ(functions.text(u"zel_ToXML", u"a<b"), u"a&lt;b");
}

double at(int year, int month, int day, int seconds = 0) {
  return dateOf(dayNumberOf(year, month, day), seconds);
}

TEST(XmlDates, AreWrittenYearFirstInEveryLocale) {
  Locale finnish = germanLocale();
  finnish.timeSeparator = u".";
  const LocaleGuard guard(finnish);
  const auto expect = [](const Variant& value, StringView text) {
    EXPECT_EQ(toUtf8(zel_ToXMLDate(value)), toUtf8(text));
  };
  expect(Variant::date(at(2007, 3, 5, 50829)), u"2007-03-05 14:07:09");
  expect(Variant::date(at(2007, 3, 5)), u"2007-03-05");
  expect(Variant::date(at(100, 1, 1, 1)), u"0100-01-01 00:00:01");
  expect(Variant::date(at(9999, 12, 31, 86399)), u"9999-12-31 23:59:59");
  expect(u"2007-3-5 14:07", u"2007-03-05 14:07:00");
  for (const Variant& none : {Variant::date(0.5), Variant::date(at(1899, 5, 5)), Variant(39146.0),
                              Variant::null(), Variant(), Variant(u"no date")})
    expect(none, u"");
  for (const double beyond : {-657435.5, 2958466.0, 1e300})
    EXPECT_EQ(raisedError([&] { zel_ToXMLDate(Variant::date(beyond)); }), "6|mXML.ToXMLDate::|Overflow");
}

struct FixedZone : TimeZone {
  std::uint32_t information(std::optional<int>, TimeZoneRecord& record) override {
    record = {};
    record.bias = bias;
    return TimeZoneState::Standard;
  }
  std::int32_t bias = 0;
};

TEST(XmlDates, TheLocalOffsetIsWrittenInWholeHours) {
  FixedZone zone;
  const Replaced<TimeZone> inForce(zone);
  const std::pair<std::int32_t, std::string> offsets[] = {{300, "-05"}, {0, "+00"},  {-330, "+06"},
                                                          {210, "-04"}, {15, "-00"}, {-840, "+14"}};
  for (const auto& [bias, offset] : offsets) {
    zone.bias = bias;
    EXPECT_EQ(toUtf8(zel_LocalDateAsXML(u"T", {at(2007, 3, 5, 50829)}, u" ")),
              " <T>2007-03-05T14:07:09.000000" + offset + ":00</T>\r\n");
  }
  EXPECT_EQ(zel_LocalDateAsXML(u"T", {}), u"");
}

TEST(XmlDates, ARangeIsItsStartAndItsEnd) {
  const auto expect = [](int type, double now, const std::string& start, const std::string& end) {
    const Variant ends[] = {u"3/5/2007", at(2007, 3, 6, 60)};  // for a manual range
    EXPECT_EQ(toUtf8(zel_DateRangeAsXML(1.5, {now}, static_cast<ZEL_XMLDateRanges>(type), ends[0], ends[1])),
              "<StartTime>" + start + ".000000+02:00</StartTime>\r\n<EndTime>" + end +
                  ".000000+02:00</EndTime>\r\n")
        << type;
  };
  const double now = at(2008, 2, 29, 3600);
  const std::string moment = "2008-02-29T01:00:00";
  expect(0, now, "2007-03-05T00:00:00", "2007-03-06T00:01:00");
  expect(1, now, "2008-02-29T00:00:00", "2008-02-29T23:59:59");
  expect(2, now, "2008-02-28T00:00:00", "2008-02-28T23:59:59");
  expect(3, now, "2008-02-28T21:00:00", moment);
  expect(4, now, "2008-02-28T17:00:00", moment);
  expect(5, now, "2008-02-28T13:00:00", moment);
  expect(6, now, "2008-02-28T01:00:00", moment);
  expect(7, now, "2008-02-22T01:00:00", moment);
  expect(8, now, "2008-02-01T00:00:00", moment);
  expect(9, now, "2008-01-01T00:00:00", "2008-01-31T23:59:59");
  expect(10, now, "2008-01-01T00:00:00", moment);
  expect(11, now, "2007-10-01T00:00:00", "2007-12-31T23:59:59");
  expect(12, now, "2008-01-01T00:00:00", moment);
  expect(13, now, "2007-01-01T00:00:00", "2007-12-31T23:59:59");
  expect(3, at(1899, 12, 29, 3600), "1899-12-28T21:00:00", "1899-12-29T01:00:00");
}

TEST(XmlDates, ARangeThatCannotBeIsRefusedAndTheZeroDateLeftOut) {
  EXPECT_EQ(zel_DateRangeAsXML(0, {}, XML_DateRange_ManualDays), u"");
  EXPECT_EQ(zel_DateRangeAsXML(-5, {}, XML_DateRange_ManualDays, 0, at(2007, 3, 5)),
            u"<EndTime>2007-03-05T00:00:00.000000-05:00</EndTime>\r\n");
  const auto raised = [](int type, double now, const Variant& start = 0) {
    return raisedError([&] { zel_DateRangeAsXML(0, {now}, static_cast<ZEL_XMLDateRanges>(type), start); });
  };
  EXPECT_EQ(raised(14, 1), "5|mXML.DateRangeAsXML::|Invalid procedure call or argument");
  EXPECT_EQ(raised(XML_DateRange_LastYear, at(100, 1, 1)), "6|mXML.DateRangeAsXML::|Overflow");
  EXPECT_EQ(raised(XML_DateRange_Today, 1e300), "6|mXML.DateRangeAsXML::|Overflow");
  EXPECT_EQ(raised(XML_DateRange_ManualDays, 1, u"never"), "13|mXML.DateRangeAsXML::|Type mismatch");
}

constexpr StringView sample =
    u"<r a='1.5x' b='true' d='3/5/2007' z='0:00'><n> 12 abc</n><e/><t>2007-03-05 14:07:09</t><f>False</f>"
    u"<m><x>1</x></m><q>text<x/></q><zero>0:00</zero><in><n>7</n></in></r>";

Ref<Object> root() { return zel_SearchForChild(u"r", zel_LoadXMLDocument(sample)); }

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
