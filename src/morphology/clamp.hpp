// Limiting a number to a range.
#pragma once

namespace nivaro {

// Unlike std::clamp this is defined for a value that is not a number: it stays what it is, so that
// bad parameters show in the bed instead of hiding behind a limit.
constexpr double clamped(double value, double low, double high) {
  if (value < low) return low;
  if (value > high) return high;
  return value;
}

}  // namespace nivaro
