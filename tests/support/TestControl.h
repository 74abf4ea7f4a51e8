// TestControl: a form or control as a client's objects are, with named properties that come and go.
//
//   Ref<TestControl> button = control(u"CommandButton", {{u"Name", u"cmdOK"}, {u"Left", 0}});
//   button->text(u"Left")                            "0"; "-" for a property that it lacks
#pragma once

#include <map>
#include <memory>

#include "automation/ArrayData.h"
#include "automation/ClassInfo.h"
#include "automation/Conversions.h"
#include "automation/Error.h"

namespace zelUtilities {

class TestControl : public Object {
 public:
  using Properties = std::map<String, Variant>;

  TestControl(StringView type, Properties named) : properties(std::move(named)) {
    ClassTable table;
    table.name = type;
    info_ = std::make_unique<ClassInfo>(std::move(table));
  }
  const ClassInfo* classInfo() const override { return info_.get(); }

  // Reads and writes what there is. "Move" writes four properties; a property that holds an array has indices
  // from 0. Everything else raises 438.
  Variant Invoke(StringView name, InvokeKind kind, std::span<Variant> arguments) override {
    if (name == u"Move") {
      const char16_t* const moved[] = {u"Left", u"Top", u"Width", u"Height"};
      for (std::size_t i = 0; i < 4; ++i) properties[moved[i]] = arguments[i];
      return {};
    }
    const auto found = properties.find(String(name));
    if (found == properties.end()) throw Error(ErrorNumber::ObjectDoesNotSupport);
    if (kind == InvokeKind::Put) return found->second = arguments[0];
    if (arguments.empty()) return found->second;
    return found->second.array().at(static_cast<std::size_t>(toLong(arguments[0])));
  }

  std::string text(const String& name) const {
    const auto found = properties.find(name);
    return found == properties.end() ? "-" : toUtf8(toText(found->second));
  }

  // "left top width height".
  std::string place() const {
    return text(u"Left") + " " + text(u"Top") + " " + text(u"Width") + " " + text(u"Height");
  }

  Properties properties;

 private:
  std::unique_ptr<ClassInfo> info_;
};

inline Ref<TestControl> control(StringView type, TestControl::Properties named) {
  return make<TestControl>(type, std::move(named));
}

}  // namespace zelUtilities
