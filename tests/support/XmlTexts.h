// Texts for the tests of XML that are too long to be written out.
#pragma once

#include "automation/String.h"

namespace zelUtilities {

inline String repeated(StringView text, int count) {
  String result;
  for (int i = 0; i < count; ++i) result.append(text);
  return result;
}

// As many elements within each other.
inline String nested(int depth) { return repeated(u"<a>", depth) + repeated(u"</a>", depth); }

// The beginning of a document, up to its document type, whose entity "k" stands for 100 billion characters.
inline String entityBomb() {
  String bomb = u"<!DOCTYPE a [<!ENTITY a 'xxxxxxxxxx'>";
  for (char16_t c = u'b'; c <= u'k'; ++c)
    bomb += u"<!ENTITY " + String(1, c) + u" '" + repeated(u"&" + String(1, c - 1) + u";", 10) + u"'>";
  return bomb + u"]>";
}

}  // namespace zelUtilities
