#include "text/mXML.h"

#include <algorithm>
#include <initializer_list>

#include "automation/CaseFolding.h"
#include "automation/Comparison.h"
#include "foundation/Handled.h"
#include "text/TextSearch.h"
#include "text/XmlEscaping.h"

namespace zelUtilities::mXML {

namespace {

constexpr StringView lineEnd = u"\r\n";

constexpr StringView reserved = u"&<>'\"";

String unescape(StringView text, std::size_t firstAmpersand) {
  String out;
  out.reserve(text.size());
  std::size_t done = 0;
  for (std::size_t at = firstAmpersand; at < text.size(); at = std::min(text.find(u'&', done), text.size())) {
    out += text.substr(done, at - done);
    const StringView rest = text.substr(at);
    const auto* const referred = std::find_if(
        reserved.begin(), reserved.end(), [rest](char16_t unit) { return rest.starts_with(entityOf(unit)); });
    out += referred == reserved.end() ? u'&' : *referred;
    done = at + (referred == reserved.end() ? 1 : entityOf(*referred).size());
  }
  if (done < text.size()) out += text.substr(done);
  return out;
}

String joined(std::initializer_list<StringView> pieces) {
  std::size_t size = 0;
  for (const StringView piece : pieces) size += piece.size();
  String out;
  out.reserve(size);
  for (const StringView piece : pieces) out += piece;
  return out;
}

// The last character once line ends and blanks behind it are left out; 0 where there is none.
char16_t lastOf(StringView text) {
  while (text.ends_with(u' ') || text.ends_with(lineEnd)) text.remove_suffix(text.back() == u' ' ? 1 : 2);
  return text.empty() ? u'\0' : text.back();
}

bool isMarkup(StringView value) {
  const std::size_t first = value.find_first_not_of(u' ');
  return first != StringView::npos && value[first] == u'<' && lastOf(value) == u'>' &&
         (value.find(u"</") != StringView::npos || value.find(u"/>") != StringView::npos);
}

String childLines(StringView markup, StringView margin) {
  return replaceEach(joined({margin, u"  ", trimBlanks(markup), lineEnd}), u"\r\n\r\n", lineEnd);
}

}  // namespace

String ToXML(StringView sSource) {
  return chained(u"mXML.ToXML", [sSource] {
    const std::size_t special = plainEnd(sSource, 0);
    if (special == sSource.size()) return String(sSource);
    String out;
    out.reserve(sSource.size() + sSource.size() / 8 + 8);
    escapeTo(sSource, special, [&out](StringView piece) { out += piece; });
    return out;
  });
}

// No replacement can make up a new reference, so one pass gives what one pass per entity gives.
String FromXML(StringView sSource) {
  return chained(u"mXML.FromXML", [sSource] {
    const std::size_t ampersand = sSource.find(u'&');
    return ampersand == StringView::npos ? String(sSource) : unescape(sSource, ampersand);
  });
}

bool isDefault(StringView value, const Variant& defaultValue) {
  return defaultValue.isString() ? value == defaultValue.text() : equals(value, defaultValue);
}

String AttrFromValue(StringView sAttrName, StringView sValue, const Variant& sDefaultValue) {
  return chained(u"mXML.AttrFromValue", [&]() -> String {
    if (isDefault(sValue, sDefaultValue) || sValue.empty()) return {};
    return joined({u" ", sAttrName, u"='", ToXML(sValue), u"'"});
  });
}

String ElementFromValue(StringView sTagname, StringView sValue, StringView sMargin, StringView sAttrs,
                        bool bValueIsChild, const Variant& sDefaultValue) {
  return chained(u"mXML.ElementFromValue", [&]() -> String {
    if (isDefault(sValue, sDefaultValue) && sAttrs.empty()) return {};
    const StringView gap = sAttrs.empty() || sAttrs.front() == u' ' ? u"" : u" ";
    const String begin = joined({sMargin, u"<", sTagname, gap, sAttrs});
    if (sValue.empty()) return joined({begin, u" />", lineEnd});
    if (!bValueIsChild && !isMarkup(sValue))
      return joined({begin, u">", ToXML(sValue), u"</", sTagname, u">", lineEnd});
    return joined(
        {begin, u">", lineEnd, childLines(sValue, sMargin), sMargin, u"</", sTagname, u">", lineEnd});
  });
}

String XMLCatalogEntry(std::int32_t lID, StringView sKey, StringView sDescription) {
  return chained(u"mXML.XMLCatalogEntry", [&] {
    return joined({u"    <CatalogEntry ID='", decimalText(lID), u"' Key='", sKey, u"' Description='",
                   sDescription, u"' />", lineEnd});
  });
}

String XMLError(StringView sDescription, StringView sSource, StringView sContext, StringView sMargin) {
  return chained(u"mXML.XMLError", [&] {
    return joined({sMargin, u"<Error Description='", ToXML(sDescription), u"'",
                   AttrFromValue(u"Source", sSource), AttrFromValue(u"Context", sContext), u" />", lineEnd});
  });
}

StringView ToXMLBoolean(bool bValue) { return bValue ? XMLTrue : XMLFalse; }

bool FromXMLBoolean(StringView sValue) { return equalFolded(sValue, XMLTrue); }

String SQLQuote(StringView sSource) {
  return chained(u"mXML.SQLQuote", [sSource] {
    return joined({u"'", replaceEach(sSource, u"'", u"''"), u"'"});
  });
}

}  // namespace zelUtilities::mXML
