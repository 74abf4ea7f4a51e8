// Texts on their way into and out of the system's wide functions; the units are the same.
#pragma once

#include <string>
#include <string_view>

#include "automation/String.h"

namespace zelUtilities {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

inline const wchar_t* wide(const char16_t* text) { return reinterpret_cast<const wchar_t*>(text); }
inline const wchar_t* wide(const String& text) { return wide(text.c_str()); }
// Room for a text that the system writes, of size() units and a terminator.
inline wchar_t* wideBuffer(String& text) { return reinterpret_cast<wchar_t*>(text.data()); }

inline String fromWide(const wchar_t* text) {
  return text ? String(reinterpret_cast<const char16_t*>(text)) : String();
}
inline String fromWide(const wchar_t* text, std::size_t length) {
  return length ? String(reinterpret_cast<const char16_t*>(text), length) : String();
}

}  // namespace zelUtilities
