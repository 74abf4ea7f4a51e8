// What number, date and text patterns have in common: literals, quoted text and sections.
#pragma once

#include <cstddef>

#include "automation/String.h"

namespace zelUtilities {

// Units that the literal at the start of a pattern takes: \x, or "text" to its closing quote or the pattern's
// end; 0 where it starts with none.
std::size_t literalLength(StringView pattern);

// What such a literal stands for.
StringView literalText(StringView literal);

// A section of a pattern, counted from 0; sections are divided by semicolons outside of literals. Nothing
// where the pattern has fewer.
StringView patternSection(StringView pattern, int index);

// Whether a text starts with a word, which is given in lower case, in any letter case (A to Z).
bool startsWithWord(StringView text, StringView lowerCase);

char16_t lowerLetter(char16_t unit);

}  // namespace zelUtilities
