// Counts how our outcomes compare with the system's, and why they differ where they do.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <iomanip>
#include <iostream>
#include <vector>

#include "automation/Conversions.h"
#include "automation/Error.h"

namespace zelUtilities::oracle {

// What an operation gave: a value, or the number of the error that it raised.
struct Outcome {
  template <class Operation>
  static Outcome of(const Operation& operation) {
    try {
      return {operation()};
    } catch (const Error& error) {
      return {{}, error.number()};
    }
  }

  // Dates are the same within a fraction of a second: there are several ways to add up hours and minutes.
  bool sameAs(const Outcome& other) const {
    const Variant &a = value, &b = other.value;
    if (error != other.error || a.kind() != b.kind()) return false;
    if (error != 0 || a.isNull()) return true;
    if (a.isString()) return a.text() == b.text();
    if (a.kind() == VariantKind::Currency) return a.currencyValue() == b.currencyValue();
    return std::fabs(toDouble(a) - toDouble(b)) <= (a.kind() == VariantKind::Date ? 1e-9 : 0);
  }

  friend std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
    const Variant& value = outcome.value;
    if (outcome.error != 0) return out << "error " << outcome.error;
    out << toUtf8(typeName(value)) << " ";
    return value.isString() ? out << toUtf8(value.text()) : value.isNull() ? out : out << toDouble(value);
  }

  Variant value;
  int error = 0;
};

// A value that was formatted by a pattern, converted to the kind of that number, or compared with another.
struct Trial {
  Variant value;
  String pattern;
  Variant other;
  Outcome ours, system;
};

// A difference that is meant: a fault of the system's implementation at hand, or ours by intent.
struct Explanation {
  const char* sentence;
  bool (*applies)(const Trial&);
  bool needed = true;
  std::size_t count = 0;
};

// Every difference needs an explanation, and every explanation that is needed a difference; the destructor
// prints the counts and fails the test for either.
class Differences {
 public:
  void explain(std::vector<Explanation> explanations) { explanations_ = std::move(explanations); }

  void add(const Trial& trial) {
    ++trials_;
    if (trial.ours.sameAs(trial.system)) return;
    for (Explanation& each : explanations_)
      if (each.applies(trial)) return void(++each.count);
    if (++unexplained_ > 40) return;
    std::cout << std::setprecision(17) << "  " << Outcome{trial.value} << " by [" << toUtf8(trial.pattern)
              << "] with " << Outcome{trial.other} << ": ours " << trial.ours << ", system " << trial.system
              << "\n";
  }

  ~Differences() {
    std::cout << trials_ << " compared, " << unexplained_ << " differ unexplained\n";
    EXPECT_EQ(unexplained_, 0U);
    for (const Explanation& each : explanations_) {
      std::cout << "  " << each.count << " differ: " << each.sentence << "\n";
      EXPECT_EQ(each.count != 0, each.needed) << "no longer needed: " << each.sentence;
    }
  }

 private:
  std::vector<Explanation> explanations_;
  std::size_t trials_ = 0, unexplained_ = 0;
};

}  // namespace zelUtilities::oracle
