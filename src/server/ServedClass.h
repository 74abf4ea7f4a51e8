// ServedClass: a class description as the bridge needs it at every call.
#pragma once

#include <windows.h>

#include <vector>

#include "automation/ClassInfo.h"

namespace zelUtilities {

class ServedClass {
 public:
  explicit ServedClass(const ClassInfo& info);

  const ClassInfo& info() const { return info_; }
  // By dispatch identifier; nothing when there is none.
  const Member* member(DISPID id) const {
    if (id > 0)
      return static_cast<std::size_t>(id) < byId_.size() ? byId_[static_cast<std::size_t>(id)] : nullptr;
    if (id == Member::defaultId) return default_;
    return id == Member::enumeratorId ? enumerator_ : nullptr;
  }

  // Whether the type library describes it.
  bool isPublished() const { return isPublished_; }
  const GUID& classId() const { return classId_; }
  const GUID& callInterfaceId() const { return callInterfaceId_; }
  const GUID& eventInterfaceId() const { return eventInterfaceId_; }

  // The one for a description, made when it is first asked for; lives on.
  static const ServedClass& of(const ClassInfo& info);

 private:
  const ClassInfo& info_;
  std::vector<const Member*> byId_;
  const Member* default_ = nullptr;
  const Member* enumerator_ = nullptr;
  bool isPublished_;
  GUID classId_;
  GUID callInterfaceId_;
  GUID eventInterfaceId_;
};

}  // namespace zelUtilities
