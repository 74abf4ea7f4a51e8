// OwnObject: by what an object of this very module is recognised when it comes back from a client.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include "automation/Object.h"

namespace zelUtilities {

// The system's interfaces have no virtual destructor; nobody deletes through them.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

struct OwnObject : IUnknown {
  virtual Object& core() = 0;

 protected:
  ~OwnObject() = default;
};

#pragma GCC diagnostic pop

// Differs in each copy of the library that a process has loaded, so that no other's objects answer it.
const GUID& ownObjectId();

}  // namespace zelUtilities
