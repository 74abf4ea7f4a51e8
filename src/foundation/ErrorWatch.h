// ErrorWatch: sees every error report of its thread, beside the logger, for as long as it lives.
//
//   ErrorWatch watch([&](const ErrorReport& report) { complain(report.source, report.description); });
//
// For programs that must tell their user of failures that the library logs and does not raise. Watches of a
// thread end in the reverse order of their making; the newest is told first.
#pragma once

#include <cstdint>
#include <functional>

#include "automation/String.h"

namespace zelUtilities {

// The texts are valid during the call only.
struct ErrorReport {
  StringView source;  // of the operation that reports
  std::int32_t number = 0;
  StringView errorSource;  // the error's own
  StringView description;
  StringView moreInfo;
};

class ErrorWatch {
 public:
  using Listener = std::function<void(const ErrorReport&)>;

  explicit ErrorWatch(Listener listener);
  ~ErrorWatch();
  ErrorWatch(const ErrorWatch&) = delete;
  ErrorWatch& operator=(const ErrorWatch&) = delete;

  // Tells all watches of this thread; what a listener throws is dropped.
  static void tell(const ErrorReport& report) noexcept;

 private:
  Listener listener_;
  ErrorWatch* before_;
};

}  // namespace zelUtilities
