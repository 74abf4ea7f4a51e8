// mXML: XML text for the library's own use. Clients reach these routines through zelXML.h, and so those of
// FormatXml.h, XmlDates.h and mXMLDocument.h.
//
// A failure is raised under "mXML.<routine>::<its own source>" and not logged. Lines end in CR LF; attribute
// values stand between apostrophes.
#pragma once

#include <cstdint>

#include "automation/String.h"
#include "automation/Variant.h"

namespace zelUtilities::mXML {

inline constexpr StringView XMLHeader = u"<?xml version='1.0' standalone='yes'?>\r\n";
inline constexpr StringView XMLMargin = u"  ";
inline constexpr StringView XMLTrue = u"true";
inline constexpr StringView XMLFalse = u"false";
inline constexpr StringView XMLDoNotTrim = u" xml:space='preserve'";

// Escapes & < > ' and " unless the text is numeric in the user's locale, and writes each character
// whose code in the system's code page is 128 or more as "&#code;". The code is the code page's, not
// Unicode's: the euro sign is "&#128;" in the Western one. A character without a code there stays.
String ToXML(StringView sSource);

// Reads &lt; &gt; &apos; &quot; and &amp;, each once ("&amp;lt;" is "&lt;"). Numeric references stay.
String FromXML(StringView sSource);

// Whether a value is the default, the two compared as Variants.
bool isDefault(StringView value, const Variant& defaultValue);

// " name='value'" with the value escaped; "" for the default value and the empty one.
String AttrFromValue(StringView sAttrName, StringView sValue, const Variant& sDefaultValue = u"");

// A line <Tag attributes>value</Tag>, or <Tag attributes /> for an empty value; "" for the default value
// without attributes. Child markup, which is what bValueIsChild says or what begins with "<", ends with ">"
// and holds "</" or "/>", is not escaped and stands on lines of its own, the first of which is indented by
// two more blanks; empty lines in it are dropped.
String ElementFromValue(StringView sTagname, StringView sValue, StringView sMargin = {},
                        StringView sAttrs = {}, bool bValueIsChild = false,
                        const Variant& sDefaultValue = u"");

// A line <CatalogEntry ID='...' Key='...' Description='...' />; the texts are not escaped.
String XMLCatalogEntry(std::int32_t lID, StringView sKey, StringView sDescription);

// A line <Error Description='...' Source='...' Context='...' />, without the last two where they are empty.
String XMLError(StringView sDescription, StringView sSource = {}, StringView sContext = {},
                StringView sMargin = u"    ");

StringView ToXMLBoolean(bool bValue);
// Whether the text is "true" in any letter case; "1" and "true " are not.
bool FromXMLBoolean(StringView sValue);

// The text between apostrophes, each apostrophe in it doubled.
String SQLQuote(StringView sSource);

}  // namespace zelUtilities::mXML
