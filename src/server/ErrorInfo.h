// What is being handled, as the clients of a COM call are told.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <utility>

#include "automation/String.h"

namespace zelUtilities {

// The result code that stands for an error number: small numbers are the automation run time's own.
HRESULT resultCode(std::int32_t number);

// Both are for catch blocks. The first fills a call's exception record, where the client gave one, and
// returns DISP_E_EXCEPTION; an error without a source gets the one given. The second leaves the error as the
// thread's error information and returns its result code.
HRESULT reportException(EXCEPINFO* exception, StringView source) noexcept;
HRESULT reportErrorInfo(StringView source) noexcept;

// Runs a method's body; nothing that it raises gets out.
template <class Body>
HRESULT guarded(StringView source, Body&& body) noexcept {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    return reportErrorInfo(source);
  }
}

}  // namespace zelUtilities
