#include "files/zelFileFilters.h"

#include "automation/Binder.h"

namespace zelUtilities {

Ref<zelFileFilter> zelFileFilters::Create(const String& sKey, const String& sFilter, const String& sName) {
  Ref<zelFileFilter> added;
  filters_.logged(u".Create", [&] {
    const auto filter = make<zelFileFilter>();
    filter->setKey(sKey);
    filter->setFilter(sFilter);
    filter->setName(sName);
    if (Add(filter)) added = filter;
  });
  return added;
}

const ClassInfo& zelFileFilters::describeClass() {
  using T = zelFileFilters;
  static const ClassInfo info =
      describe<T>("zelFileFilters", "The filters of a file dialog.")
          .creatable()
          .item("Item", &T::Item, {"vKey"}, "The filter under a key or at a position, or nothing.")
          .enumerator(&T::NewEnum)
          .property("Count", &T::Count, "The number of filters.")
          .method("Remove", &T::Remove, {"vKey"}, "Removes a filter; False when there is none.")
          .method("Clear", &T::Clear, "Removes all filters.")
          .method("Add", &T::Add, {reference("oFilter")},
                  "Adds a filter under its key; False when the key is taken.")
          .method("Create", &T::Create, {"sKey", "sFilter", arg("sName") = u""},
                  "Adds a new filter; nothing when the key is taken.");
  return info;
}

}  // namespace zelUtilities
