// `zel translate`: one text of a translation file, through the translation table, which is reached by name.
#pragma once

#include "foundation/ClassRegistry.h"
#include "host/Console.h"

namespace zelUtilities::host {

struct TextName {
  String section;
  String control;
  String part;
  String use = u"Caption";
};

// Prints the text in a language. Complains where the file cannot be read, has no such language, or has no
// such text.
void translate(const ClassRegistry& registry, const String& file, const String& language,
               const TextName& name, Console& console);

}  // namespace zelUtilities::host
