// zelFileFilter: one choice among the kinds of files that a file dialog offers.
#pragma once

#include "automation/ClassInfo.h"
#include "automation/Object.h"
#include "automation/String.h"

namespace zelUtilities {

class zelFileFilter : public Object {
 public:
  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  // Once it is set, a key never changes: later writes are ignored.
  const String& Key() const { return key_; }
  void setKey(const String& value) {
    if (key_.empty()) key_ = value;
  }
  // The pattern; several are parted by semicolons.
  const String& Filter() const { return filter_; }
  void setFilter(const String& value) { filter_ = value; }
  // What the user reads; the key while no name is set.
  const String& Name() const { return name_.empty() ? key_ : name_; }
  void setName(const String& value) { name_ = value; }

 private:
  String key_;
  String filter_ = u"*.*";
  String name_;
};

}  // namespace zelUtilities
