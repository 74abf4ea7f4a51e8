// LateBound: an object as a script uses it, for tests.
//
//   LateBound document = LateBound::create(u"MSXML.DOMDocument");
//   EXPECT_EQ(document.object(u"documentElement").text(u"nodeName"), u"a");
#pragma once

#include <string>
#include <vector>

#include "automation/ArrayData.h"
#include "automation/Conversions.h"
#include "automation/Enumerator.h"
#include "automation/Error.h"
#include "automation/Variant.h"
#include "platform/Objects.h"

namespace zelUtilities {

class LateBound {
 public:
  LateBound() = default;  // nothing
  explicit LateBound(Ref<Object> object) : object_(std::move(object)) {}
  explicit LateBound(const Variant& value) : object_(value.isObject() ? value.object() : nullptr) {}
  static LateBound create(StringView progId) { return LateBound(createObject(progId)); }

  // Calls a method or reads a property.
  Variant operator()(StringView name, const auto&... arguments) const {
    if (!object_) throw Error(ErrorNumber::ObjectNotSet);
    std::vector<Variant> values{passed(arguments)...};
    return object_->Invoke(name, InvokeKind::MethodOrGet, values);
  }
  LateBound object(StringView name, const auto&... arguments) const {
    return LateBound((*this)(name, arguments...));
  }
  String text(StringView name, const auto&... arguments) const { return toText((*this)(name, arguments...)); }
  std::int32_t number(StringView name, const auto&... arguments) const {
    return toLong((*this)(name, arguments...));
  }
  bool isTrue(StringView name, const auto&... arguments) const {
    return toBoolean((*this)(name, arguments...));
  }
  void put(StringView name, const Variant& value) const {
    Variant values[] = {value};
    object_->Invoke(name, InvokeKind::Put, values);
  }

  bool isNothing() const { return !object_; }
  const Ref<Object>& get() const { return object_; }
  std::vector<LateBound> items() const {
    std::vector<LateBound> found;
    const Ref<Enumerator> walk = objectCast<Enumerator>((*this)(u"NewEnum").object());
    if (!walk) throw Error(ErrorNumber::ObjectNotSet);
    for (Variant item; walk->next(item);) found.emplace_back(item);
    return found;
  }

 private:
  static Variant passed(const auto& value) { return value; }
  static Variant passed(const LateBound& value) { return value.object_; }

  Ref<Object> object_;
};

// A value with its kind: "Long 5"; an array with the lower bound and the size of each dimension, too:
// "Double()[1:2] {Double 0, Double 1.5}".
inline std::string shown(const Variant& value) {
  std::string text = toUtf8(typeName(value));
  if (value.isNull() || value.isObject()) return text;
  if (value.isError()) return text + " " + std::to_string(value.errorCode());
  if (!value.isArray()) return text + " " + toUtf8(toText(value));
  const ArrayData& array = value.array();
  for (const ArrayBound& bound : array.bounds())
    text += "[" + std::to_string(bound.lower) + ":" + std::to_string(bound.count) + "]";
  text += " {";
  for (std::size_t i = 0; i < array.size(); ++i) text += (i == 0 ? "" : ", ") + shown(array.at(i));
  return text + "}";
}

}  // namespace zelUtilities
