// zelRegistry: "Functions for accessing the Windows Registry."
//
//   zel_CreateRegistryKey(HKEY_CURRENT_USER, u"Software\\Acme");
//   zel_SetRegistryValue(HKEY_CURRENT_USER, u"Software\\Acme", u"Width", std::int32_t{12});
//   Variant width = zel_GetRegistryValue(HKEY_CURRENT_USER, u"Software\\Acme", u"Width", std::int32_t{0});
//
// A key is a root and a path with backslashes below it; "" is the root itself. Names are found without regard
// to letter case; texts and names pass through the system's ANSI code page. Where the system has no registry,
// the library keeps one of the same shape. What the system refuses is False, a default or an empty
// collection, not an error, unless said otherwise.
#pragma once

#include <cstdint>

#include "automation/ClassInfo.h"
#include "automation/Collection.h"
#include "automation/String.h"
#include "automation/Variant.h"

// Windows' own headers define these as macros. They stay as they were behind the enumeration; where they are
// defined, write a root as a cast: static_cast<ZEL_Registry_HKEYs>(0x80000001).
#pragma push_macro("HKEY_CLASSES_ROOT")
#pragma push_macro("HKEY_CURRENT_USER")
#pragma push_macro("HKEY_LOCAL_MACHINE")
#pragma push_macro("HKEY_USERS")
#pragma push_macro("HKEY_PERFORMANCE_DATA")
#pragma push_macro("HKEY_CURRENT_CONFIG")
#pragma push_macro("HKEY_DYN_DATA")
#undef HKEY_CLASSES_ROOT
#undef HKEY_CURRENT_USER
#undef HKEY_LOCAL_MACHINE
#undef HKEY_USERS
#undef HKEY_PERFORMANCE_DATA
#undef HKEY_CURRENT_CONFIG
#undef HKEY_DYN_DATA

namespace zelUtilities {

enum ZEL_Registry_HKEYs : std::int32_t {
  HKEY_CLASSES_ROOT = -2147483647 - 1,
  HKEY_CURRENT_USER = -2147483647,
  HKEY_LOCAL_MACHINE = -2147483646,
  HKEY_USERS = -2147483645,
  HKEY_PERFORMANCE_DATA = -2147483644,
  HKEY_CURRENT_CONFIG = -2147483643,
  HKEY_DYN_DATA = -2147483642
};

template <>
const EnumInfo& enumInfo<ZEL_Registry_HKEYs>();

// Writes a text (REG_SZ), a 16- or 32-bit integer (REG_DWORD) or a byte array (REG_BINARY), in place of a
// value of any type. False where the key does not open for writing, a missing one included: nothing is
// created then. Raises 1001 for a value of another kind, 9 for a byte array without bounds.
bool zel_SetRegistryValue(ZEL_Registry_HKEYs hKey, const String& KeyName, const String& ValueName,
                          const Variant& Value);

// A text, also of an expandable one, which is not expanded; the parts of a multi-text stay separated by NULs;
// a byte array from 0; a 32-bit integer. The default where there is no such value or its type is another,
// Empty where no default is given.
Variant zel_GetRegistryValue(ZEL_Registry_HKEYs hKey, const String& KeyName, const String& ValueName,
                             const Variant& DefaultValue = Variant::missing());

// Whether the key opens for reading.
bool zel_CheckRegistryKey(ZEL_Registry_HKEYs hKey, const String& KeyName);

// Creates the key with the keys above it. True when the key was there already, False when it was created:
// callers read the result as that report. Raises 1001 where it can neither be created nor opened.
bool zel_CreateRegistryKey(ZEL_Registry_HKEYs hKey, const String& KeyName);

// Deletes a key with its values, if the system lets it: one with subkeys stays. hKey may be any open key.
void zel_DeleteRegistryKey(std::int32_t hKey, const String& KeyName);

// True when the value was there and is deleted.
bool zel_DeleteRegistryValue(ZEL_Registry_HKEYs hKey, const String& KeyName, const String& ValueName);

// The names of the subkeys, each under itself as the key; empty for a missing key. A failure, such as two
// names that differ in letter case alone, is logged, and ends the collection there.
Ref<Collection> zel_EnumRegistryKeys(ZEL_Registry_HKEYs hKey, const String& KeyName);

// The values, each an array (0 the name, 1 the data) under its name as the key; otherwise as the subkeys. A
// value of a type that zel_GetRegistryValue does not read has the data of the one before it, Empty where it
// is first.
Ref<Collection> zel_EnumRegistryValues(ZEL_Registry_HKEYs hKey, const String& KeyName);

// The function class of these operations.
const ClassInfo& zelRegistryInfo();

}  // namespace zelUtilities

#pragma pop_macro("HKEY_CLASSES_ROOT")
#pragma pop_macro("HKEY_CURRENT_USER")
#pragma pop_macro("HKEY_LOCAL_MACHINE")
#pragma pop_macro("HKEY_USERS")
#pragma pop_macro("HKEY_PERFORMANCE_DATA")
#pragma pop_macro("HKEY_CURRENT_CONFIG")
#pragma pop_macro("HKEY_DYN_DATA")
