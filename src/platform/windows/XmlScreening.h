// What is refused of an XML document ahead of the system's parsers, which bound too little.
#pragma once

#include <string_view>

#include "automation/String.h"

namespace zelUtilities {

// Why a text is not to be parsed, as a sentence: it holds a NUL or a lone surrogate, uses an entity that lies
// elsewhere, is not declared or stands for itself, or its entities stand for more than about ten times its
// own length. "" for any other text. Entities are looked at only where there is a document type.
String refusalOfXml(StringView document);
// The same of bytes, but for their characters: of UTF-16 as the first ones show it, else of an encoding that
// has ASCII in its place.
String refusalOfXml(std::string_view document);

}  // namespace zelUtilities
