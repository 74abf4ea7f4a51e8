// VariantConversion: values on their way to and from automation objects of the system.
//
// Every kind goes both ways, arrays with their bounds and element kind. Kinds that only the system has become
// the nearest of ours: unsigned and 64-bit integers a Long where they fit, else a Double; a decimal a Double.
// References are followed.
#pragma once

#include "automation/Object.h"
#include "automation/Variant.h"

struct IDispatch;
struct IUnknown;
struct tagVARIANT;

namespace zelUtilities {

// Fills a variant that is empty; the caller clears it. Raises 13 for an object of the library's own while
// nobody makes it known to the system (see ObjectBridge).
void toSystem(const Variant& value, tagVARIANT& filled);

Variant fromSystem(const tagVARIANT& value);

// How objects of the library's own become known to the system.
struct ObjectBridge {
  // A counted reference to the object as the system's.
  IDispatch* (*toSystem)(Object& object);
  // The library's own object behind one of the system's; nothing when it is somebody else's.
  Object* (*fromSystem)(IUnknown& object);
};

// In force from then on; it must live on. Set it before other threads use the library.
void setObjectBridge(const ObjectBridge* bridge);

// An object of the system's behind our face; our own comes back as itself. Nothing becomes nothing.
Ref<Object> objectFromSystem(IUnknown* object);

}  // namespace zelUtilities
