// Enumerator: walks the items of a collection, as For Each does.
#pragma once

#include "automation/Object.h"
#include "automation/Variant.h"

namespace zelUtilities {

class Enumerator : public Object {
 public:
  // Puts the next item; False at the end. Items added and removed meanwhile are respected.
  virtual bool next(Variant& item) = 0;
  virtual void reset() = 0;
  // Another enumerator at the same place.
  virtual Ref<Enumerator> clone() const = 0;
};

}  // namespace zelUtilities
