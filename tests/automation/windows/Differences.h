// Counts how our outcomes compare with the system's, and why they differ where they do.
#pragma once

#include <vector>

#include "automation/windows/SystemOracle.h"

namespace zelUtilities::oracle {

// One value under one operation. `kind` is that of a conversion, `pattern` that of formatting.
struct Trial {
  Variant value;
  VariantKind kind;
  String pattern;
  Variant other;
  Outcome ours, system;
};

// A difference that is meant: a fault of the system's implementation at hand, or ours by intent.
struct Explanation {
  const char* sentence;
  bool (*applies)(const Trial&);
  std::size_t count = 0;
};

// Every difference needs an explanation, and every explanation a difference; the destructor prints the counts
// and fails the test for either.
class Differences {
 public:
  Differences(const char* operation, std::vector<Explanation> explanations)
      : operation_(operation), explanations_(std::move(explanations)) {}
  ~Differences();

  void add(const Trial& trial);

 private:
  static constexpr std::size_t mostShown = 40;

  const char* operation_;
  std::vector<Explanation> explanations_;
  std::size_t trials_ = 0, unexplained_ = 0;
};

}  // namespace zelUtilities::oracle
