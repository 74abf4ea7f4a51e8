#include "foundation/ErrorWatch.h"

#include <utility>

namespace zelUtilities {

namespace {
thread_local ErrorWatch* newest = nullptr;
}  // namespace

ErrorWatch::ErrorWatch(Listener listener) : listener_(std::move(listener)), before_(newest) { newest = this; }

ErrorWatch::~ErrorWatch() { newest = before_; }

void ErrorWatch::tell(const ErrorReport& report) noexcept {
  for (const ErrorWatch* watch = newest; watch; watch = watch->before_) {
    try {
      watch->listener_(report);
    } catch (...) {  // a watch must not keep the report from the logger
    }
  }
}

}  // namespace zelUtilities
