// Objects: objects by programmatic identifier, whoever made their class.
//
//   Ref<Object> fso = createObject(u"Scripting.FileSystemObject");
//   bool there = toBoolean(fso->Invoke(u"FileExists", InvokeKind::Method, arguments));
//
// A name is looked up, without regard to letter case, first among the classes that the program registered
// here itself, then in the system's class store, then among the stand-ins that the library brings along. So a
// class of the user's takes the place of a stand-in, whichever came first.
//
// The objects of the class store answer late-bound calls like any other Object. Use them only on the thread
// that created them.
#pragma once

#include <functional>

#include "automation/Object.h"
#include "automation/String.h"
#include "platform/Service.h"

namespace zelUtilities {

struct Objects {
  virtual ~Objects() = default;

  // A new object; never nothing. Raises 429 with a description that names the identifier where there is no
  // such class or its creation fails.
  virtual Ref<Object> create(StringView progId) = 0;

  static Objects& system();
};

inline Ref<Object> createObject(StringView progId) { return Service<Objects>::inForce().create(progId); }

// The name of an object's class as clients see it: "TextBox"; "Object" where the object does not tell.
String className(Object& object);

using ObjectFactory = std::function<Ref<Object>()>;

// Registers a class of the program's own for this process, in place of an earlier one under the name. An
// empty factory takes the registration back. Threads may register and create at the same time.
void registerObject(StringView progId, ObjectFactory factory);
// The same for a class that stands in where neither the program nor the system has one.
void registerStandIn(StringView progId, ObjectFactory factory);

}  // namespace zelUtilities
