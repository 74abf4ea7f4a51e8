// The product of two doubles without rounding.
#pragma once

#include <bit>
#include <cstdint>

namespace zelUtilities {

// The exact product is the sum of both; `rounded` is the nearest double. Not by std::fma, which some run
// times round twice.
struct ExactProduct {
  ExactProduct(double left, double right) : rounded(left * right) {
    const double a = upperHalf(left);
    const double b = left - a;
    const double c = upperHalf(right);
    const double d = right - c;
    missing = ((a * c - rounded) + a * d + b * c) + b * d;
  }

  double rounded;
  double missing;

 private:
  // Products of halves are exact.
  static double upperHalf(double value) {
    return std::bit_cast<double>(std::bit_cast<std::uint64_t>(value) & ~std::uint64_t{0x7FFFFFF});
  }
};

}  // namespace zelUtilities
