// The registry over two files in the library's home: "registry-user.db" for HKEY_CURRENT_USER and
// "registry-machine.db" for all else.
#include "platform/Registry.h"

#include <pthread.h>

#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <utility>

#include "automation/Error.h"
#include "platform/Machine.h"
#include "platform/linux/RegistryStore.h"

namespace zelUtilities {

namespace {

constexpr RegistryCode badPathName = 161;
constexpr RegistryHandle firstHandle = 0x1000;

constexpr StringView currentUser = u"HKEY_CURRENT_USER";
constexpr StringView localMachine = u"HKEY_LOCAL_MACHINE";
constexpr StringView users = u"HKEY_USERS";
// Two roots are branches of another one.
constexpr StringView classesRoot = u"HKEY_LOCAL_MACHINE\\Software\\Classes";
constexpr StringView currentConfig =
    u"HKEY_LOCAL_MACHINE\\System\\CurrentControlSet\\Hardware Profiles\\Current";

// Where a root lies: its path in its store; "" for a number that is no root.
StringView rootPath(RegistryHandle root) {
  switch (root) {
    case RegistryRoot::ClassesRoot:
      return classesRoot;
    case RegistryRoot::CurrentUser:
      return currentUser;
    case RegistryRoot::LocalMachine:
      return localMachine;
    case RegistryRoot::Users:
      return users;
    case RegistryRoot::CurrentConfig:
      return currentConfig;
    default:
      return {};
  }
}

enum class Rights { None, Read, Write };

struct Place {
  std::shared_ptr<RegistryStore> store;
  std::int64_t key = 0;
};

struct OpenKey {
  Place place;
  Rights rights = Rights::None;
  RegistryStore::Place keys;
  RegistryStore::Place values;
};

RegistryCode codeOf(const Error& error) {
  switch (error.number()) {
    case ErrorNumber::DiskFull:
      return RegistryResult::DiskFull;
    case ErrorNumber::DeviceIO:
      return RegistryResult::IOFailed;
    default:
      return RegistryResult::AccessDenied;
  }
}

class LinuxRegistry : public Registry {
 public:
  RegistryCode openKey(RegistryHandle root, StringView path, RegistryAccess access,
                       RegistryHandle& key) override {
    return guarded([&] {
      Place place;
      const bool writing = access == RegistryAccess::Write;
      RegistryCode code = locate(root, path, place,
                                 [](RegistryStore& store, std::int64_t from, StringView rest,
                                    std::int64_t& found) { return store.find(from, rest, found); });
      if (code == RegistryResult::Success && writing) code = place.store->requireWritable();
      if (code == RegistryResult::Success) key = keep(place, writing ? Rights::Write : Rights::Read);
      return code;
    });
  }

  RegistryCode createKey(RegistryHandle root, StringView path, RegistryHandle& key, bool& existed) override {
    return guarded([&] {
      Place place;
      const RegistryCode code =
          locate(root, path, place,
                 [&](RegistryStore& store, std::int64_t from, StringView rest, std::int64_t& found) {
                   return store.findOrCreate(from, rest, found, existed);
                 });
      if (code == RegistryResult::Success) key = keep(place, Rights::None);
      return code;
    });
  }

  void closeKey(RegistryHandle key) override {
    const std::lock_guard lock(mutex_);
    open_.erase(key);
  }

  RegistryCode queryValue(RegistryHandle key, StringView name, RegistryValue& value) override {
    return withKey(key, Rights::Read, [&](OpenKey& open) {
      return open.place.store->query(open.place.key, narrowName(name), value);
    });
  }

  RegistryCode setValue(RegistryHandle key, StringView name, std::uint32_t type,
                        std::string_view data) override {
    return withKey(key, Rights::Write, [&](OpenKey& open) {
      return open.place.store->set(open.place.key, narrowName(name), type, data);
    });
  }

  RegistryCode deleteValue(RegistryHandle key, StringView name) override {
    return withKey(key, Rights::Write, [&](OpenKey& open) {
      return open.place.store->deleteValue(open.place.key, narrowName(name));
    });
  }

  RegistryCode deleteKey(RegistryHandle root, StringView path) override {
    return guarded([&] {
      Place place;
      return locate(root, path, place,
                    [](RegistryStore& store, std::int64_t from, StringView rest, std::int64_t&) {
                      return store.deleteKey(from, rest);
                    });
    });
  }

  RegistryCode enumKey(RegistryHandle key, std::uint32_t index, String& name) override {
    return withKey(key, Rights::Read, [&](OpenKey& open) {
      return open.place.store->enumKey(open.place.key, index, open.keys, name);
    });
  }

  RegistryCode enumValue(RegistryHandle key, std::uint32_t index, RegistryValue& value) override {
    return withKey(key, Rights::Read, [&](OpenKey& open) {
      return open.place.store->enumValue(open.place.key, index, open.values, value);
    });
  }

  // A process that is made from this one must not have the files open that this one has open: their locks
  // are this process's own, but what is known of them would be copied.
  void beforeFork() {
    mutex_.lock();
    for (const auto& [handle, open] : open_) open.place.store->close();
    for (const auto& [handle, root] : roots_)
      if (root.place.store) root.place.store->close();
    if (user_) user_->close();
    if (machine_) machine_->close();
  }
  void afterFork() { mutex_.unlock(); }

 private:
  template <class Action>
  RegistryCode guarded(Action action) {
    const std::lock_guard lock(mutex_);
    try {
      return action();
    } catch (const Error& error) {  // the home that cannot be made
      return codeOf(error);
    } catch (const std::bad_alloc&) {
      return RegistryResult::OutOfMemory;
    }
  }

  // The store in the library's home as it is now.
  std::shared_ptr<RegistryStore> storeOf(StringView root) {
    const bool ofUser = root == currentUser;
    std::shared_ptr<RegistryStore>& store = ofUser ? user_ : machine_;
    const std::string path =
        toUtf8(machine().homeFolder()) + (ofUser ? "/registry-user.db" : "/registry-machine.db");
    if (!store || store->path() != path) {
      using Roots = RegistryStore::RootPaths;
      store = std::make_shared<RegistryStore>(
          path, ofUser ? Roots{currentUser} : Roots{localMachine, users, classesRoot, currentConfig});
    }
    return store;
  }

  RegistryCode placeOfRoot(RegistryHandle root, Place& place) {
    const StringView path = rootPath(root);
    if (path.empty()) return RegistryResult::InvalidHandle;
    place.store = storeOf(path);
    return place.store->find(0, path, place.key);
  }

  // Finds the place by what the store is asked, from a root or an open key on.
  template <class Question>
  RegistryCode locate(RegistryHandle root, StringView path, Place& place, Question question) {
    const auto open = open_.find(root);
    const RegistryCode code = open == open_.end() ? placeOfRoot(root, place)
                                                  : (place = open->second.place, RegistryResult::Success);
    if (code != RegistryResult::Success) return code;
    const String name = narrowName(path);
    // A path does not begin with its separator; only the classes have always been lenient.
    if (name.starts_with(u'\\') && root != RegistryRoot::ClassesRoot) return badPathName;
    const std::int64_t from = place.key;
    return question(*place.store, from, name, place.key);
  }

  RegistryHandle keep(Place place, Rights rights) {
    OpenKey open;
    open.place = std::move(place);
    open.rights = rights;
    while (open_.contains(next_)) advance();
    open_.emplace(next_, std::move(open));
    const RegistryHandle handle = next_;
    advance();
    return handle;
  }
  void advance() { next_ = next_ < 0x7FFFFFF0 ? next_ + 4 : firstHandle; }

  // Roots have all rights and are open without being opened.
  template <class Action>
  RegistryCode withKey(RegistryHandle key, Rights needed, Action action) {
    return guarded([&] {
      const auto found = open_.find(key);
      if (found != open_.end())
        return found->second.rights == needed ? action(found->second) : RegistryResult::AccessDenied;
      OpenKey& root = roots_[key];
      const RegistryCode code = placeOfRoot(key, root.place);
      return code == RegistryResult::Success ? action(root) : code;
    });
  }

  std::mutex mutex_;
  std::shared_ptr<RegistryStore> user_;
  std::shared_ptr<RegistryStore> machine_;
  std::map<RegistryHandle, OpenKey> open_;
  std::map<RegistryHandle, OpenKey> roots_;  // for the places of their enumerations
  RegistryHandle next_ = firstHandle;
};

LinuxRegistry& theRegistry() {
  static auto& service = [&]() -> LinuxRegistry& {
    auto* registry = new LinuxRegistry;
    pthread_atfork([] { theRegistry().beforeFork(); }, [] { theRegistry().afterFork(); },
                   [] { theRegistry().afterFork(); });
    return *registry;
  }();
  return service;
}

}  // namespace

Registry& Registry::system() { return theRegistry(); }

}  // namespace zelUtilities
