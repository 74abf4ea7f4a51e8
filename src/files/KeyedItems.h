// KeyedItems: objects of one class in order, each under a key of its own, as the collections of files keep
// them. A failure (a key that is taken or unknown, a position out of range) is logged under
// "<class>.<operation>" and the operation gives nothing or False. The object tracker counts the collections.
#pragma once

#include "automation/Collection.h"
#include "automation/Error.h"
#include "foundation/Handled.h"
#include "foundation/mLog.h"

namespace zelUtilities {

template <class T>
class KeyedItems {
 public:
  explicit KeyedItems(StringView className) : className_(className) { mLog::TrackerIncr(className_); }
  ~KeyedItems() { mLog::TrackerDecr(className_); }
  KeyedItems(const KeyedItems&) = delete;
  KeyedItems& operator=(const KeyedItems&) = delete;

  // A text is a key, a number a position from 1.
  Ref<T> item(const Variant& vKey) const {
    Ref<T> found;
    logged(u".Item", [&] { found = static_cast<T*>(items_->Item(vKey).object()); });
    return found;
  }
  std::int32_t count() const { return items_->Count(); }
  bool add(const Ref<T>& item, const String& (T::*key)() const) {
    return logged(u".Add", [&] {
      if (!item) throw Error(ErrorNumber::ObjectNotSet);
      items_->Add(item, ((*item).*key)());
    });
  }
  bool remove(const Variant& vKey) {
    return logged(u".Remove", [&] { items_->Remove(vKey); });
  }
  // Enumerators made before go on over the items that were there.
  void clear() { items_ = make<Collection>(); }
  Ref<Enumerator> newEnum() const { return items_->NewEnum(); }

  // Whether the body ran to its end.
  template <class Body>
  bool logged(StringView operation, const Body& body) const {
    try {
      body();
      return true;
    } catch (...) {
      logCurrent(className_ + String(operation));
      return false;
    }
  }

 private:
  String className_;
  Ref<Collection> items_ = make<Collection>();
};

}  // namespace zelUtilities
