// What `zel classes` and `zel describe` print of the class registry.
#pragma once

#include "automation/ClassInfo.h"
#include "foundation/ClassRegistry.h"
#include "host/Console.h"

namespace zelUtilities::host {

// One class a line: its name and help, in the order of registration.
void printClasses(const ClassRegistry& registry, Console& console);

// The class's help, then each member and event with its signature and help.
void printClass(const ClassInfo& info, Console& console);

// Name = number, one a line.
void printEnumeration(const EnumInfo& info, Console& console);

// "zel_Name(sText As String, [lStart As Long = 1]) As Boolean", for a member's description and for messages.
String signature(const Member& member);
String signature(const EventInfo& event);

}  // namespace zelUtilities::host
