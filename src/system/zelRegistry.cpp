#include "system/zelRegistry.h"

#include <string>

#include "automation/ArrayData.h"
#include "automation/Binder.h"
#include "automation/Error.h"
#include "foundation/Handled.h"
#include "foundation/RegistryVariant.h"
#include "platform/Locale.h"
#include "platform/Registry.h"

namespace zelUtilities {

namespace {

constexpr std::int32_t registryError = 1001;

struct StoredData {
  std::uint32_t type;
  std::string bytes;
};

StoredData doubleWord(std::int32_t value) {
  std::string bytes;
  for (int shift = 0; shift < 32; shift += 8)
    bytes += static_cast<char>(static_cast<std::uint32_t>(value) >> shift & 0xFF);
  return {RegistryType::DWord, bytes};
}

// As many elements as the first dimension has.
StoredData binary(const ArrayData& array) {
  if (array.bounds().empty()) throw Error(ErrorNumber::SubscriptOutOfRange);
  const auto* first = reinterpret_cast<const char*>(array.bytes().data());
  return {RegistryType::Binary, std::string(first, array.bounds()[0].count)};
}

StoredData storedData(const Variant& value) {
  if (value.isString()) return {RegistryType::Text, narrow(value.text())};
  if (value.kind() == VariantKind::Integer) return doubleWord(value.integer());
  if (value.kind() == VariantKind::Long) return doubleWord(value.longInteger());
  if (value.isArray() && value.array().elementKind() == VariantKind::Byte) return binary(value.array());
  throw Error(registryError, u"zelRegistry.zel_SetRegistryValue", u"Unsupported value type");
}

// The key to enumerate: the root itself for an empty name. False where the key does not open.
bool openForEnumeration(RegistryKey& key, RegistryHandle root, const String& name, RegistryHandle& handle) {
  handle = root;
  if (name.empty()) return true;
  if (key.open(root, name, RegistryAccess::Read) != RegistryResult::Success) return false;
  handle = key.handle();
  return true;
}

// Runs the body; a failure is logged together with the progress text as it is then.
template <class Body>
void handledWithProgress(StringView source, const String& progress, Body&& body) {
  try {
    body();
  } catch (...) {
    logCurrent(source, progress);
  }
}

}  // namespace

template <>
const EnumInfo& enumInfo<ZEL_Registry_HKEYs>() {
  static const EnumInfo info{u"ZEL_Registry_HKEYs",
                             {{u"HKEY_CLASSES_ROOT", HKEY_CLASSES_ROOT},
                              {u"HKEY_CURRENT_USER", HKEY_CURRENT_USER},
                              {u"HKEY_LOCAL_MACHINE", HKEY_LOCAL_MACHINE},
                              {u"HKEY_USERS", HKEY_USERS},
                              {u"HKEY_PERFORMANCE_DATA", HKEY_PERFORMANCE_DATA},
                              {u"HKEY_CURRENT_CONFIG", HKEY_CURRENT_CONFIG},
                              {u"HKEY_DYN_DATA", HKEY_DYN_DATA}}};
  return info;
}

bool zel_SetRegistryValue(ZEL_Registry_HKEYs hKey, const String& KeyName, const String& ValueName,
                          const Variant& Value) {
  RegistryKey key;
  if (key.open(hKey, KeyName, RegistryAccess::Write) != RegistryResult::Success) return false;
  const StoredData data = storedData(Value);
  return registry().setValue(key.handle(), ValueName, data.type, data.bytes) == RegistryResult::Success;
}

Variant zel_GetRegistryValue(ZEL_Registry_HKEYs hKey, const String& KeyName, const String& ValueName,
                             const Variant& DefaultValue) {
  return readRegistryValue(hKey, KeyName, ValueName, DefaultValue.isMissing() ? Variant() : DefaultValue);
}

bool zel_CheckRegistryKey(ZEL_Registry_HKEYs hKey, const String& KeyName) {
  return RegistryKey().open(hKey, KeyName, RegistryAccess::Read) == RegistryResult::Success;
}

bool zel_CreateRegistryKey(ZEL_Registry_HKEYs hKey, const String& KeyName) {
  RegistryKey key;
  bool existed = false;
  if (key.create(hKey, KeyName, existed) == RegistryResult::Success) return existed;
  if (zel_CheckRegistryKey(hKey, KeyName)) return true;
  throw Error(registryError, u"zelRegistry.zel_CreateRegistryKey", u"Unable to create the registry key");
}

void zel_DeleteRegistryKey(std::int32_t hKey, const String& KeyName) {
  registry().deleteKey(hKey, KeyName);  // what comes of it is nobody's concern
}

bool zel_DeleteRegistryValue(ZEL_Registry_HKEYs hKey, const String& KeyName, const String& ValueName) {
  RegistryKey key;
  return key.open(hKey, KeyName, RegistryAccess::Write) == RegistryResult::Success &&
         registry().deleteValue(key.handle(), ValueName) == RegistryResult::Success;
}

Ref<Collection> zel_EnumRegistryKeys(ZEL_Registry_HKEYs hKey, const String& KeyName) {
  Ref<Collection> names = make<Collection>();
  String progress;
  handledWithProgress(u"zelRegistry.zel_EnumRegistryKeys", progress, [&] {
    RegistryKey key;
    RegistryHandle handle = 0;
    if (!openForEnumeration(key, hKey, KeyName, handle)) return;
    String name;
    for (std::uint32_t index = 0;; ++index) {
      progress = u"Index = " + decimalText(index);
      if (registry().enumKey(handle, index, name) != RegistryResult::Success) return;
      names->Add(name, name);
    }
  });
  return names;
}

Ref<Collection> zel_EnumRegistryValues(ZEL_Registry_HKEYs hKey, const String& KeyName) {
  Ref<Collection> values = make<Collection>();
  String progress;
  handledWithProgress(u"zelRegistry.zel_EnumRegistryValues", progress, [&] {
    RegistryKey key;
    RegistryHandle handle = 0;
    if (!openForEnumeration(key, hKey, KeyName, handle)) return;
    RegistryValue value;
    Variant data;  // kept from one value to the next: a type that cannot be read leaves it
    for (std::uint32_t index = 0;; ++index) {
      progress = KeyName + u" -- Index = " + decimalText(index);
      const RegistryCode code = registry().enumValue(handle, index, value);
      progress += u" | RetVal = " + decimalText(code);
      if (code != RegistryResult::Success) return;
      readRegistryData(value, data);
      progress += u"Adding to collection";
      values->Add(ArrayData::ofVariants({value.name, data}), value.name);
    }
  });
  return values;
}

const ClassInfo& zelRegistryInfo() {
  static const ClassInfo info =
      describeFunctions("zelRegistry", "Functions for accessing the Windows Registry.")
          .function("zel_SetRegistryValue", &zel_SetRegistryValue,
                    {"hKey", "KeyName", "ValueName", reference("Value")}, "Write or Create a Registry value")
          .function("zel_GetRegistryValue", &zel_GetRegistryValue,
                    {"hKey", "KeyName", "ValueName", optional("DefaultValue").asReference()},
                    "Reads a value from the Registry.")
          .function("zel_CheckRegistryKey", &zel_CheckRegistryKey, {"hKey", "KeyName"},
                    "Checks to see if a registry key exists.")
          .function("zel_CreateRegistryKey", &zel_CreateRegistryKey, {"hKey", "KeyName"},
                    "Creates a new registry key.")
          .function("zel_DeleteRegistryKey", &zel_DeleteRegistryKey, {"hKey", "KeyName"},
                    "Deletes a registry key.")
          .function("zel_DeleteRegistryValue", &zel_DeleteRegistryValue, {"hKey", "KeyName", "ValueName"},
                    "Deletes the value of a pearticular registry key.")
          .function("zel_EnumRegistryKeys", &zel_EnumRegistryKeys, {"hKey", "KeyName"},
                    "Creates a collection of KEYS from a set of Registry keys.")
          .function("zel_EnumRegistryValues", &zel_EnumRegistryValues, {"hKey", "KeyName"},
                    "Creates a collection of VALUES from a set of Registry keys.");
  return info;
}

}  // namespace zelUtilities
