// TranslationFile: the XML form of a translation table, read whole before any of it reaches a table.
#pragma once

#include <vector>

#include "automation/Object.h"
#include "automation/String.h"
#include "datalist/zelNodeList.h"

namespace zelUtilities {

struct TranslationFile {
  struct Language {
    String key;
    String name;
  };
  enum class Level { Section, Control, Part, Use, Text };
  struct Entry {
    Level level;
    String key;   // of a text: its language
    String text;  // only of a text
  };

  std::vector<Language> languages;
  std::vector<Entry> entries;  // as the file has them: each belongs to the last one of the level above
};

// What is in a file; nothing when there is no such file, or it is not well-formed. Raises what a missing
// attribute raises (see mXML::ValueFromAttribute).
std::unique_ptr<TranslationFile> readTranslationFile(const String& sFilename);

// The table as such a file.
String translationXML(const zelNodeList& table);

}  // namespace zelUtilities
