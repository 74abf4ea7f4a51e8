#include "text/zelXML.h"

#include "automation/Binder.h"

namespace zelUtilities {

const ClassInfo& zelXML::describeClass() {
  static const ClassInfo info =
      describeFunctions("zelXML", "Functions that write and read XML text.")
          .property("zel_XMLHeader", &zel_XMLHeader, "The first line of an XML document.")
          .function("zel_XMLMargin", &zel_XMLMargin, "The margin of one level of XML.")
          .function("zel_XMLTrue", &zel_XMLTrue, "True as XML text.")
          .function("zel_XMLFalse", &zel_XMLFalse, "False as XML text.")
          .property("zel_XMLDoNotTrim", &zel_XMLDoNotTrim, "The attribute that preserves white space.")
          .function("zel_ToXML", &zel_ToXML, {"sSource"}, "Text with XML's reserved characters escaped.")
          .function("zel_FromXML", &zel_FromXML, {"sSource"}, "Text with XML's entities read.")
          .function("zel_XMLCatalogEntry", &zel_XMLCatalogEntry, {"lID", "sKey", "sDescription"},
                    "An XML line for a catalog entry.")
          .function("zel_XMLError", &zel_XMLError,
                    {"sDescription", arg("sSource") = u"", arg("sContext") = u"", arg("sMargin") = u"    "},
                    "An XML line for an error.")
          .function("zel_AttrFromValue", &zel_AttrFromValue,
                    {"sAttrName", "sValue", arg("sDefaultValue") = u""}, "A value as an XML attribute.")
          .function("zel_ElementFromValue", &zel_ElementFromValue,
                    {"sTagname", "sValue", arg("sMargin") = u"", arg("sAttrs") = u"",
                     arg("bValueIsChild") = false, arg("sDefaultValue") = u""},
                    "A value as an XML element.")
          .function("zel_ToXMLBoolean", &zel_ToXMLBoolean, {"bValue"}, "A boolean value as XML text.")
          .function("zel_FromXMLBoolean", &zel_FromXMLBoolean, {"sValue"}, "XML text as a boolean value.")
          .function("zel_SQLQuote", &zel_SQLQuote, {"sSource"}, "Text between apostrophes, for SQL.")
          .function("zel_FormatXML", &zel_FormatXML, {"sXML"}, "XML text with each tag on a line.")
          .function("zel_ToXMLDate", &zel_ToXMLDate, {"vValue"}, "A date as XML text, MM-DD-YYYY.")
          .function("zel_LocalDateAsXML", &zel_LocalDateAsXML, {"sTag", "tDate", arg("sMargin") = u""},
                    "A date as an XML element, with the local offset from UTC.")
          .function("zel_DateRangeAsXML", &zel_DateRangeAsXML,
                    {"dUTCOffset", "tCurTime", "eTypeOfRange", arg("vStartTime") = 0, arg("vEndTime") = 0},
                    "The start and end of a range of dates as XML elements.")
          .function("zel_LoadXMLDocument", &zel_LoadXMLDocument,
                    {"sXMLSource", arg("bIsFileName") = false, arg("bRaiseError") = true},
                    "An XML document from a text or a file.")
          .function("zel_XMLParseErrorText", &zel_XMLParseErrorText, {"oDocument"},
                    "Why an XML document did not load.")
          .function("zel_XMLParseErrorMessage", &zel_XMLParseErrorMessage, {"sXML"},
                    "The description of the last Error element.")
          .function("zel_SearchForChild", &zel_SearchForChild, {"sKey", "oNode"},
                    "The node that a path selects, or nothing.")
          .function("zel_ValueFromElement", &zel_ValueFromElement,
                    {"sElement", reference("oNode"), optional("vDefault").asReference()},
                    "The value of an element.")
          .function("zel_ValueFromChildElement", &zel_ValueFromChildElement,
                    {"sParentElement", "sChildElement", "oNode", optional("vDefault")},
                    "The value of an element below another one.")
          .function("zel_ValueFromAttribute", &zel_ValueFromAttribute,
                    {"sAttrName", reference("oNode"), optional("vDefault").asReference()},
                    "The value of an attribute.");
  return info;
}

}  // namespace zelUtilities
