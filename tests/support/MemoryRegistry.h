// MemoryRegistry: a registry that lives as long as the object, empty but for its roots.
//
//   MemoryRegistry memory;
//   Replaced<Registry> replaced(memory);
#pragma once

#include <map>
#include <memory>
#include <vector>

#include "automation/CaseFolding.h"
#include "platform/Registry.h"

namespace zelUtilities {

class MemoryRegistry : public Registry {
 public:
  RegistryCode openKey(RegistryHandle root, StringView path, RegistryAccess access,
                       RegistryHandle& key) override {
    std::shared_ptr<Key> found;
    bool existed = false;
    const RegistryCode code = locate(root, path, false, found, existed);
    if (code == RegistryResult::Success)
      key = keep(found, access == RegistryAccess::Write ? Rights::Write : Rights::Read);
    return code;
  }

  RegistryCode createKey(RegistryHandle root, StringView path, RegistryHandle& key, bool& existed) override {
    std::shared_ptr<Key> found;
    const RegistryCode code = locate(root, path, true, found, existed);
    if (code == RegistryResult::Success) key = keep(found, Rights::None);
    return code;
  }

  void closeKey(RegistryHandle key) override { open_.erase(key); }

  RegistryCode queryValue(RegistryHandle key, StringView name, RegistryValue& value) override {
    return withKey(key, Rights::Read, [&](Key& found) {
      const auto at = found.find(narrowName(name));
      if (at == found.values.end()) return RegistryResult::FileNotFound;
      value = *at;
      return RegistryResult::Success;
    });
  }

  RegistryCode setValue(RegistryHandle key, StringView name, std::uint32_t type,
                        std::string_view data) override {
    return withKey(key, Rights::Write, [&](Key& found) {
      auto at = found.find(narrowName(name));
      if (at == found.values.end()) at = found.values.insert(at, {narrowName(name), type, {}});
      at->type = type;
      at->data = withTerminator(type, std::string(data));
      return RegistryResult::Success;
    });
  }

  RegistryCode deleteValue(RegistryHandle key, StringView name) override {
    return withKey(key, Rights::Write, [&](Key& found) {
      const auto at = found.find(narrowName(name));
      if (at == found.values.end()) return RegistryResult::FileNotFound;
      found.values.erase(at);
      return RegistryResult::Success;
    });
  }

  RegistryCode deleteKey(RegistryHandle root, StringView path) override {
    std::shared_ptr<Key> found;
    bool existed = false;
    const RegistryCode code = locate(root, path, false, found, existed);
    if (code != RegistryResult::Success) return code;
    if (!found->parent || !found->children.empty()) return RegistryResult::AccessDenied;
    found->deleted = true;
    found->parent->children.erase(foldCase(found->name));
    return RegistryResult::Success;
  }

  RegistryCode enumKey(RegistryHandle key, std::uint32_t index, String& name) override {
    return withKey(key, Rights::Read, [&](Key& found) {
      if (index >= found.children.size()) return RegistryResult::NoMoreItems;
      name = std::next(found.children.begin(), static_cast<std::ptrdiff_t>(index))->second->name;
      return RegistryResult::Success;
    });
  }

  RegistryCode enumValue(RegistryHandle key, std::uint32_t index, RegistryValue& value) override {
    return withKey(key, Rights::Read, [&](Key& found) {
      if (index >= found.values.size()) return RegistryResult::NoMoreItems;
      value = found.values[index];
      return RegistryResult::Success;
    });
  }

  // How many keys are open; a test may see that none was left so.
  std::size_t openKeys() const { return open_.size(); }

 private:
  enum class Rights { None, Read, Write };
  struct Key {
    String name;
    Key* parent = nullptr;
    bool deleted = false;
    std::map<String, std::shared_ptr<Key>> children;  // by folded name
    std::vector<RegistryValue> values;

    std::vector<RegistryValue>::iterator find(const String& valueName) {
      auto at = values.begin();
      while (at != values.end() && !equalFolded(at->name, valueName)) ++at;
      return at;
    }
  };
  struct OpenKey {
    std::shared_ptr<Key> key;
    Rights rights;
  };

  std::shared_ptr<Key> rootOf(RegistryHandle root) {
    const bool known = root >= RegistryRoot::ClassesRoot && root <= RegistryRoot::CurrentConfig &&
                       root != RegistryRoot::PerformanceData;
    if (!known) return {};
    std::shared_ptr<Key>& key = roots_[root];
    if (!key) key = std::make_shared<Key>();
    return key;
  }

  RegistryCode locate(RegistryHandle root, StringView path, bool creating, std::shared_ptr<Key>& found,
                      bool& existed) {
    const auto open = open_.find(root);
    found = open == open_.end() ? rootOf(root) : open->second.key;
    if (!found) return RegistryResult::InvalidHandle;
    if (found->deleted) return RegistryResult::KeyDeleted;
    existed = true;
    String rest = narrowName(path) + u"\\";
    for (std::size_t end = rest.find(u'\\'); end != String::npos; end = rest.find(u'\\')) {
      const String name = rest.substr(0, end);
      rest.erase(0, end + 1);
      if (name.empty()) continue;
      if (name.size() > 255) return RegistryResult::InvalidParameter;
      const auto child = found->children.find(foldCase(name));
      if (child != found->children.end()) {
        found = child->second;
        continue;
      }
      if (!creating) return RegistryResult::FileNotFound;
      existed = false;
      auto added = std::make_shared<Key>();
      added->name = name;
      added->parent = found.get();
      found->children.emplace(foldCase(name), added);
      found = added;
    }
    return RegistryResult::Success;
  }

  RegistryHandle keep(std::shared_ptr<Key> key, Rights rights) {
    open_.emplace(next_, OpenKey{std::move(key), rights});
    return next_++;
  }

  template <class Action>
  RegistryCode withKey(RegistryHandle handle, Rights needed, Action action) {
    const auto open = open_.find(handle);
    const std::shared_ptr<Key> key = open == open_.end() ? rootOf(handle) : open->second.key;
    if (!key) return RegistryResult::InvalidHandle;
    if (open != open_.end() && open->second.rights != needed) return RegistryResult::AccessDenied;
    return key->deleted ? RegistryResult::KeyDeleted : action(*key);
  }

  std::map<RegistryHandle, std::shared_ptr<Key>> roots_;
  std::map<RegistryHandle, OpenKey> open_;
  RegistryHandle next_ = 1;
};

}  // namespace zelUtilities
