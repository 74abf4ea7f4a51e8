#include "platform/ObjectTable.h"

#include <map>
#include <mutex>
#include <utility>

#include "automation/CaseFolding.h"
#include "automation/Error.h"

namespace zelUtilities {

namespace {

class ObjectTable {
 public:
  void set(StringView progId, ObjectFactory factory) {
    const std::lock_guard lock(mutex_);
    if (factory) {
      factories_.insert_or_assign(foldCase(progId), std::move(factory));
    } else {
      factories_.erase(foldCase(progId));
    }
  }

  // The factory runs unlocked, so that it may create and register others.
  Ref<Object> create(StringView progId) const {
    const ObjectFactory factory = find(progId);
    return factory ? factory() : nullptr;
  }

 private:
  ObjectFactory find(StringView progId) const {
    const std::lock_guard lock(mutex_);
    const auto found = factories_.find(foldCase(progId));
    return found == factories_.end() ? ObjectFactory() : found->second;
  }

  mutable std::mutex mutex_;
  std::map<String, ObjectFactory> factories_;
};

// Never destroyed: objects may still be asked for while the process ends.
ObjectTable& registered() {
  static auto& table = *new ObjectTable;
  return table;
}

ObjectTable& standIns() {
  static auto& table = *new ObjectTable;
  return table;
}

}  // namespace

void registerObject(StringView progId, ObjectFactory factory) {
  registered().set(progId, std::move(factory));
}
void registerStandIn(StringView progId, ObjectFactory factory) { standIns().set(progId, std::move(factory)); }

Ref<Object> createRegistered(StringView progId) { return registered().create(progId); }
Ref<Object> createStandIn(StringView progId) { return standIns().create(progId); }

void raiseCannotCreate(StringView progId, StringView reason) {
  String text = u"The object \"";
  text.append(progId).append(u"\" cannot be created");
  if (!reason.empty()) text.append(u": ").append(reason);
  throw Error(ErrorNumber::CannotCreateObject, {}, text);
}

}  // namespace zelUtilities
