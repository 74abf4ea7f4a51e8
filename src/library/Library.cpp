#include "library/Library.h"

#include "datalist/DatalistClasses.h"
#include "files/FilesClasses.h"
#include "globalization/GlobalizationClasses.h"
#include "platform/Locale.h"
#include "system/SystemClasses.h"
#include "text/TextClasses.h"

namespace zelUtilities {

namespace {

struct WholeLibrary {
  WholeLibrary() {
    registerText(classes);
    registerDatalist(classes);
    registerFiles(classes);
    registerGlobalization(classes);
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
