// Object: the counted base of every class of the library, and of foreign objects behind the same face.
//
//   Ref<zelNodeList> list = make<zelNodeList>();
//   list->Invoke(u"Count", InvokeKind::Get, {});     // late-bound, as a script would
//
// An object lives as long as a Ref holds it; a Ref made in its own constructor would end it as it
// goes. Counts are not atomic: an object is used only by the thread that created it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>
#include <utility>

#include "automation/String.h"

namespace zelUtilities {

class ClassInfo;
class Variant;

// What a late-bound call asks for; read as bits, since a script's call expression may mean
// a method or a property alike.
enum class InvokeKind : std::uint8_t { Method = 1, Get = 2, MethodOrGet = 3, Put = 4, PutRef = 8 };

class Object {
 public:
  Object() = default;
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

  void retain() const {
    if (countUp()) const_cast<Object*>(this)->firstReference();
  }
  void release() const {
    if (countDown()) const_cast<Object*>(this)->lastReference();
  }

  // The description of the object's class; nothing for a foreign object.
  virtual const ClassInfo* classInfo() const { return nullptr; }

  // Calls a member by name (any letter case). Arguments stand in the member's order; those of
  // by-reference parameters are written back. A put has its value as the last argument. An empty
  // name calls the default member. Raises 438 for an unknown member, 450 for too many arguments,
  // 449 for a missing one, 13 where a value does not convert, and what the member itself raises.
  virtual Variant Invoke(StringView name, InvokeKind kind, std::span<Variant> arguments);

  // How many references are held; for tests and diagnosis.
  std::uint32_t references() const { return references_; }

 protected:
  virtual ~Object() = default;

  // Whether it is the first reference.
  bool countUp() const { return references_++ == 0; }
  // Whether it was the last one.
  bool countDown() const { return --references_ == 0; }

  // An object that is part of another one keeps its owner alive between these two calls.
  virtual void firstReference() {}
  virtual void lastReference() {
    references_ = 1;  // so that references that come and go in a destructor do not end it once more
    delete this;
  }

 private:
  mutable std::uint32_t references_ = 0;
};

// A counted reference; may hold nothing.
template <class T>
class Ref {
 public:
  Ref() = default;
  Ref(std::nullptr_t) {}
  Ref(T* object) : object_(object) {
    if (object_) object_->retain();
  }
  Ref(const Ref& other) : Ref(other.object_) {}
  Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  template <class U>
  requires std::is_convertible_v<U*, T*> Ref(const Ref<U>& other) : Ref(static_cast<T*>(other.get())) {}
  template <class U>
  requires std::is_convertible_v<U*, T*> Ref(Ref<U>&& other)
  noexcept : object_(other.detach()) {}
  ~Ref() {
    if (object_) object_->release();
  }
  Ref& operator=(Ref other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }

  T* get() const { return object_; }
  T& operator*() const { return *object_; }
  T* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }
  friend bool operator==(const Ref& a, const Ref& b) { return a.object_ == b.object_; }
  friend bool operator==(const Ref& a, const T* b) { return a.object_ == b; }

  // Gives the reference away without releasing it.
  T* detach() { return std::exchange(object_, nullptr); }

 private:
  T* object_ = nullptr;
};

template <class T, class... Arguments>
Ref<T> make(Arguments&&... arguments) {
  return Ref<T>(new T(std::forward<Arguments>(arguments)...));
}

// The object if it is of this class, else nothing.
template <class T>
Ref<T> objectCast(Object* object) {
  return Ref<T>(dynamic_cast<T*>(object));
}

}  // namespace zelUtilities
