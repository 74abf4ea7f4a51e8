#include "files/zelFileFilter.h"

#include "automation/Binder.h"

namespace zelUtilities {

const ClassInfo& zelFileFilter::describeClass() {
  using T = zelFileFilter;
  static const ClassInfo info =
      describe<T>("zelFileFilter", "A filter of a file dialog.")
          .creatable()
          .property("Key", &T::Key, &T::setKey, "The key; once set it never changes.")
          .property("Filter", &T::Filter, &T::setFilter, "The pattern, such as \"*.txt\".")
          .property("Name", &T::Name, &T::setName, "The name that the user reads; the key while empty.");
  return info;
}

}  // namespace zelUtilities
