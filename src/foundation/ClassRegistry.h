// ClassRegistry: every class and enumeration of the library, found by name.
//
//   ClassRegistry registry;
//   registry.add(zelNodeList::describeClass());
//   Ref<Object> list = registry.create(u"zelUtilities.zelNodeList");
//
// Names are compared without regard to letter case, and a class is found with or without the library's
// name before it. The registry keeps references to descriptions, which must outlive it (they are statics).
// Once filled it is only read, so threads may share it; objects belong to the thread that asked for them.
#pragma once

#include <map>
#include <optional>
#include <span>
#include <vector>

#include "automation/CaseFolding.h"
#include "automation/ClassInfo.h"

namespace zelUtilities {

class ClassRegistry {
 public:
  // An operation that clients call without an object: a member of a function class.
  struct GlobalOperation {
    const ClassInfo* functionClass;
    const Member* operation;
  };

  // Adds a class, and each enumeration that its members mention and that is not there yet. Raises 51 with
  // a sentence, and adds nothing, when the class's name or the name of one of its global operations is
  // taken. Members of different classes may bear the same name.
  void add(const ClassInfo& info);
  // Adds an enumeration unless this very one is there. Raises 51 for a name that is taken, also for that of
  // a value: clients see the values of all enumerations side by side.
  void add(const EnumInfo& info);

  // In the order of registration.
  std::span<const ClassInfo* const> classes() const { return classes_; }
  std::span<const EnumInfo* const> enumerations() const { return enumerations_; }

  // "zelNodeList" or "zelUtilities.zelNodeList"; nothing when there is none.
  const ClassInfo* find(StringView name) const;
  const EnumInfo* findEnumeration(StringView name) const;
  std::optional<GlobalOperation> findOperation(StringView name) const;

  // A new object of the class that the programmatic identifier "zelUtilities.<class>" names; of a function
  // class its implicit instance. Nothing when there is no such class or clients cannot create it. Raises
  // what the creation raises.
  Ref<Object> create(StringView programmaticIdentifier) const;

  // The one implicit instance of a function class that this thread has.
  static Ref<Object> instance(const ClassInfo& functionClass);

 private:
  struct Folded {
    using is_transparent = void;
    bool operator()(StringView a, StringView b) const { return compareFolded(a, b) < 0; }
  };
  template <class T>
  using ByName = std::map<StringView, T, Folded>;  // the names lie in the descriptions

  void addEnumerationsOf(const ClassInfo& info);

  std::vector<const ClassInfo*> classes_;
  std::vector<const EnumInfo*> enumerations_;
  ByName<const ClassInfo*> classByName_;
  ByName<const EnumInfo*> enumerationByName_;
  ByName<const EnumInfo*> enumerationByValue_;
  ByName<GlobalOperation> operationByName_;
};

// The registry in which CreateNamedObject looks first; an empty one until it is set. Set it before other
// threads use the library; the registry must outlive its use.
const ClassRegistry& currentClassRegistry();
void setCurrentClassRegistry(const ClassRegistry& registry);

}  // namespace zelUtilities
