// The vector type of the engine: several reals, one in each lane, worked on at once; and their logarithm,
// exponential and fifth root. It is the compiler's own vector extension; what the extension leaves out is
// a member of Lanes.
//
// Code over lanes is compiled once for each kind of processor. It consists of templates over the
// vector type, which no two kinds share, and calls no inline function of another header: the linker
// could otherwise keep a copy of it that older processors cannot run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

namespace nivaro {

// The portable form; the sources for one kind of processor specialise it for their width. A mask
// has all bits of a lane set, or none. Part of a vector is the first `count` lanes: the rest reads as 0
// and is not written, since host arrays may end there.
template <class Real>
struct Lanes;

using Real2 __attribute__((vector_size(16))) = double;

template <>
struct Lanes<Real2> {
  using Mask __attribute__((vector_size(16))) = std::int64_t;
  using Word __attribute__((vector_size(16))) = std::uint64_t;
  using Flags __attribute__((vector_size(8))) = std::int32_t;

  [[gnu::always_inline]] static Real2 squareRoot(Real2 x) {
    return Real2{__builtin_sqrt(x[0]), __builtin_sqrt(x[1])};
  }
  [[gnu::always_inline]] static Real2 fused(Real2 a, Real2 b, Real2 c) { return a * b + c; }
  [[gnu::always_inline]] static bool any(Mask mask) { return (mask[0] | mask[1]) != 0; }
  [[gnu::always_inline]] static Real2 loadPart(const double* from, int) {
    return Real2{from[0], 0.0};
  }
  [[gnu::always_inline]] static Flags loadPart(const std::int32_t* from, int) {
    return Flags{from[0], 0};
  }
  [[gnu::always_inline]] static void storePart(double* to, Real2 value, int) { to[0] = value[0]; }
};

template <class Real>
using MaskOf = typename Lanes<Real>::Mask;

template <class Real>
constexpr int kLanes = sizeof(Real) / sizeof(double);

// The same bits read as another type.
template <class To, class From>
[[gnu::always_inline]] inline To as(From value) {
  static_assert(sizeof(To) == sizeof(From));
  To result;
  __builtin_memcpy(&result, &value, sizeof result);
  return result;
}

template <class Real>
[[gnu::always_inline]] inline Real all(double value) {
  return value - Real{};  // to the bit: even -0 keeps its sign
}

template <class Vector, class Element>
[[gnu::always_inline]] inline Vector load(const Element* from) {
  Vector result;
  __builtin_memcpy(&result, from, sizeof result);
  return result;
}

template <class Vector, class Element>
[[gnu::always_inline]] inline void store(Element* to, Vector value) {
  __builtin_memcpy(to, &value, sizeof value);
}

// The end of a row may leave lanes over.
template <class Real>
[[gnu::always_inline]] inline Real load(const double* from, int count) {
  return count >= kLanes<Real> ? load<Real>(from) : Lanes<Real>::loadPart(from, count);
}

template <class Real>
[[gnu::always_inline]] inline void store(double* to, Real value, int count) {
  if (count >= kLanes<Real>)
    store(to, value);
  else
    Lanes<Real>::storePart(to, value, count);
}

template <class Real>
[[gnu::always_inline]] inline MaskOf<Real> loadFlags(const std::int32_t* from, int count) {
  using Flags = typename Lanes<Real>::Flags;
  const Flags flags =
      count >= kLanes<Real> ? load<Flags>(from) : Lanes<Real>::loadPart(from, count);
  return __builtin_convertvector(flags, MaskOf<Real>);
}

// Lanes whose flag has its lowest bit set, as logicals and bed codes are read.
template <class Real>
[[gnu::always_inline]] inline MaskOf<Real> isOdd(const std::int32_t* from, int count) {
  return -(loadFlags<Real>(from, count) & 1);
}

template <class Real>
[[gnu::always_inline]] inline Real atMost(Real value, Real limit) {
  return value > limit ? limit : value;
}

template <class Real>
[[gnu::always_inline]] inline Real atLeast(Real value, Real limit) {
  return value < limit ? limit : value;
}

template <class Real>
[[gnu::always_inline]] inline Real squareRoot(Real x) {
  return Lanes<Real>::squareRoot(x);
}

template <class Real>
[[gnu::always_inline]] inline bool anyOf(MaskOf<Real> mask) {
  return Lanes<Real>::any(mask);
}

// Lane by lane whether the bits are not all 0.
template <class Real>
[[gnu::always_inline]] inline MaskOf<Real> hasBits(Real value) {
  return as<typename Lanes<Real>::Word>(value) != 0;
}

// Of two counts; a template like the rest, so that no two kinds share it.
template <class Real>
int smaller(std::ptrdiff_t a, std::ptrdiff_t b) {
  return static_cast<int>(a < b ? a : b);
}

// Fields that are cleared mostly are clear, and reading costs half of writing.
template <class Real>
void clearCells(double* field, std::ptrdiff_t count) {
  using Word = typename Lanes<Real>::Word;
  constexpr std::ptrdiff_t lanes = kLanes<Real>;
  std::ptrdiff_t k = 0;
  for (; k + 4 * lanes <= count; k += 4 * lanes) {
    const Word bits = (load<Word>(field + k) | load<Word>(field + k + lanes)) |
                      (load<Word>(field + k + 2 * lanes) | load<Word>(field + k + 3 * lanes));
    if (!anyOf<Real>(as<MaskOf<Real>>(bits))) continue;
    for (std::ptrdiff_t part = 0; part < 4; ++part) store(field + k + part * lanes, Real{});
  }
  for (; k < count; k += lanes) store(field + k, Real{}, smaller<Real>(count - k, lanes));
}

// Rows become columns: pairs of rows half the width apart exchange halves, then quarters, and so on.
template <int width, class Real, int... lane>
[[gnu::always_inline]] inline void exchangeParts(Real& a, Real& b,
                                                 std::integer_sequence<int, lane...>) {
  constexpr int count = kLanes<Real>;
  const Real upper =
      __builtin_shufflevector(a, b, ((lane & width) == 0 ? lane : count + lane - width)...);
  b = __builtin_shufflevector(a, b, ((lane & width) == 0 ? lane + width : count + lane)...);
  a = upper;
}

template <int width, int row, class Real>
[[gnu::always_inline]] inline void exchangeWithPair(Real* block) {
  if constexpr ((row & width) == 0)
    exchangeParts<width>(block[row], block[row + width],
                         std::make_integer_sequence<int, kLanes<Real>>{});
}

template <int width, class Real, int... row>
[[gnu::always_inline]] inline void transposeBlock(Real* block,
                                                  std::integer_sequence<int, row...> rows) {
  (exchangeWithPair<width, row>(block), ...);
  if constexpr (width > 1) transposeBlock<width / 2>(block, rows);
}

template <class Real>
[[gnu::always_inline]] inline void transpose(Real (&block)[kLanes<Real>]) {
  transposeBlock<kLanes<Real> / 2>(block + 0, std::make_integer_sequence<int, kLanes<Real>>{});
}

// Natural logarithm, exponential and fifth root in every lane. All are within 4.5e-16 of the exact values,
// relative, over the ranges named here; the tests measure it.

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

// The whole number nearest to x * scale, and the power of two with it as exponent.
template <class Real>
struct Rounded {
  Real number;
  Real power;
};

template <class Real>
[[gnu::always_inline]] inline Rounded<Real> rounded(Real x, double scale) {
  using Word = typename Lanes<Real>::Word;
  constexpr double counting = 0x1.8p52;  // added, leaves the number in the last bits
  const Real sum = Lanes<Real>::fused(x, all<Real>(scale), all<Real>(counting));
  return {sum - counting, as<Real>((as<Word>(sum) + 1023) << 52)};
}

// ln x for a normal positive x:
//
//   x = 2^k m
//   ln m = 2 artanh s = 2 (s + s^3 / 3 + s^5 / 5 + ...), s = (m - 1) / (m + 1), s^2 < 0.0295
//
// The terms from s^3 on are a fit of theirs, which takes seven where the series takes ten; its error
// is below 1e-17.
template <class Real>
[[gnu::always_inline]] inline Real logarithm(Real value) {
  constexpr double fit[] = {0.666666666666667,  0.39999999999899505, 0.28571428625975487,
                            0.2222221113479508, 0.18182889125261723, 0.15331721600556042,
                            0.14616449685043406};
  const Parts<Real> x = parts(value);
  const Real s = (x.mantissa - 1.0) / (x.mantissa + 1.0);
  const Real square = s * s;
  const Real rest = s * square * polynomial(square, fit);
  const Real low = Lanes<Real>::fused(x.exponent, all<Real>(kLn2Low), rest);
  return Lanes<Real>::fused(x.exponent, all<Real>(kLn2High), (s + s) + low);
}

// e^x for x from -700 to 700, and not a number for what is none:
//
//   x = n ln 2 + r with |r| <= ln 2 / 2,  e^x = 2^n (1 + r + r^2 / 2! + ...)
//
// The terms from r^2 on are a fit of theirs, with an error below 2e-17.
template <class Real>
[[gnu::always_inline]] inline Real exponential(Real x) {
  constexpr double fit[] = {1.0,
                            1.0,
                            0.5000000000000001,
                            0.16666666666666669,
                            0.04166666666662413,
                            0.008333333333330062,
                            0.0013888888917213717,
                            0.00019841269863053618,
                            2.4801521295954376e-05,
                            2.7557268459997064e-06,
                            2.7620088445409746e-07,
                            2.510038549551032e-08};
  constexpr double log2e = 0x1.71547652b82fep+0;

  const Rounded<Real> n = rounded(x, log2e);
  const Real high = Lanes<Real>::fused(n.number, all<Real>(-kLn2High), x);
  const Real r = Lanes<Real>::fused(n.number, all<Real>(-kLn2Low), high);
  return n.power * polynomial(r, fit);
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
  const Real log =
      Lanes<Real>::fused(p.exponent, all<Real>(-0.2), polynomial(p.mantissa - 1.0, logarithms));
  const Rounded<Real> n = rounded(log, 1.0);
  const Real y = n.power * polynomial(log - n.number, powers);
  const Real square = y * y;
  const Real r = x * square * square;
  const Real h = Lanes<Real>::fused(-r, y, all<Real>(1.0));
  return Lanes<Real>::fused(r, h * polynomial(h, series), r);
}

}  // namespace nivaro
