// What the library's classes are called in its type library, and under which identifiers.
//
//   publishedUuid("zelUtilities.zelNodeList")       the class identifier, always the same
//
// An identifier is the name-based UUID (version 5) of the qualified name, so nobody keeps a table of them.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "automation/ClassInfo.h"

namespace zelUtilities {

struct Uuid {
  std::array<std::uint8_t, 16> bytes;  // in the order in which the text form shows them
  friend bool operator==(const Uuid&, const Uuid&) = default;
};

// "fbd36a25-..." in lower case, without braces.
std::string uuidText(const Uuid& uuid);

// The version 5 UUID of a name within a name space.
Uuid nameUuid(const Uuid& space, std::string_view name);
// The same within the library's own name space.
Uuid publishedUuid(std::string_view qualifiedName);

std::string publishedLibrary();      // "zelUtilities"
std::string publishedVersion();      // "1.2"
std::string publishedLibraryHelp();  // "Zelora Utility Functions (V1.2)"

// The system's own marshaller of dispatch interfaces, which takes calls to other apartments.
inline constexpr char dispatchMarshaller[] = "{00020420-0000-0000-C000-000000000046}";

std::string programmaticId(const ClassInfo& info);      // "zelUtilities.zelNodeList"
std::string callInterfaceName(const ClassInfo& info);   // "_zelNodeList", what clients call
std::string eventInterfaceName(const ClassInfo& info);  // "_zelNodeListEvents", what it calls

// Clients create it by name: an object each time, or the one instance of a function class.
bool isPublishedCreatable(const ClassInfo& info);

Uuid libraryUuid();
Uuid classUuid(const ClassInfo& info);
Uuid callInterfaceUuid(const ClassInfo& info);
Uuid eventInterfaceUuid(const ClassInfo& info);
Uuid enumerationUuid(const EnumInfo& info);

}  // namespace zelUtilities
