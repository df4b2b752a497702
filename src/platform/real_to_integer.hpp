// Reals made into 4-byte integers without undefined behaviour: a value beyond the range becomes its
// nearest bound, not-a-number becomes 0.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

namespace nivaro {

// Whether the whole part of a value is such an integer, so that nothing is lost but decimals.
inline bool isInIntegerRange(double value) {
  using Limits = std::numeric_limits<std::int32_t>;
  return value > Limits::min() - 1.0 && value < Limits::max() + 1.0;
}

// Toward zero.
inline std::int32_t truncated(double value) {
  using Limits = std::numeric_limits<std::int32_t>;
  if (std::isnan(value)) return 0;
  if (value >= Limits::max()) return Limits::max();
  if (value <= Limits::min()) return Limits::min();
  return static_cast<std::int32_t>(value);
}

// To the nearest integer, halves away from zero.
inline std::int32_t rounded(double value) {
  return truncated(std::round(value));
}

}  // namespace nivaro
