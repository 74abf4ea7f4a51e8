// Binder: fills a ClassInfo from the member functions that a class names, one operation a line.
//
//   describe<zelCellButtons>("zelCellButtons", "A set of cell buttons.")
//       .creatable()
//       .item("Item", &zelCellButtons::Item, {"vKey"}, "The button under a key or at a position.")
//       .property("Count", &zelCellButtons::Count, "The number of buttons.")
//       .property("Locked", &T::Locked, &T::setLocked, "...")              read and write
//       .propertyRef("NodeList", &T::NodeList, &T::setNodeList, "...")     written by reference
//       .method("Create", &zelCellButtons::Create, {arg("sKey") = u"...", optional("vTag")}, "...")
//       .event("NodeAdded", &zelNodeList::onNodeAdded, {"oNode"}, "...")
//       .enumerator(&zelCellButtons::NewEnum);
//
//   describeFunctions("zelXML", "...").function("zel_ToXML", &zel_ToXML, {"sSource"}, "...");
//
// A parameter is by reference where the function takes a non-const reference, or where reference()
// says so. A table that does not fit its functions does not compile.
#pragma once

#include <initializer_list>
#include <tuple>
#include <type_traits>

#include "automation/ArrayData.h"
#include "automation/ClassInfo.h"
#include "automation/Conversions.h"
#include "automation/Date.h"
#include "automation/Enumerator.h"
#include "automation/Error.h"

namespace zelUtilities {

// One parameter as a table names it.
class ParameterName {
 public:
  ParameterName(const char* name) { parameter_.name = fromUtf8(name); }

  // Gives the default of an optional parameter. Enumeration members are given as they are.
  template <class T>
  ParameterName operator=(T value) && {
    parameter_.optional = parameter_.hasDefault = true;
    if constexpr (std::is_enum_v<T>) {
      parameter_.defaultValue = static_cast<std::int32_t>(value);
    } else {
      parameter_.defaultValue = Variant(value);
    }
    return *this;
  }
  ParameterName&& asOptional() && {
    parameter_.optional = true;
    return std::move(*this);
  }
  ParameterName&& asReference() && {
    parameter_.type.byReference = true;
    return std::move(*this);
  }
  const Parameter& parameter() const { return parameter_; }

 private:
  Parameter parameter_;
};

inline ParameterName arg(const char* name) { return {name}; }
inline ParameterName optional(const char* name) { return ParameterName(name).asOptional(); }
inline ParameterName reference(const char* name) { return ParameterName(name).asReference(); }

namespace binder {

// How a C++ type travels in a Variant: fromVariant, toVariant and its TypeInfo.
template <class T>
struct Travel;

template <class T, VariantKind kindOfT, auto convert>
struct PlainTravel {
  static TypeInfo type() { return {kindOfT}; }
  static T fromVariant(const Variant& value) { return convert(value); }
  static Variant toVariant(const T& value) { return Variant(value); }
};

template <>
struct Travel<bool> : PlainTravel<bool, VariantKind::Boolean, toBoolean> {};
template <>
struct Travel<std::uint8_t> : PlainTravel<std::uint8_t, VariantKind::Byte, toByte> {};
template <>
struct Travel<std::int16_t> : PlainTravel<std::int16_t, VariantKind::Integer, toInteger> {};
template <>
struct Travel<std::int32_t> : PlainTravel<std::int32_t, VariantKind::Long, toLong> {};
template <>
struct Travel<float> : PlainTravel<float, VariantKind::Single, toSingle> {};
template <>
struct Travel<double> : PlainTravel<double, VariantKind::Double, toDouble> {};
template <>
struct Travel<String> : PlainTravel<String, VariantKind::String, toText> {};

template <>
struct Travel<StringView> {
  static TypeInfo type() { return {VariantKind::String}; }
  static String fromVariant(const Variant& value) { return toText(value); }
  static Variant toVariant(StringView value) { return value; }
};

template <>
struct Travel<Variant> {
  static TypeInfo type() { return {VariantKind::Variant}; }
  static const Variant& fromVariant(const Variant& value) { return value; }
  static Variant toVariant(Variant value) { return value; }
};

template <>
struct Travel<Date> {
  static TypeInfo type() { return {VariantKind::Date}; }
  static Date fromVariant(const Variant& value) { return {toDate(value)}; }
  static Variant toVariant(Date value) { return Variant::date(value.days); }
};

template <class E>
requires std::is_enum_v<E>
struct Travel<E> {
  static TypeInfo type() {
    TypeInfo info{VariantKind::Long};
    info.enumeration = [] { return &enumInfo<E>(); };
    return info;
  }
  static E fromVariant(const Variant& value) { return static_cast<E>(toLong(value)); }
  static Variant toVariant(E value) { return static_cast<std::int32_t>(value); }
};

// An array parameter, taken as stored; the operation looks at the element kind itself.
template <>
struct Travel<Ref<ArrayData>> {
  static TypeInfo type() {
    TypeInfo info{VariantKind::Byte};
    info.array = true;
    return info;
  }
  static Ref<ArrayData> fromVariant(const Variant& value) {
    if (!value.isArray()) throw Error(ErrorNumber::TypeMismatch);
    return value.arrayRef();
  }
  static Variant toVariant(Ref<ArrayData> value) { return Variant(std::move(value)); }
};

// An array parameter of one element kind; any other array is a type mismatch.
template <VariantKind elementKind>
struct Travel<TypedArray<elementKind>> {
  static TypeInfo type() {
    TypeInfo info{elementKind};
    info.array = true;
    return info;
  }
  static TypedArray<elementKind> fromVariant(const Variant& value) {
    if (!value.isArray() || value.array().elementKind() != elementKind)
      throw Error(ErrorNumber::TypeMismatch);
    return {value.arrayRef()};
  }
  static Variant toVariant(const TypedArray<elementKind>& value) { return Variant(value.data); }
};

template <class T>
concept Described = requires {
  T::describeClass();
};

template <class T>
requires std::is_base_of_v<Object, T>
struct Travel<Ref<T>> {
  static TypeInfo type() {
    TypeInfo info{VariantKind::Object};
    if constexpr (Described<T>) info.object = [] { return &T::describeClass(); };
    return info;
  }
  // Empty counts as nothing; an object of another class is a type mismatch.
  static Ref<T> fromVariant(const Variant& value) {
    if (value.isEmpty()) return {};
    if (!value.isObject()) throw Error(ErrorNumber::TypeMismatch);
    if (!value.object()) return {};
    if constexpr (std::is_same_v<T, Object>) {
      return Ref<T>(value.object());
    } else {
      Ref<T> object = objectCast<T>(value.object());
      return object ? object : throw Error(ErrorNumber::TypeMismatch);
    }
  }
  static Variant toVariant(const Ref<T>& value) { return Variant(value); }
};

template <class T>
struct Travel<T*> : Travel<Ref<T>> {};

// One argument on its way into a call, written back where it is taken by reference.
template <class Declared>
class Argument {
 public:
  using Plain = std::remove_cvref_t<Declared>;
  static constexpr bool byReference =
      std::is_lvalue_reference_v<Declared> && !std::is_const_v<std::remove_reference_t<Declared>>;
  using Held =
      std::conditional_t<std::is_same_v<Plain, Variant> && !byReference, const Variant&,
                         std::remove_cvref_t<decltype(Travel<Plain>::fromVariant(std::declval<Variant>()))>>;

  explicit Argument(Variant& value) : value_(value), held_(Travel<Plain>::fromVariant(value)) {}

  decltype(auto) pass() {
    if constexpr (byReference) {
      return static_cast<Plain&>(held_);
    } else if constexpr (std::is_pointer_v<Plain>) {
      return held_.get();
    } else {
      return static_cast<const std::remove_cvref_t<Held>&>(held_);
    }
  }
  void writeBack() {
    if constexpr (byReference) value_ = Travel<Plain>::toVariant(held_);
  }

  static TypeInfo type() {
    TypeInfo info = Travel<Plain>::type();
    info.byReference = byReference;
    return info;
  }

 private:
  Variant& value_;
  Held held_;
};

template <class T>
TypeInfo resultType() {
  if constexpr (std::is_void_v<T>) {
    return {};
  } else {
    return Travel<std::remove_cvref_t<T>>::type();
  }
}

// Calls target(arguments...) with each Variant converted to what the parameter declares.
template <class Result, class... Declared, class Target, std::size_t... I>
Variant call(const Target& target, [[maybe_unused]] std::span<Variant> arguments, std::index_sequence<I...>) {
  std::tuple<Argument<Declared>...> held{Argument<Declared>(arguments[I])...};
  Variant result;
  if constexpr (std::is_void_v<Result>) {
    target(std::get<I>(held).pass()...);
  } else {
    result = Travel<std::remove_cvref_t<Result>>::toVariant(target(std::get<I>(held).pass()...));
  }
  (std::get<I>(held).writeBack(), ...);
  return result;
}

template <class Function>
Callable callableOf(Callable::Function function, Function target) {
  static_assert(sizeof target <= sizeof(Callable::target));
  Callable callable;
  callable.function = function;
  std::memcpy(callable.target, &target, sizeof target);
  return callable;
}

template <class Function>
Function targetOf(const Callable& callable) {
  Function function;
  std::memcpy(&function, callable.target, sizeof function);
  return function;
}

// What is known of a function that a table names: a member of T (const or not), a free function
// over T, or, for a function class (T is void), any free function.
template <class T, class Function>
struct Signature;

template <class T, class C, class R, class... A>
struct Signature<T, R (C::*)(A...)> {
  using Result = R;
  using Arguments = std::tuple<A...>;
  using Function = R (C::*)(A...);
  static Variant invoke(const Callable& callable, Object* self, std::span<Variant> arguments) {
    const auto member = targetOf<Function>(callable);
    auto& object = static_cast<T&>(*self);
    return call<R, A...>([&](auto&&... values) -> R { return (object.*member)(values...); }, arguments,
                         std::index_sequence_for<A...>());
  }
};
template <class T, class C, class R, class... A>
struct Signature<T, R (C::*)(A...) const> {
  using Result = R;
  using Arguments = std::tuple<A...>;
  using Function = R (C::*)(A...) const;
  static Variant invoke(const Callable& callable, Object* self, std::span<Variant> arguments) {
    const auto member = targetOf<Function>(callable);
    const auto& object = static_cast<const T&>(*self);
    return call<R, A...>([&](auto&&... values) -> R { return (object.*member)(values...); }, arguments,
                         std::index_sequence_for<A...>());
  }
};
template <class T, class R, class... A>
struct Signature<T, R (*)(T&, A...)> {
  using Result = R;
  using Arguments = std::tuple<A...>;
  using Function = R (*)(T&, A...);
  static Variant invoke(const Callable& callable, Object* self, std::span<Variant> arguments) {
    const auto function = targetOf<Function>(callable);
    auto& object = static_cast<T&>(*self);
    return call<R, A...>([&](auto&&... values) -> R { return function(object, values...); }, arguments,
                         std::index_sequence_for<A...>());
  }
};
template <class R, class... A>
struct Signature<void, R (*)(A...)> {
  using Result = R;
  using Arguments = std::tuple<A...>;
  using Function = R (*)(A...);
  static Variant invoke(const Callable& callable, Object*, std::span<Variant> arguments) {
    const auto function = targetOf<Function>(callable);
    return call<R, A...>([&](auto&&... values) -> R { return function(values...); }, arguments,
                         std::index_sequence_for<A...>());
  }
};

template <class Declared>
Parameter parameter(const ParameterName& name) {
  Parameter described = name.parameter();
  TypeInfo type = Argument<Declared>::type();
  type.byReference = type.byReference || described.type.byReference;
  described.type = type;
  if (!described.hasDefault) return described;
  try {
    static_cast<void>(Travel<std::remove_cvref_t<Declared>>::fromVariant(described.defaultValue));
  } catch (const Error&) {
    throw Error(ErrorNumber::InternalError, {}, u"the default of " + described.name + u" is of a wrong kind");
  }
  return described;
}

template <class... Declared>
std::vector<Parameter> parameters(std::type_identity<std::tuple<Declared...>>,
                                  [[maybe_unused]] std::span<const ParameterName> names) {
  std::vector<Parameter> described;
  [[maybe_unused]] std::size_t i = 0;
  (described.push_back(parameter<Declared>(names[i++])), ...);
  return described;
}

template <class T, class Function>
Member member(const char* name, Function function, std::span<const ParameterName> names, const char* help) {
  using S = Signature<T, Function>;
  Member described;
  described.name = fromUtf8(name);
  described.help = fromUtf8(help);
  described.id = 1;  // numbered when the table is complete
  described.parameters = parameters(std::type_identity<typename S::Arguments>(), names);
  described.result = resultType<typename S::Result>();
  described.get = callableOf(&S::invoke, function);
  return described;
}

}  // namespace binder

template <class T>
class ClassBuilder {
 public:
  ClassBuilder(const char* name, const char* help) {
    table_.name = fromUtf8(name);
    table_.help = fromUtf8(help);
  }

  // Clients may create the class by name.
  ClassBuilder& creatable() {
    table_.create = [] { return Ref<Object>(new T); };
    return *this;
  }

  // A read-only property, with or without arguments.
  template <class Get>
  ClassBuilder& property(const char* name, Get get, const char* help) {
    checkCount<Get, 0>();
    return add(name, get, std::span<const ParameterName>(), help, true);
  }
  template <class Get, std::size_t N>
  ClassBuilder& property(const char* name, Get get, const ParameterName (&names)[N], const char* help) {
    checkCount<Get, N>();
    return add(name, get, names, help, true);
  }
  // Read and write. Where the value is a Variant, objects may be assigned by reference too.
  template <class Get, class Put>
  requires(!std::is_convertible_v<Put, const char*>) ClassBuilder& property(const char* name, Get get,
                                                                            Put put, const char* help) {
    checkCount<Get, 0>();
    checkCount<Put, 1>();
    add(name, get, std::span<const ParameterName>(), help, true);
    table_.members.back().put = binder::callableOf(&binder::Signature<T, Put>::invoke, put);
    return *this;
  }
  // Read, and written by reference (an object).
  template <class Get, class Put>
  ClassBuilder& propertyRef(const char* name, Get get, Put put, const char* help) {
    checkCount<Get, 0>();
    checkCount<Put, 1>();
    add(name, get, std::span<const ParameterName>(), help, true);
    table_.members.back().putRef = binder::callableOf(&binder::Signature<T, Put>::invoke, put);
    return *this;
  }
  // The default member: a read-only property with arguments.
  template <class Get, std::size_t N>
  ClassBuilder& item(const char* name, Get get, const ParameterName (&names)[N], const char* help) {
    property(name, get, names, help);
    table_.members.back().id = Member::defaultId;
    return *this;
  }

  template <class Function>
  ClassBuilder& method(const char* name, Function function, const char* help) {
    checkCount<Function, 0>();
    return add(name, function, std::span<const ParameterName>(), help, false);
  }
  template <class Function, std::size_t N>
  ClassBuilder& method(const char* name, Function function, const ParameterName (&names)[N],
                       const char* help) {
    checkCount<Function, N>();
    return add(name, function, names, help, false);
  }

  template <class Function>
  ClassBuilder& enumerator(Function newEnum) {
    checkCount<Function, 0>();
    add("NewEnum", newEnum, std::span<const ParameterName>(), "Enumerates the items in order.", true);
    table_.members.back().id = Member::enumeratorId;
    return *this;
  }

  template <class C, class... A>
  ClassBuilder& event(const char* name, Event<A...> C::*event, const char* help) {
    static_assert(sizeof...(A) == 0, "name as many parameters as the event has");
    return addEvent(name, event, std::span<const ParameterName>(), help);
  }
  template <class C, class... A, std::size_t N>
  ClassBuilder& event(const char* name, Event<A...> C::*event, const ParameterName (&names)[N],
                      const char* help) {
    static_assert(sizeof...(A) == N, "name as many parameters as the event has");
    return addEvent(name, event, std::span<const ParameterName>(names), help);
  }

  operator ClassInfo() { return ClassInfo(std::move(table_)); }

 protected:
  template <class Function, std::size_t N>
  static constexpr void checkCount() {
    static_assert(std::tuple_size_v<typename binder::Signature<T, Function>::Arguments> == N,
                  "name as many parameters as the member has");
  }
  template <class Function>
  ClassBuilder& add(const char* name, Function function, std::span<const ParameterName> names,
                    const char* help, bool isProperty) {
    table_.members.push_back(binder::member<T>(name, function, names, help));
    table_.members.back().isProperty = isProperty;
    return *this;
  }
  template <class C, class... A>
  ClassBuilder& addEvent(const char* name, Event<A...> C::*event, std::span<const ParameterName> names,
                         const char* help) {
    EventInfo described;
    described.name = fromUtf8(name);
    described.help = fromUtf8(help);
    described.parameters = binder::parameters(std::type_identity<std::tuple<A...>>(), names);
    described.subscribe = [event](Object& self, EventInfo::Sink sink) {
      return (static_cast<T&>(self).*event).subscribe([sink = std::move(sink)](A... arguments) {
        deliver<A...>(sink, arguments...);
      });
    };
    table_.events.push_back(std::move(described));
    return *this;
  }
  template <class... A>
  static void deliver(const EventInfo::Sink& sink, A... arguments) {
    Variant values[sizeof...(A) + 1] = {binder::Travel<std::remove_cvref_t<A>>::toVariant(arguments)...};
    [[maybe_unused]] std::size_t i = 0;
    [[maybe_unused]] const auto writeBack = [&]<class Declared>(std::type_identity<Declared>,
                                                                auto& argument) {
      if constexpr (binder::Argument<Declared>::byReference)
        argument = binder::Travel<std::remove_cvref_t<Declared>>::fromVariant(values[i]);
      ++i;
    };
    try {
      sink(std::span(values).first(sizeof...(A)));
    } catch (...) {
      (writeBack(std::type_identity<A>(), arguments), ...);  // what it had written before it failed
      throw;
    }
    (writeBack(std::type_identity<A>(), arguments), ...);
  }

  ClassTable table_;
};

// A function class: a table of free functions with one implicit instance.
class FunctionTable : private ClassBuilder<void> {
 public:
  FunctionTable(const char* name, const char* help) : ClassBuilder(name, help) { table_.isGlobal = true; }

  template <class Function>
  FunctionTable& function(const char* name, Function function, const char* help) {
    method(name, function, help);
    return *this;
  }
  template <class Function, std::size_t N>
  FunctionTable& function(const char* name, Function function, const ParameterName (&names)[N],
                          const char* help) {
    method(name, function, names, help);
    return *this;
  }
  // A function without arguments that clients read as a property.
  template <class Function>
  FunctionTable& property(const char* name, Function function, const char* help) {
    ClassBuilder::property(name, function, help);
    return *this;
  }
  // How clients create the one implicit instance.
  FunctionTable& instance(Ref<Object> (*create)()) {
    table_.create = create;
    return *this;
  }
  operator ClassInfo() { return ClassInfo(std::move(table_)); }
};

template <class T>
ClassBuilder<T> describe(const char* name, const char* help) {
  return {name, help};
}
inline FunctionTable describeFunctions(const char* name, const char* help) { return {name, help}; }

}  // namespace zelUtilities
