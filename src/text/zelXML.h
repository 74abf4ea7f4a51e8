// zelXML: the global operations on XML, each one a routine of mXML.
//
//   zel_ToXML(u"a<b & 'c'");                     // a&lt;b &amp; &apos;c&apos;
//   zel_ElementFromValue(u"Size", u"5");         // <Size>5</Size> and a line end
//   Ref<Object> document = zel_LoadXMLDocument(u"Job.xml", true);
//   Variant size = zel_ValueFromElement(u"Job/Size", document, std::int32_t{1});
//
// What they do and raise stands in the headers below. They keep no state; any thread may call them.
#pragma once

#include "automation/ClassInfo.h"
#include "text/FormatXml.h"
#include "text/XmlDates.h"
#include "text/mXML.h"
#include "text/mXMLDocument.h"

namespace zelUtilities {

inline String zel_XMLHeader() { return String(mXML::XMLHeader); }
inline String zel_XMLMargin() { return String(mXML::XMLMargin); }
inline String zel_XMLTrue() { return String(mXML::XMLTrue); }
inline String zel_XMLFalse() { return String(mXML::XMLFalse); }
inline String zel_XMLDoNotTrim() { return String(mXML::XMLDoNotTrim); }

// Text as the content of an element or attribute, and back.
inline String zel_ToXML(StringView sSource) { return mXML::ToXML(sSource); }
inline String zel_FromXML(StringView sSource) { return mXML::FromXML(sSource); }

inline String zel_XMLCatalogEntry(std::int32_t lID, StringView sKey, StringView sDescription) {
  return mXML::XMLCatalogEntry(lID, sKey, sDescription);
}
inline String zel_XMLError(StringView sDescription, StringView sSource = {}, StringView sContext = {},
                           StringView sMargin = u"    ") {
  return mXML::XMLError(sDescription, sSource, sContext, sMargin);
}
inline String zel_AttrFromValue(StringView sAttrName, StringView sValue, const Variant& sDefaultValue = u"") {
  return mXML::AttrFromValue(sAttrName, sValue, sDefaultValue);
}
inline String zel_ElementFromValue(StringView sTagname, StringView sValue, StringView sMargin = {},
                                   StringView sAttrs = {}, bool bValueIsChild = false,
                                   const Variant& sDefaultValue = u"") {
  return mXML::ElementFromValue(sTagname, sValue, sMargin, sAttrs, bValueIsChild, sDefaultValue);
}
inline String zel_ToXMLBoolean(bool bValue) { return String(mXML::ToXMLBoolean(bValue)); }
inline bool zel_FromXMLBoolean(StringView sValue) { return mXML::FromXMLBoolean(sValue); }
inline String zel_SQLQuote(StringView sSource) { return mXML::SQLQuote(sSource); }
inline String zel_FormatXML(StringView sXML) { return mXML::FormatXML(sXML); }

inline String zel_ToXMLDate(const Variant& vValue) { return mXML::ToXMLDate(vValue); }
inline String zel_LocalDateAsXML(StringView sTag, Date tDate, StringView sMargin = {}) {
  return mXML::LocalDateAsXML(sTag, tDate, sMargin);
}
inline String zel_DateRangeAsXML(double dUTCOffset, Date tCurTime, ZEL_XMLDateRanges eTypeOfRange,
                                 const Variant& vStartTime = std::int32_t{0},
                                 const Variant& vEndTime = std::int32_t{0}) {
  return mXML::DateRangeAsXML(dUTCOffset, tCurTime, eTypeOfRange, vStartTime, vEndTime);
}

inline Ref<Object> zel_LoadXMLDocument(StringView sXMLSource, bool bIsFileName = false,
                                       bool bRaiseError = true) {
  return mXML::LoadXMLDocument(sXMLSource, bIsFileName, bRaiseError);
}
inline String zel_XMLParseErrorText(const Ref<Object>& oDocument) {
  return mXML::XMLParseErrorText(oDocument);
}
inline String zel_XMLParseErrorMessage(StringView sXML) { return mXML::XMLParseErrorMessage(sXML); }
inline Ref<Object> zel_SearchForChild(StringView sKey, const Ref<Object>& oNode) {
  return mXML::SearchForChild(sKey, oNode);
}
inline Variant zel_ValueFromElement(StringView sElement, const Ref<Object>& oNode,
                                    const Variant& vDefault = Variant::missing()) {
  return mXML::ValueFromElement(sElement, oNode, vDefault);
}
inline Variant zel_ValueFromChildElement(StringView sParentElement, StringView sChildElement,
                                         const Ref<Object>& oNode,
                                         const Variant& vDefault = Variant::missing()) {
  return mXML::ValueFromChildElement(sParentElement, sChildElement, oNode, vDefault);
}
inline Variant zel_ValueFromAttribute(StringView sAttrName, const Ref<Object>& oNode,
                                      const Variant& vDefault = Variant::missing()) {
  return mXML::ValueFromAttribute(sAttrName, oNode, vDefault);
}

namespace zelXML {
const ClassInfo& describeClass();
}

}  // namespace zelUtilities
