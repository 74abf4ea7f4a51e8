// XML documents, as far as the library and its clients read them: loading, and typed values out of nodes.
//
//   Ref<Object> document = mXML::LoadXMLDocument(u"<Job><Size>5</Size></Job>");
//   Variant size = mXML::ValueFromElement(u"Job/Size", document, std::int32_t{1});      // a Double
//
// Documents and nodes are the system's ("MSXML.DOMDocument"), called late. A failure is raised under
// "mXML.<routine>::<its own source>" and not logged; nothing where a node is needed is 91.
#pragma once

#include <cstdint>

#include "automation/Error.h"
#include "automation/Object.h"
#include "automation/String.h"
#include "automation/Variant.h"

namespace zelUtilities::mXML {

// A document that does not load, and a missing element or attribute; the latter two have the source
// "zelUtilities.XMLFunctions" behind that of the routine.
inline constexpr std::int32_t xmlError = objectErrorBase + 1513;

// The document that a text holds, or the file or address that it names; loaded when this returns. What does
// not load raises xmlError, with no source and XMLParseErrorText as the description. Without bRaiseError
// every failure gives nothing. Where there is no parser at all, a message box says so. White space alone in
// an element, or at the ends of its text, is left out unless it is to be preserved.
Ref<Object> LoadXMLDocument(StringView sXMLSource, bool bIsFileName = false, bool bRaiseError = true,
                            bool bPreserveWhiteSpace = false);

// Why the document did not load, in lines of reason, source text, address, place and code, without those that
// the parser does not know; "" for a document without a parse error object.
String XMLParseErrorText(const Ref<Object>& oDocument);

// The node that a path selects from a node, or nothing.
Ref<Object> SearchForChild(StringView sKey, const Ref<Object>& oNode);

// What the first child of the selected element holds: its text, or its markup where it has children of its
// own; "" for an element without children. Read as the kind that the default has: a Boolean; a date, the zero
// date as Null; the leading number as a Double for Integer, Long, Single and Double; else as text. For a
// missing element the default as it is; without one xmlError "Missing Element: <name>". Raises 13 for a text
// that is no Boolean or date.
Variant ValueFromElement(StringView sElement, const Ref<Object>& oNode,
                         const Variant& vDefault = Variant::missing());
// The same below the element that sParentElement selects; where that is missing, it is what is missing.
Variant ValueFromChildElement(StringView sParentElement, StringView sChildElement, const Ref<Object>& oNode,
                              const Variant& vDefault = Variant::missing());

// The value of an attribute, read as the kind that the default has: text for a String and without a default,
// a Boolean, a date as above, and for all other kinds, Empty included, the leading number as a Double. For a
// missing attribute the default as it is; without one xmlError "Missing Attribute: <name>".
Variant ValueFromAttribute(StringView sAttrName, const Ref<Object>& oNode,
                           const Variant& vDefault = Variant::missing());

// "Description:", a tab and the description of the last Error element in an XML text; "" where there is none,
// or the text does not load.
String XMLParseErrorMessage(StringView sXML);

}  // namespace zelUtilities::mXML
