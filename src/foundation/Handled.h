// The one handler of every public operation, so that an operation reads as its steps:
//
//   bool zelNodeList::RemoveColumn(const Variant& vKey) {
//     bool removed = false;
//     handled(u"zelNodeList.RemoveColumn", [&] {
//       requireEmptyList();
//       removed = columns_->Remove(vKey);
//     });
//     return removed;
//   }
//
// The result is what had been set when the failure came. Nothing is spent while nothing is thrown: the source
// stays the literal that it is, whose length is counted only for a report.
#pragma once

#include "automation/String.h"

namespace zelUtilities {

// For use inside a catch block: what is being handled goes to the log under this source. Never raises.
void logCurrent(StringView source, StringView moreInfo = {}) noexcept;

// The same, and raises it again with the source chained, as mLog::ErrorLog does; returns where that does
// not raise (ConDebug 2).
void logCurrentAndRaise(StringView source);

// For use inside a catch block: raises what is being handled as an Error with the source
// "<source>::<its own source>", without logging it.
[[noreturn]] void raiseChained(StringView source);

// Runs the body; whatever it throws is logged under the source, and the call returns normally.
template <class Source, class Body>
void handled(const Source& source, Body&& body) {
  try {
    body();
  } catch (...) {
    logCurrent(source);
  }
}

// Runs the body; whatever it throws is logged under the source and raised again as an Error whose source
// is "<source>::<its own source>". While the setting ConDebug is 2 it returns normally.
template <class Source, class Body>
void handledAndRaised(const Source& source, Body&& body) {
  try {
    body();
  } catch (...) {
    logCurrentAndRaise(source);
  }
}

// For routines of modules: runs the body and gives back its result; whatever it throws is raised again,
// unlogged, as an Error whose source is "<source>::<its own source>".
template <class Source, class Body>
decltype(auto) chained(const Source& source, Body&& body) {
  try {
    return body();
  } catch (...) {
    raiseChained(source);
  }
}

}  // namespace zelUtilities
