// Natural logarithm, exponential and fifth root in every lane. All are within 4.5e-16 of the exact
// values, relative, over the ranges named here; the tests measure it.
#pragma once

#include "morphology/lanes.hpp"

namespace nivaro {

// x, x^2, x^4 and x^8.
template <class Real>
struct Powers {
  Real of[4];
};

// c[first] + c[first + 1] x + ... of so many terms, cut in two at a power of two, so that the additions
// do not wait for each other.
template <int first, int terms, class Real, int count>
[[gnu::always_inline]] inline Real sumOfPowers(const Powers<Real>& x, const double (&c)[count]) {
  if constexpr (terms == 1) {
    return all<Real>(c[first]);
  } else {
    constexpr int step = terms > 8 ? 3 : terms > 4 ? 2 : terms > 2 ? 1 : 0;
    constexpr int lower = 1 << step;
    return Lanes<Real>::fused(sumOfPowers<first + lower, terms - lower>(x, c), x.of[step],
                              sumOfPowers<first, lower>(x, c));
  }
}

// c[0] + c[1] x + c[2] x^2 + ...
template <int count, class Real>
[[gnu::always_inline]] inline Real polynomial(Real x, const double (&coefficients)[count]) {
  static_assert(count <= 16);
  const Real square = x * x;
  const Real fourth = square * square;
  return sumOfPowers<0, count>(Powers<Real>{{x, square, fourth, fourth * fourth}}, coefficients);
}

// ln 2 as the sum of a part with 33 bits, so that its product with an exponent is exact, and the
// rest.
constexpr double kLn2High = 0x1.62e42fef00000p-1;
constexpr double kLn2Low = 0x1.473de6af278edp-34;

// A normal positive number as 2^k m with m from sqrt(1/2) to sqrt(2).
template <class Real>
struct Parts {
  Real exponent;
  Real mantissa;
};

template <class Real>
[[gnu::always_inline]] inline Parts<Real> parts(Real x) {
  using Word = typename Lanes<Real>::Word;
  constexpr std::uint64_t one = 0x3ff0000000000000;         // 1
  constexpr std::uint64_t rootOfHalf = 0x3fe6a09e667f3bcd;  // sqrt(1/2)
  constexpr std::uint64_t counting = 0x4330000000000000;    // 2^52, whose last bit counts ones

  const Word bits = as<Word>(x);
  const Word exponent = (bits + (one - rootOfHalf)) >> 52;  // k + 1023
  return {as<Real>(exponent | counting) - (0x1p52 + 1023.0),
          as<Real>(bits - ((exponent - 1023) << 52))};
}

// The nearest whole number, and the power of two with it as exponent.
template <class Real>
struct Rounded {
  Real number;
  Real power;
};

template <class Real>
[[gnu::always_inline]] inline Rounded<Real> rounded(Real x) {
  using Word = typename Lanes<Real>::Word;
  constexpr double counting = 0x1.8p52;  // added, leaves the number in the last bits
  const Real sum = x + counting;
  return {sum - counting, as<Real>((as<Word>(sum) + 1023) << 52)};
}

// ln x for a normal positive x:
//
//   x = 2^k m
//   ln m = 2 artanh s = 2 (s + s^3 / 3 + s^5 / 5 + ...), s = (m - 1) / (m + 1), s^2 < 0.0295
//
// The eleventh term of the sum is below 1e-17 of the first.
template <class Real>
[[gnu::always_inline]] inline Real logarithm(Real value) {
  constexpr double series[] = {2.0 / 3,  2.0 / 5,  2.0 / 7,  2.0 / 9,  2.0 / 11,
                               2.0 / 13, 2.0 / 15, 2.0 / 17, 2.0 / 19, 2.0 / 21};
  const Parts<Real> x = parts(value);
  const Real s = (x.mantissa - 1.0) / (x.mantissa + 1.0);
  const Real square = s * s;
  const Real rest = s * square * polynomial(square, series);
  return x.exponent * kLn2High + (2.0 * s + (rest + x.exponent * kLn2Low));
}

// e^x for x from -700 to 700, and not a number for what is none:
//
//   x = n ln 2 + r with |r| <= ln 2 / 2,  e^x = 2^n (1 + r + r^2 / 2! + ...)
//
// The term in r^14 is below 1e-17.
template <class Real>
[[gnu::always_inline]] inline Real exponential(Real x) {
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

  const Rounded<Real> n = rounded(x * log2e);
  const Real r = (x - n.number * kLn2High) - n.number * kLn2Low;
  return n.power * polynomial(r, series);
}

// x^(1/5) for a normal positive x. A first y near x^(-1/5), from short polynomials for the logarithm
// and the power of two, has h = 1 - x y^5 below 2e-4, and then
//
//   x^(1/5) = r (1 - h)^(-4/5) = r + r (4/5 h + 18/25 h^2 + 84/125 h^3 + ...),  r = x y^4, h = 1 - r y
//
// whose next term is below 1e-15 h. The rounding of r counts a fifth, since h makes up for the rest.
template <class Real>
[[gnu::always_inline]] inline Real fifthRoot(Real x) {
  // Fits of -log2(1 + x) / 5 and of 2^x.
  constexpr double logarithms[] = {-0.000013, -0.288367, 0.145437, -0.103127, 0.062753};
  constexpr double powers[] = {1.0, 0.693121, 0.2402235, 0.055922, 0.0096664};
  constexpr double series[] = {4.0 / 5, 18.0 / 25, 84.0 / 125};

  const Parts<Real> p = parts(x);
  const Real log = polynomial(p.mantissa - 1.0, logarithms) - 0.2 * p.exponent;
  const Rounded<Real> n = rounded(log);
  const Real y = n.power * polynomial(log - n.number, powers);
  const Real square = y * y;
  const Real r = x * square * square;
  const Real h = Lanes<Real>::fused(-r, y, all<Real>(1.0));
  return Lanes<Real>::fused(r, h * polynomial(h, series), r);
}

}  // namespace nivaro
