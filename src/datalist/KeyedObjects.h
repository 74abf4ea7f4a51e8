// KeyedObjects: objects of one class in order, each under a key of its own, as the data list's
// collections keep them: what is not there is nothing or False, never an error.
#pragma once

#include <optional>

#include "automation/Collection.h"
#include "automation/Conversions.h"
#include "automation/Error.h"

namespace zelUtilities {

// A position from 1, where the value is a number that can be one.
inline std::optional<std::int32_t> positionOf(const Variant& vKey) {
  switch (vKey.kind()) {
    case VariantKind::Long:
      return vKey.longInteger();
    case VariantKind::Integer:
      return vKey.integer();
    case VariantKind::Byte:
      return vKey.byte();
    case VariantKind::Single:
    case VariantKind::Double:
    case VariantKind::Currency:
    case VariantKind::Date:
    case VariantKind::Object:
      break;
    default:
      return std::nullopt;
  }
  try {
    const Variant number = vKey.isObject() ? Variant(toDouble(vKey)) : vKey;
    return toLong(number);
  } catch (const Error&) {
    return std::nullopt;
  }
}

template <class T>
class KeyedObjects {
 public:
  Ref<T> item(const Variant& vKey) const {
    if (vKey.isString()) return cast(items_->find(vKey.text()));
    const std::optional<std::int32_t> position = positionOf(vKey);
    return position ? at(*position) : Ref<T>();
  }
  Ref<T> at(std::int32_t position) const { return cast(items_->at(position)); }
  std::int32_t count() const { return items_->Count(); }
  bool add(const Ref<T>& object, StringView key) { return items_->tryAdd(object, key); }
  bool remove(const Variant& vKey) {
    const Ref<T> leaving = item(vKey);
    if (leaving) items_->Remove(vKey.isString() ? vKey : Variant(*positionOf(vKey)));
    return static_cast<bool>(leaving);
  }
  // Enumerators made before go on over the items that were there.
  void clear() { items_ = make<Collection>(); }
  Ref<Enumerator> newEnum() const { return items_->NewEnum(); }

  template <class Body>
  void forEach(const Body& body) const {
    const Ref<Enumerator> walk = newEnum();
    for (Variant item; walk->next(item);) body(static_cast<T&>(*item.object()));
  }

 private:
  static Ref<T> cast(const Variant* item) {
    return item ? Ref<T>(static_cast<T*>(item->object())) : Ref<T>();
  }

  Ref<Collection> items_ = make<Collection>();
};

}  // namespace zelUtilities
