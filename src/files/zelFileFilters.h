// zelFileFilters: the filters of a file dialog, in order, each under its key.
//
//   auto filters = make<zelFileFilters>();
//   filters->Create(u"txt", u"*.txt;*.log", u"Texts");
//   filters->Create(u"All files", u"*.*");                 // its key serves as its name
//
// A failure is logged under "zelFileFilters.<operation>", never raised.
#pragma once

#include "files/KeyedItems.h"
#include "files/zelFileFilter.h"

namespace zelUtilities {

class zelFileFilters : public Object {
 public:
  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  // The filter under a key (any letter case) or at a position from 1; nothing when there is none.
  Ref<zelFileFilter> Item(const Variant& vKey) const { return filters_.item(vKey); }
  std::int32_t Count() const { return filters_.count(); }
  Ref<Enumerator> NewEnum() const { return filters_.newEnum(); }
  bool Remove(const Variant& vKey) { return filters_.remove(vKey); }
  void Clear() { filters_.clear(); }
  // Adds under the filter's key; False when the key is taken or there is no filter.
  bool Add(const Ref<zelFileFilter>& oFilter) { return filters_.add(oFilter, &zelFileFilter::Key); }
  // Makes and adds a filter; nothing when the key is taken.
  Ref<zelFileFilter> Create(const String& sKey, const String& sFilter, const String& sName = {});

 private:
  KeyedItems<zelFileFilter> filters_{u"zelFileFilters"};
};

}  // namespace zelUtilities
