// ForeignObject: an automation object of the system's behind the face of an Object.
//
// Use it only on the thread that it came from, and let go of it before that thread ends its use of COM.
#pragma once

#include "automation/Enumerator.h"
#include "automation/Object.h"
#include "automation/Variant.h"

struct IDispatch;
struct IEnumVARIANT;
struct ISequentialStream;
struct IUnknown;

namespace zelUtilities {

class ForeignObject : public Object {
 public:
  // Holds a reference of its own.
  explicit ForeignObject(IDispatch* dispatch);

  // Arguments are passed by value, which every object takes. Only an Empty one, which holds a place for an
  // answer, and an array, which may be filled, are passed as a script passes its variables, and written back.
  // "NewEnum" gives an Enumerator.
  Variant Invoke(StringView name, InvokeKind kind, std::span<Variant> arguments) override;

  IDispatch* dispatch() const { return dispatch_; }
  // Whether it has a member of the name now.
  bool knows(StringView name) const;

 protected:
  ~ForeignObject() override;

 private:
  long idOf(StringView name) const;

  IDispatch* dispatch_;
};

class ForeignEnumerator : public Enumerator {
 public:
  explicit ForeignEnumerator(IEnumVARIANT* items);

  bool next(Variant& item) override;
  void reset() override;
  Ref<Enumerator> clone() const override;

 protected:
  ~ForeignEnumerator() override;

 private:
  IEnumVARIANT* items_;
};

// A stream that answers no late-bound calls: clients in C++ and C# have such.
class ForeignStream : public Object {
 public:
  // Holds a reference of its own.
  explicit ForeignStream(ISequentialStream* stream);

  ISequentialStream* stream() const { return stream_; }

 protected:
  ~ForeignStream() override;

 private:
  ISequentialStream* stream_;
};

// The object if it is somebody else's, else nothing. Objects with a description are told by it, which is
// quick.
inline ForeignObject* foreignObject(Object* object) {
  return object && !object->classInfo() ? dynamic_cast<ForeignObject*>(object) : nullptr;
}

inline ForeignStream* foreignStream(Object* object) {
  return object && !object->classInfo() ? dynamic_cast<ForeignStream*>(object) : nullptr;
}

// As a ForeignObject, a ForeignEnumerator or a ForeignStream; raises 430 for an object that is none.
Ref<Object> wrapForeign(IUnknown* object);

}  // namespace zelUtilities
