// MemoryRegistry: a registry that lives as long as the object, empty but for its roots.
//
//   MemoryRegistry memory;
//   Replaced<Registry> replaced(memory);
#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <vector>

#include "automation/CaseFolding.h"
#include "platform/Registry.h"

namespace zelUtilities {

class MemoryRegistry : public Registry {
 public:
  RegistryCode openKey(RegistryHandle root, StringView path, RegistryAccess access,
                       RegistryHandle& key) override {
    const String place = placeOf(root, path);
    if (!keys_.contains(place)) return RegistryResult::FileNotFound;
    open_[key = next_++] = {place, access};
    return RegistryResult::Success;
  }
  RegistryCode createKey(RegistryHandle root, StringView path, RegistryHandle& key, bool& existed) override {
    String rest(path);
    existed = true;
    for (std::size_t end = 0; end != String::npos; ++end) {
      end = rest.find(u'\\', end);
      const String above = rest.substr(0, end);
      const String name = above.substr(above.rfind(u'\\') + 1);
      if (name.size() > 255) return RegistryResult::InvalidParameter;
      existed = !keys_.try_emplace(placeOf(root, above), Key{name, {}}).second;
      if (end == String::npos) break;
    }
    open_[key = next_++] = {placeOf(root, path), {}};
    return RegistryResult::Success;
  }
  void closeKey(RegistryHandle key) override { open_.erase(key); }

  RegistryCode queryValue(RegistryHandle key, StringView name, RegistryValue& value) override {
    return withValues(key, RegistryAccess::Read, [&](Values& values) {
      const auto at = std::ranges::find_if(values, IsNamed{name});
      if (at == values.end()) return RegistryResult::FileNotFound;
      value = *at;
      return RegistryResult::Success;
    });
  }
  RegistryCode setValue(RegistryHandle key, StringView name, std::uint32_t type,
                        std::string_view data) override {
    return withValues(key, RegistryAccess::Write, [&](Values& values) {
      auto at = std::ranges::find_if(values, IsNamed{name});
      if (at == values.end()) at = values.insert(at, {narrowName(name), type, {}});
      at->type = type;
      at->data = withTerminator(type, std::string(data));
      return RegistryResult::Success;
    });
  }
  RegistryCode deleteValue(RegistryHandle key, StringView name) override {
    return withValues(key, RegistryAccess::Write, [&](Values& values) {
      return std::erase_if(values, IsNamed{name}) != 0 ? RegistryResult::Success
                                                       : RegistryResult::FileNotFound;
    });
  }
  RegistryCode deleteKey(RegistryHandle root, StringView path) override {
    if (!subkeysOf(placeOf(root, path)).empty()) return RegistryResult::AccessDenied;
    return keys_.erase(placeOf(root, path)) != 0 ? RegistryResult::Success : RegistryResult::FileNotFound;
  }

  RegistryCode enumKey(RegistryHandle key, std::uint32_t index, String& name) override {
    const std::vector<String> names = subkeysOf(placeOf(key, {}));
    if (index >= names.size()) return RegistryResult::NoMoreItems;
    name = names[index];
    return RegistryResult::Success;
  }
  RegistryCode enumValue(RegistryHandle key, std::uint32_t index, RegistryValue& value) override {
    return withValues(key, RegistryAccess::Read, [&](Values& values) {
      if (index >= values.size()) return RegistryResult::NoMoreItems;
      value = values[index];
      return RegistryResult::Success;
    });
  }

  // Creates the key if need be and stores a value below it.
  void store(RegistryHandle root, StringView path, StringView name, std::uint32_t type,
             std::string_view data) {
    RegistryHandle key = 0;
    bool existed = false;
    createKey(root, path, key, existed);
    open_[key].access = RegistryAccess::Write;
    setValue(key, name, type, data);
    closeKey(key);
  }
  // How many keys are open; a test may see that none was left so.
  std::size_t openKeys() const { return open_.size(); }

 private:
  using Values = std::vector<RegistryValue>;
  struct Key {
    String name;
    Values values;
  };
  struct OpenKey {
    String place;
    std::optional<RegistryAccess> access;  // none for a key just created
  };

  struct IsNamed {
    bool operator()(const RegistryValue& value) const { return equalFolded(value.name, narrowName(name)); }
    StringView name;
  };
  // The root's number and the folded path below it.
  String placeOf(RegistryHandle root, StringView path) const {
    const auto open = open_.find(root);
    const String start = open == open_.end() ? decimalText(root) : open->second.place;
    return path.empty() ? start : start + u"\\" + foldCase(path);
  }
  std::vector<String> subkeysOf(const String& place) const {
    std::vector<String> names;
    for (const auto& [other, key] : keys_)
      if (other.starts_with(place + u"\\") && other.find(u'\\', place.size() + 1) == String::npos)
        names.push_back(key.name);
    return names;
  }
  template <class Action>
  RegistryCode withValues(RegistryHandle handle, RegistryAccess needed, const Action& action) {
    const auto open = open_.find(handle);
    if (open != open_.end() && open->second.access != needed) return RegistryResult::AccessDenied;
    return action(keys_[placeOf(handle, {})].values);
  }

  std::map<String, Key> keys_;  // by place
  std::map<RegistryHandle, OpenKey> open_;
  RegistryHandle next_ = 1;
};

}  // namespace zelUtilities
