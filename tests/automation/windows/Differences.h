// Counts how our outcomes compare with the system's, and why they differ where they do.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "automation/windows/SystemOracle.h"

namespace zelUtilities::oracle {

// One value under one operation. `kind` is that of a conversion, `pattern` that of formatting.
struct Trial {
  Variant value;
  VariantKind kind = VariantKind::Empty;
  String pattern;
  Variant other;
  Outcome ours;
  Outcome system;
};

// A difference that is meant: a fault of the system's implementation at hand, or ours by intent.
struct Explanation {
  const char* sentence;
  std::function<bool(const Trial&)> applies;
};

// Every difference needs an explanation, and every explanation a difference; the destructor prints the counts
// and fails the test for either.
class Differences {
 public:
  Differences(const char* operation, std::vector<Explanation> explanations);
  ~Differences();
  Differences(const Differences&) = delete;
  Differences& operator=(const Differences&) = delete;

  void add(const Trial& trial);

 private:
  static constexpr std::size_t mostShown = 40;

  const char* operation_;
  std::vector<Explanation> explanations_;
  std::vector<std::size_t> counts_;
  std::size_t trials_ = 0;
  std::size_t unexplained_ = 0;
};

}  // namespace zelUtilities::oracle
