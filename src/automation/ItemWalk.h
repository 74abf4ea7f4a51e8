// ItemWalk: the items of any collection, one's own or a client's (a form's controls, a toolbar's buttons).
//
//   const Ref<Enumerator> controls = itemsOf(form);
//   for (Variant control; controls->next(control);) ...
#pragma once

#include "automation/Enumerator.h"

namespace zelUtilities {

// The collection's own enumerator where it has one; else a walk over Item(1) to Item(Count). Raises what
// Count raises, 438 for an object that has neither, and 91 for nothing.
Ref<Enumerator> itemsOf(const Ref<Object>& collection);

}  // namespace zelUtilities
