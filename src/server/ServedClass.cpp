#include "server/ServedClass.h"

#include <mutex>
#include <unordered_map>

#include "library/Library.h"
#include "server/SystemGuid.h"

namespace zelUtilities {

ServedClass::ServedClass(const ClassInfo& info)
    : info_(info),
      isPublished_(library().find(info.name()) == &info),
      classId_(systemGuid(classUuid(info))),
      callInterfaceId_(systemGuid(callInterfaceUuid(info))),
      eventInterfaceId_(systemGuid(eventInterfaceUuid(info))) {
  for (const Member& member : info.members()) {
    if (member.id == Member::defaultId) default_ = &member;
    if (member.id == Member::enumeratorId) enumerator_ = &member;
    if (member.id <= 0) continue;
    const auto id = static_cast<std::size_t>(member.id);
    if (byId_.size() <= id) byId_.resize(id + 1);
    byId_[id] = &member;
  }
}

const ServedClass& ServedClass::of(const ClassInfo& info) {
  static std::mutex guard;
  static auto& known = *new std::unordered_map<const ClassInfo*, ServedClass>;
  const std::lock_guard lock(guard);
  return known.try_emplace(&info, info).first->second;
}

}  // namespace zelUtilities
