// Natural logarithm and exponential in every lane, from their series. Both are within 2e-15 of the
// library's over the ranges named here; the tests measure it.
#pragma once

#include "morphology/lanes.hpp"

namespace nivaro {

// c[0] + c[1] x + c[2] x^2 + ..., neighbours joined in pairs until one term is left, so that the
// additions do not wait for each other.
template <int count, class Real>
[[gnu::always_inline]] inline Real sumOfPowers(Real x, const Real (&terms)[count]) {
  if constexpr (count == 1) {
    return terms[0];
  } else {
    constexpr int half = (count + 1) / 2;
    Real pairs[half];
    for (int k = 0; k < count / 2; ++k)
      pairs[k] = Lanes<Real>::fused(terms[2 * k + 1], x, terms[2 * k]);
    if constexpr (count % 2 == 1) pairs[half - 1] = terms[count - 1];
    return sumOfPowers<half>(x * x, pairs);
  }
}

template <int count, class Real>
[[gnu::always_inline]] inline Real polynomial(Real x, const double (&coefficients)[count]) {
  Real terms[count];
  for (int k = 0; k < count; ++k) terms[k] = all<Real>(coefficients[k]);
  return sumOfPowers<count>(x, terms);
}

// ln 2 as the sum of a part with 33 bits, so that its product with an exponent is exact, and the
// rest.
constexpr double kLn2High = 0x1.62e42fef00000p-1;
constexpr double kLn2Low = 0x1.473de6af278edp-34;

// ln x for a normal positive x:
//
//   x = 2^k m with m from sqrt(1/2) to sqrt(2)
//   ln m = 2 artanh s = 2 (s + s^3 / 3 + s^5 / 5 + ...), s = (m - 1) / (m + 1), s^2 < 0.0295
//
// The eleventh term of the sum is below 1e-17 of the first.
template <class Real>
[[gnu::always_inline]] inline Real logarithm(Real x) {
  using Word = typename Lanes<Real>::Word;
  constexpr double series[] = {2.0 / 3,  2.0 / 5,  2.0 / 7,  2.0 / 9,  2.0 / 11,
                               2.0 / 13, 2.0 / 15, 2.0 / 17, 2.0 / 19, 2.0 / 21};
  constexpr std::uint64_t one = 0x3ff0000000000000;         // 1
  constexpr std::uint64_t rootOfHalf = 0x3fe6a09e667f3bcd;  // sqrt(1/2)
  constexpr std::uint64_t counting = 0x4330000000000000;    // 2^52, whose last bit counts ones

  const Word bits = as<Word>(x);
  const Word exponent = (bits + (one - rootOfHalf)) >> 52;  // k + 1023
  const Real k = as<Real>(exponent | counting) - (0x1p52 + 1023.0);
  const Real m = as<Real>(bits - ((exponent - 1023) << 52));

  const Real s = (m - 1.0) / (m + 1.0);
  const Real square = s * s;
  const Real rest = s * square * polynomial(square, series);
  return k * kLn2High + (2.0 * s + (rest + k * kLn2Low));
}

// e^x for x from -700 to 700, and not a number for what is none:
//
//   x = n ln 2 + r with |r| <= ln 2 / 2,  e^x = 2^n (1 + r + r^2 / 2! + ...)
//
// The term in r^14 is below 1e-17.
template <class Real>
[[gnu::always_inline]] inline Real exponential(Real x) {
  using Word = typename Lanes<Real>::Word;
  constexpr double series[] = {1.0,
                               1.0,
                               1.0 / 2,
                               1.0 / 6,
                               1.0 / 24,
                               1.0 / 120,
                               1.0 / 720,
                               1.0 / 5040,
                               1.0 / 40320,
                               1.0 / 362880,
                               1.0 / 3628800,
                               1.0 / 39916800,
                               1.0 / 479001600,
                               1.0 / 6227020800};
  constexpr double log2e = 0x1.71547652b82fep+0;
  constexpr double rounding = 0x1.8p52;  // added, leaves the nearest whole number in the last bits

  const Real rounded = x * log2e + rounding;
  const Real n = rounded - rounding;
  const Real r = (x - n * kLn2High) - n * kLn2Low;
  const Real power = as<Real>((as<Word>(rounded) + 1023) << 52);  // 2^n
  return power * polynomial(r, series);
}

}  // namespace nivaro
