#include "library/Library.h"

#include "platform/Locale.h"
#include "system/SystemClasses.h"

namespace zelUtilities {

namespace {

struct WholeLibrary {
  WholeLibrary() {
    registerSystem(classes);
    installSystemLocale();
    setCurrentClassRegistry(classes);
  }
  ClassRegistry classes;
};

}  // namespace

const ClassRegistry& library() {
  static const WholeLibrary whole;
  return whole.classes;
}

}  // namespace zelUtilities
