// Texts laid out by a pattern.
//
//   formatText(u"5551234", u"@@@-@@@@");      "555-1234"
//
// @ is a unit of the text or a blank, & a unit or nothing. Places are filled from the right, with ! anywhere
// from the left; what finds no place stands at the end. < turns the text to lower case, > to upper case
// (the first one counts). \x and "text" are literal, as is everything else. A second section is for empty
// texts.
#pragma once

#include "automation/String.h"

namespace zelUtilities {

String formatText(StringView text, StringView pattern);

}  // namespace zelUtilities
