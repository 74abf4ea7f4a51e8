// Reports: the failures that are logged while it lives, as "source|number " each. A test fails of those that
// it does not take.
//
//   Reports reports{"zelMisc."};        // is left out where a source begins with it
//   zel_MaxValue(nullptr, 1.0);
//   EXPECT_EQ(reports.taken(), "zel_MaxValue|91 ");
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "foundation/ErrorWatch.h"

namespace zelUtilities {

class Reports {
 public:
  // With a detail it is "source|number|detail ".
  using Detail = StringView ErrorReport::*;
  static constexpr Detail MoreInfo = &ErrorReport::moreInfo, Description = &ErrorReport::description,
                          OwnSource = &ErrorReport::errorSource;

  explicit Reports(std::string prefix, Detail detail = nullptr)
      : watch_([this, prefix = std::move(prefix), detail](const ErrorReport& report) {
          const std::string source = toUtf8(report.source);
          text_ += source.substr(source.starts_with(prefix) ? prefix.size() : 0) + "|" +
                   std::to_string(report.number) + (detail ? "|" + toUtf8(report.*detail) : "") + " ";
        }) {}

  ~Reports() { EXPECT_EQ(text_, ""); }
  Reports(const Reports&) = delete;
  Reports& operator=(const Reports&) = delete;

  // Those since the last call.
  std::string taken() { return std::exchange(text_, {}); }

 private:
  std::string text_;
  ErrorWatch watch_;
};

}  // namespace zelUtilities
