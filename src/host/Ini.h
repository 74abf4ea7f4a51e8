// `zel ini`: settings files through the node list, which is reached by name alone.
//
// A file is read whole and written whole. Nothing is written unless the entry exists, its new value can be
// stored, and the list holds every line of the file, so that nothing is lost by saving it.
#pragma once

#include "foundation/ClassRegistry.h"
#include "host/Console.h"

namespace zelUtilities::host {

struct IniEntry {
  String section;  // without brackets; "" for the lines before the first section
  String name;
};

// Prints the section lines and, below each, its entries as "name=value".
void listIni(const ClassRegistry& registry, const String& file, Console& console);
// Prints the entry's value as the file has it.
void getIni(const ClassRegistry& registry, const String& file, const IniEntry& entry, Console& console);
// Changes the entry's value; complains, and leaves the file alone, where there is no such entry.
void setIni(const ClassRegistry& registry, const String& file, const IniEntry& entry, const String& value,
            Console& console);

}  // namespace zelUtilities::host
