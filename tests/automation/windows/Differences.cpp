#include "automation/windows/Differences.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iostream>

#include "automation/Conversions.h"

namespace zelUtilities::oracle {

namespace {

// Dates are the same within a fraction of a second: there are several ways to add up hours and minutes.
bool same(const Outcome& left, const Outcome& right) {
  const Variant &a = left.value, &b = right.value;
  if (left.error != 0 || right.error != 0) return left.error == right.error;
  if (a.kind() != b.kind() || a.isNull()) return a.kind() == b.kind();
  if (a.isString()) return a.text() == b.text();
  if (a.kind() == VariantKind::Currency) return a.currencyValue() == b.currencyValue();
  return std::fabs(toDouble(a) - toDouble(b)) <= (a.kind() == VariantKind::Date ? 1e-9 : 0);
}

std::string describe(const Outcome& outcome) {
  const Variant& value = outcome.value;
  if (outcome.error != 0) return "error " + std::to_string(outcome.error);
  if (value.isString()) return '"' + toUtf8(value.text()) + '"';
  char number[32] = "";
  if (!value.isNull()) std::snprintf(number, sizeof number, " %.17g", toDouble(value));
  return toUtf8(typeName(value)) + number;
}

}  // namespace

void Differences::add(const Trial& trial) {
  ++trials_;
  if (same(trial.ours, trial.system)) return;
  for (Explanation& each : explanations_)
    if (each.applies(trial)) return void(++each.count);
  if (++unexplained_ > mostShown) return;
  std::cout << "  " << describe({trial.value}) << " as kind " << static_cast<int>(trial.kind) << " by ["
            << toUtf8(trial.pattern) << "] with " << describe({trial.other}) << ": ours "
            << describe(trial.ours) << ", system " << describe(trial.system) << "\n";
}

Differences::~Differences() {
  std::cout << operation_ << ": " << trials_ << " compared, " << unexplained_ << " differ unexplained\n";
  EXPECT_EQ(unexplained_, 0U) << operation_;
  for (const Explanation& each : explanations_) {
    std::cout << "  " << each.count << " differ: " << each.sentence << "\n";
    EXPECT_GT(each.count, 0U) << operation_ << ", no longer needed: " << each.sentence;
  }
}

}  // namespace zelUtilities::oracle
