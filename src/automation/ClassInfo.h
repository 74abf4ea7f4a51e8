// ClassInfo: the description of a class, from which late-bound calls, the class registry, the
// interface description and the reference all come. Plain records; Binder.h fills them from
// the member functions that a class names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "automation/Event.h"
#include "automation/KeyIndex.h"
#include "automation/Object.h"
#include "automation/String.h"
#include "automation/Variant.h"

namespace zelUtilities {

// A published enumeration.
struct EnumInfo {
  struct Value {
    String name;
    std::int32_t value;
  };
  String name;
  std::vector<Value> values;
};

// The description of a published enumeration; its header specialises it.
template <class E>
const EnumInfo& enumInfo();

struct TypeInfo {
  VariantKind kind = VariantKind::Empty;  // Empty: no value; Variant: any kind
  bool array = false;                     // an array of that kind
  bool byReference = false;
  const EnumInfo* (*enumeration)() = nullptr;  // of a Long that is an enumeration
  const ClassInfo* (*object)() = nullptr;      // of an Object of one of our classes
};

struct Parameter {
  String name;
  TypeInfo type;
  bool optional = false;
  bool hasDefault = false;
  Variant defaultValue;
};

// A function of a class behind one signature. Arguments are complete and in order; those of
// by-reference parameters are written back.
struct Callable {
  using Function = Variant (*)(const Callable&, Object* self, std::span<Variant> arguments);

  Function function = nullptr;
  // What function calls. Not aligned as std::max_align_t, on which two sources need not agree where a
  // system header declares it too.
  alignas(void*) std::byte target[2 * sizeof(void*)] = {};

  explicit operator bool() const { return function != nullptr; }
  Variant operator()(Object* self, std::span<Variant> arguments) const {
    return function(*this, self, arguments);
  }
};

struct Member {
  static constexpr std::int32_t defaultId = 0;
  static constexpr std::int32_t enumeratorId = -4;

  String name;
  String help;
  std::int32_t id = 0;  // defaultId, enumeratorId, or counted from 1 in the order of the table
  bool isProperty = false;
  std::vector<Parameter> parameters;
  TypeInfo result;  // of a method or of a property's value
  Callable get;     // the method, or the property's read
  Callable put;     // the value is the last argument
  Callable putRef;  // the same, for objects

  std::uint32_t hash = 0;
  StringView keyText() const { return name; }
  std::uint32_t keyHash() const { return hash; }
};

struct EventInfo {
  // Called with the arguments in order; what it writes into those by reference is kept.
  using Sink = std::function<void(std::span<Variant> arguments)>;
  using Subscribe = std::function<Subscription(Object&, Sink)>;

  String name;
  String help;
  std::int32_t id = 0;  // from 1
  std::vector<Parameter> parameters;
  Subscribe subscribe;
};

// What a table says, before it is checked.
struct ClassTable {
  String name;
  String help;
  bool isGlobal = false;              // one implicit instance; its operations need no object
  Ref<Object> (*create)() = nullptr;  // nothing: clients cannot create it
  std::vector<Member> members;
  std::vector<EventInfo> events;
};

class ClassInfo {
 public:
  // Raises 51 with a sentence for a table that contradicts itself: a name given twice (in any letter
  // case, of members, events or one member's parameters), two default members or enumerators, a required
  // parameter after an optional one.
  explicit ClassInfo(ClassTable table);
  ClassInfo(const ClassInfo&) = delete;
  ClassInfo& operator=(const ClassInfo&) = delete;

  const String& name() const { return table_.name; }
  const String& help() const { return table_.help; }
  bool isGlobal() const { return table_.isGlobal; }
  bool isCreatable() const { return table_.create != nullptr; }
  // A new object; raises 429 where clients cannot create the class.
  Ref<Object> create() const;

  const std::vector<Member>& members() const { return table_.members; }
  const std::vector<EventInfo>& events() const { return table_.events; }

  // By name in any letter case ("" is the default member), or by id; nothing when there is none.
  const Member* find(StringView name) const;
  const Member* find(std::int32_t id) const;

 private:
  void check() const;

  ClassTable table_;
  KeyIndex<Member> index_;
};

// Calls a described member as Object::Invoke does. Surplus arguments go to the default member of
// the object that the member returns.
Variant invokeMember(Object& self, const Member& member, InvokeKind kind, std::span<Variant> arguments);

// The object whose operations are a table of free functions.
class FunctionClass : public Object {
 public:
  explicit FunctionClass(const ClassInfo& info) : info_(info) {}
  const ClassInfo* classInfo() const override { return &info_; }

 private:
  const ClassInfo& info_;
};

}  // namespace zelUtilities
