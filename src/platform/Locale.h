// The user's conventions and the system's ANSI code page.
//
//   installSystemLocale();                       once, when the library starts
//   std::string bytes = narrow(u"Größe");        in the code page
//   String text = widen(bytes);
//
// The code page is the system's own; where a system has none it is Windows-1252 unless the environment
// variable ZELORA_CODEPAGE names another. In single-byte code pages every byte has a character and comes
// back: the bytes that Windows-1252 leaves undefined stand for the control characters of the same number.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "automation/Locale.h"
#include "automation/String.h"
#include "platform/Service.h"

namespace zelUtilities {

struct LocaleService {
  virtual ~LocaleService() = default;

  // The user's conventions as they are now.
  virtual Locale locale() = 0;

  // What the code page cannot carry becomes its nearest character, else "?".
  virtual std::string narrow(StringView text) = 0;
  virtual String widen(std::string_view bytes) = 0;
  // One unit; "?" where the code page needs more than a byte for it.
  virtual std::uint8_t narrowUnit(char16_t unit) = 0;

  // Negative, 0 or positive: the user's order of texts, without regard to letter case.
  virtual int compareText(StringView left, StringView right) = 0;

  static LocaleService& system();
};

inline LocaleService& localeService() { return Service<LocaleService>::inForce(); }

inline std::string narrow(StringView text) { return localeService().narrow(text); }
inline String widen(std::string_view bytes) { return localeService().widen(bytes); }
inline std::uint8_t narrowUnit(char16_t unit) { return localeService().narrowUnit(unit); }
inline int compareText(StringView left, StringView right) { return localeService().compareText(left, right); }

// The user's conventions, for conversions and formatting from now on.
inline Locale systemLocale() { return localeService().locale(); }
inline void installSystemLocale() { setCurrentLocale(systemLocale()); }

}  // namespace zelUtilities
