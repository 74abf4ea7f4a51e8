// The interface description (IDL) of the library's classes, from which the type library is compiled.
//
// Each class becomes a coclass, a dispatch interface with its members under the identifiers that late-bound
// calls use, and, where it raises events, a source interface. Enumerations come with their values. Defaults
// that the compiler of the description cannot store stand in the help string instead.
#pragma once

#include <string>

#include "foundation/ClassRegistry.h"

namespace zelUtilities {

// The whole description, with LF line ends. Raises 51 with a sentence for names that no type library can
// hold: two that differ only in letter case, a word of the description language, text beyond ASCII.
std::string interfaceDescription(const ClassRegistry& registry);

// What a type library tells of a value: "BSTR", "_zelNode*", "ZEL_ErrorModes", "SAFEARRAY(unsigned char)".
std::string publishedType(const TypeInfo& type, const ClassRegistry& registry);

// How a type library shows a parameter's default ("-1", "\"x\"", "ZEL_CellType_Double"); "" where it has none
// or cannot.
std::string publishedDefault(const Parameter& parameter);

// Clients may assign an object to the property by reference.
bool isPublishedByReference(const Member& property);

// The help string of a member: its help and the defaults that publishedDefault cannot show.
std::string publishedHelp(const String& help, const std::vector<Parameter>& parameters);

}  // namespace zelUtilities
