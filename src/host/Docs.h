// `zel docs`: the reference of all classes as Markdown, one page a class.
#pragma once

#include <vector>

#include "foundation/ClassRegistry.h"
#include "host/Console.h"

namespace zelUtilities::host {

struct Page {
  String name;  // "zelNodeList.md"
  String text;  // with LF line ends
};

// README.md with the classes and the global operations, then one page a class, then enumerations.md. The same
// registry gives the same pages.
std::vector<Page> referencePages(const ClassRegistry& registry);

// Prints all pages one after the other.
void printDocs(const ClassRegistry& registry, Console& console);
// Writes the pages into a folder, which is created where it is missing. Other files in it stay.
void writeDocs(const ClassRegistry& registry, const String& folder, Console& console);

}  // namespace zelUtilities::host
