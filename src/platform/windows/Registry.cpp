#include "platform/Registry.h"

#include <windows.h>

#include <algorithm>
#include <new>

#include "platform/Locale.h"

namespace zelUtilities {

namespace {

constexpr DWORD usualSize = 1024;
constexpr DWORD longestKeyName = 255;
constexpr DWORD longestValueName = 16383;

// Handles have 32 significant bits whatever the width of a pointer.
HKEY toSystem(RegistryHandle handle) { return reinterpret_cast<HKEY>(static_cast<LONG_PTR>(handle)); }
RegistryHandle fromSystem(HKEY key) { return static_cast<RegistryHandle>(reinterpret_cast<LONG_PTR>(key)); }

// Asks with a buffer that grows for as long as the system says that there is more: with the size that it
// wants, or, where it does not know that itself (as with performance data), twice the size.
template <class Question>
RegistryCode askWithRoom(std::string& data, DWORD& size, Question question) {
  data.resize(usualSize);
  for (;;) {
    size = static_cast<DWORD>(data.size());
    const LSTATUS code = question(reinterpret_cast<BYTE*>(data.data()), &size);
    if (code != ERROR_MORE_DATA) return code;
    if (data.size() > 0x7FFFFFFF / 2) return RegistryResult::OutOfMemory;
    data.resize(std::max<std::size_t>(size, data.size() * 2));
  }
}

template <class Action>
RegistryCode guarded(Action action) {
  try {
    return action();
  } catch (const std::bad_alloc&) {
    return RegistryResult::OutOfMemory;
  }
}

class WindowsRegistry : public Registry {
 public:
  RegistryCode openKey(RegistryHandle root, StringView path, RegistryAccess access,
                       RegistryHandle& key) override {
    return guarded([&] {
      HKEY opened = nullptr;
      const LSTATUS code =
          RegOpenKeyExA(toSystem(root), narrow(path).c_str(), 0, static_cast<REGSAM>(access), &opened);
      if (code == ERROR_SUCCESS) key = fromSystem(opened);
      return code;
    });
  }

  RegistryCode createKey(RegistryHandle root, StringView path, RegistryHandle& key, bool& existed) override {
    return guarded([&] {
      HKEY opened = nullptr;
      DWORD disposition = 0;
      const LSTATUS code = RegCreateKeyExA(toSystem(root), narrow(path).c_str(), 0, nullptr,
                                           REG_OPTION_NON_VOLATILE, 0, nullptr, &opened, &disposition);
      if (code == ERROR_SUCCESS) {
        key = fromSystem(opened);
        existed = disposition == REG_OPENED_EXISTING_KEY;
      }
      return code;
    });
  }

  void closeKey(RegistryHandle key) override {
    if (key > 0) RegCloseKey(toSystem(key));  // not a root
  }

  RegistryCode queryValue(RegistryHandle key, StringView name, RegistryValue& value) override {
    return guarded([&] {
      const std::string narrowed = narrow(name);
      std::string data;
      DWORD size = 0;
      DWORD type = 0;
      const RegistryCode code = askWithRoom(data, size, [&](BYTE* room, DWORD* length) {
        return RegQueryValueExA(toSystem(key), narrowed.c_str(), nullptr, &type, room, length);
      });
      if (code == ERROR_SUCCESS) {
        data.resize(size);
        value = {narrowName(name), type, withTerminator(type, std::move(data))};
      }
      return code;
    });
  }

  RegistryCode setValue(RegistryHandle key, StringView name, std::uint32_t type,
                        std::string_view data) override {
    return guarded([&] {
      // A copy with a terminator behind it: the system looks there for one, and adds it to a text.
      const std::string ended(data);
      return RegSetValueExA(toSystem(key), narrow(name).c_str(), 0, type,
                            reinterpret_cast<const BYTE*>(ended.c_str()), static_cast<DWORD>(ended.size()));
    });
  }

  RegistryCode deleteValue(RegistryHandle key, StringView name) override {
    return guarded([&] { return RegDeleteValueA(toSystem(key), narrow(name).c_str()); });
  }

  RegistryCode deleteKey(RegistryHandle root, StringView path) override {
    return guarded([&] { return RegDeleteKeyA(toSystem(root), narrow(path).c_str()); });
  }

  RegistryCode enumKey(RegistryHandle key, std::uint32_t index, String& name) override {
    return guarded([&] {
      char found[2 * longestKeyName + 1];
      const LSTATUS code = RegEnumKeyA(toSystem(key), index, found, sizeof found);
      if (code == ERROR_SUCCESS) name = widen(found);
      return code;
    });
  }

  RegistryCode enumValue(RegistryHandle key, std::uint32_t index, RegistryValue& value) override {
    return guarded([&] {
      std::string name(2 * longestValueName + 1, '\0');
      DWORD nameLength = 0;
      std::string data;
      DWORD size = 0;
      DWORD type = 0;
      const RegistryCode code = askWithRoom(data, size, [&](BYTE* room, DWORD* length) {
        nameLength = static_cast<DWORD>(name.size());
        return RegEnumValueA(toSystem(key), index, name.data(), &nameLength, nullptr, &type, room, length);
      });
      if (code == ERROR_SUCCESS) {
        data.resize(size);
        value = {widen({name.data(), nameLength}), type, withTerminator(type, std::move(data))};
      }
      return code;
    });
  }
};

}  // namespace

Registry& Registry::system() {
  static auto& service = *new WindowsRegistry;
  return service;
}

}  // namespace zelUtilities
