#include "automation/windows/Differences.h"

#include <gtest/gtest.h>

#include <iostream>

namespace zelUtilities::oracle {

Differences::Differences(const char* operation, std::vector<Explanation> explanations)
    : operation_(operation), explanations_(std::move(explanations)), counts_(explanations_.size()) {}

void Differences::add(const Trial& trial) {
  ++trials_;
  if (same(trial.ours, trial.system)) return;
  for (std::size_t i = 0; i < explanations_.size(); ++i) {
    if (!explanations_[i].applies(trial)) continue;
    ++counts_[i];
    return;
  }
  if (++unexplained_ > mostShown) return;
  String line = describe(trial.value);
  if (trial.kind != VariantKind::Empty) line += u" as kind " + decimalText(static_cast<int>(trial.kind));
  if (!trial.pattern.empty()) line += u" by [" + trial.pattern + u"]";
  if (!trial.other.isEmpty()) line += u" with " + describe(trial.other);
  std::cout << "  " << toUtf8(line) << ": ours " << toUtf8(describe(trial.ours)) << ", system "
            << toUtf8(describe(trial.system)) << "\n";
}

Differences::~Differences() {
  std::cout << operation_ << ": " << trials_ << " compared";
  for (std::size_t i = 0; i < explanations_.size(); ++i)
    std::cout << "\n  " << counts_[i] << " differ: " << explanations_[i].sentence;
  std::cout << "\n  " << unexplained_ << " differ without an explanation\n";
  EXPECT_EQ(unexplained_, 0U) << operation_;
  for (std::size_t i = 0; i < explanations_.size(); ++i)
    EXPECT_GT(counts_[i], 0U) << operation_ << ", no longer needed: " << explanations_[i].sentence;
}

}  // namespace zelUtilities::oracle
