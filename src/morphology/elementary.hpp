// Logarithms, exponentials, powers and cube roots that are the same to the last bit on every system. C
// libraries differ there, and one cell in a hundred of a random grid with them. And the limit of a range.
#pragma once

namespace nivaro {

// Within 0.51 units in the last place, powers for exponents to 25. Zero, what is infinite or no number,
// and what leaves the normal range are what the standard functions make of them.
double logarithm(double x);
double decimalLogarithm(double x);
double exponential(double x);
double power(double x, double exponent);
double cubeRoot(double x);

// Limits to a range. Unlike std::clamp this is defined for a value that is not a number: it stays what
// it is, so that bad parameters show in the bed instead of hiding behind a limit.
constexpr double clamped(double value, double low, double high) {
  if (value < low) return low;
  if (value > high) return high;
  return value;
}

}  // namespace nivaro
