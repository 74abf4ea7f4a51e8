#include "automation/Locale.h"

#include <utility>

namespace zelUtilities {

namespace {

Locale& installed() {
  static Locale locale;
  return locale;
}

}  // namespace

const Locale& currentLocale() { return installed(); }

void setCurrentLocale(Locale locale) { installed() = std::move(locale); }

}  // namespace zelUtilities
