// All of it is one logarithm and one exponential, each a table and a short series, whose arguments and
// results are sums of two doubles: 68 bits or more, of which rounding leaves 53.
#include "morphology/elementary.hpp"

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace nivaro {
namespace {

// The unevaluated sum of a number and its rest, which is at most half a unit of its last place.
struct Sum {
  double high = 0.0;
  double low = 0.0;
};

// a + b exactly, for |a| >= |b| or a = 0 (Dekker 1971).
constexpr Sum sumOfOrdered(double a, double b) {
  const double sum = a + b;
  return {sum, b - (sum - a)};
}

// a + b exactly (Knuth 1969).
constexpr Sum sumOf(double a, double b) {
  const double sum = a + b;
  const double part = sum - a;
  return {sum, (a - (sum - part)) + (b - part)};
}

// The upper 26 bits, so that products of halves are exact.
constexpr double upperHalf(double x) {
  const double scaled = 134217729.0 * x;
  return scaled - (scaled - x);
}

// a b exactly (Dekker 1971), without the fused operation that not every processor has.
constexpr Sum productOf(double a, double b) {
  const double product = a * b;
  const double aHigh = upperHalf(a), bHigh = upperHalf(b);
  const double aLow = a - aHigh, bLow = b - bHigh;
  return {product, ((aHigh * bHigh - product) + aHigh * bLow + aLow * bHigh) + aLow * bLow};
}

constexpr Sum operator+(Sum a, Sum b) {
  const Sum high = sumOf(a.high, b.high);
  return sumOfOrdered(high.high, high.low + (a.low + b.low));
}

constexpr Sum operator*(Sum a, Sum b) {
  const Sum high = productOf(a.high, b.high);
  return sumOfOrdered(high.high, high.low + (a.high * b.low + a.low * b.high));
}

constexpr Sum operator-(Sum a) {
  return {-a.high, -a.low};
}

// For the tables, when compiling: e^x by its series, and ln x as the y whose e^y is x.
constexpr Sum seriesOfExponential(Sum x) {
  Sum sum = {1.0, 0.0}, term = {1.0, 0.0};
  for (int k = 1; k < 30; ++k) {
    const double quotient = 1.0 / k;  // its rest, times k, is exact
    const Sum exact = productOf(quotient, k);
    term = term * x * Sum{quotient, ((1.0 - exact.high) - exact.low) / k};
    sum = sum + term;
  }
  return sum;
}

constexpr Sum solvedLogarithm(double x) {
  Sum y = {};
  for (int k = 0; k < 7; ++k) y = y + (seriesOfExponential(-y) * Sum{x, 0.0} + Sum{-1.0, 0.0});
  return y;
}

constexpr int kPieces = 64;  // of the range from 1 to 2

constexpr Sum kLn2 = solvedLogarithm(2.0);

// Of ln 2 a part with 32 bits, so that its products with exponents are exact.
constexpr double kLn2High = 0x1.62e42fefp-1;
constexpr Sum kLn2Low = kLn2 + Sum{-kLn2High, 0.0};

// Near 1 + j / 64: 1 / c rounded, and ln c of just that c.
struct Piece {
  double inverse = 0.0;
  Sum logarithm;
};

constexpr std::array<Piece, kPieces> logarithmTable() {
  std::array<Piece, kPieces> table{};
  for (int j = 0; j < kPieces; ++j) {
    const double inverse = 1.0 / (1.0 + static_cast<double>(j) / kPieces);
    table[static_cast<std::size_t>(j)] = {inverse, -solvedLogarithm(inverse)};
  }
  return table;
}

// 2^(j / 64)
constexpr std::array<Sum, kPieces> powerTable() {
  std::array<Sum, kPieces> table{};
  for (int j = 0; j < kPieces; ++j)
    table[static_cast<std::size_t>(j)] =
        seriesOfExponential(kLn2 * Sum{static_cast<double>(j) / kPieces, 0.0});
  return table;
}

constexpr std::array<Piece, kPieces> kLogarithms = logarithmTable();
constexpr std::array<Sum, kPieces> kPowers = powerTable();

constexpr double kInverseLn10High = 0x1.bcb7b1526e50ep-2;
constexpr double kInverseLn10Low = 0x1.95355baaafad3p-57;
constexpr Sum kThird = {0x1.5555555555555p-2, 0x1.5555555555555p-56};

bool isOrdinary(double x) {
  return x >= std::numeric_limits<double>::min() && x <= std::numeric_limits<double>::max();
}

// c0 + c1 x + c2 x^2 + ..., the odd terms beside the even ones so that neither waits for the other.
template <std::size_t count>
double polynomial(double x, const double (&coefficients)[count]) {
  static_assert(count % 2 == 0);
  const double square = x * x;
  double even = coefficients[count - 2], odd = coefficients[count - 1];
  for (std::size_t k = count - 2; k > 0; k -= 2) {
    even = coefficients[k - 2] + square * even;
    odd = coefficients[k - 1] + square * odd;
  }
  return even + x * odd;
}

// ln x for a normal positive x:
//
//   x = 2^k m with m from 1 - 1/256 to 2 - 1/128, m = c (1 + r) with |r| <= 1/128
//   ln x = k ln 2 + ln c + r - r^2 / 2 + r^3 / 3 - ...
//
// Near 1, k and ln c are 0 and r is exact, so that nothing cancels.
Sum logarithmOfOrdinary(double x) {
  constexpr double series[] = {-1.0 / 2, 1.0 / 3,  -1.0 / 4, 1.0 / 5,   -1.0 / 6,
                               1.0 / 7,  -1.0 / 8, 1.0 / 9,  -1.0 / 10, 1.0 / 11};
  constexpr std::uint64_t fraction = 0xfffffffffffff, one = 0x3ff0000000000000;
  const auto bits = std::bit_cast<std::uint64_t>(x);
  double k = static_cast<double>(static_cast<int>(bits >> 52) - 1023);
  double m = std::bit_cast<double>((bits & fraction) | one);
  auto j = static_cast<std::size_t>((m - 1.0) * kPieces + 0.5);
  if (j == kPieces) {
    k += 1.0;
    m *= 0.5;
    j = 0;
  }
  const Piece& piece = kLogarithms[j];
  const Sum product = productOf(m, piece.inverse);
  const Sum r = sumOf(product.high - 1.0, product.low);
  const double curved = r.high * r.high * polynomial(r.high, series);

  const Sum whole = sumOf(k * kLn2High, piece.logarithm.high);
  const Sum near = sumOf(whole.high, r.high);
  const double rest = whole.low + near.low + (k * kLn2Low.high + piece.logarithm.low);
  return sumOf(near.high, rest + (r.low + curved));
}

// e^x for |x| < 708:
//
//   x = (64 n + j) ln 2 / 64 + r with |r| <= ln 2 / 128
//   e^x = 2^n 2^(j / 64) (1 + r + r^2 / 2! + ...)
double exponentialOfOrdinary(Sum x) {
  constexpr double series[] = {1.0 / 2, 1.0 / 6, 1.0 / 24, 1.0 / 120, 1.0 / 720, 1.0 / 5040};
  constexpr double counting = 0x1.8p52;  // added, leaves the nearest whole number in the last bits
  const double count = (x.high * (kPieces / kLn2.high) + counting) - counting;
  const int number = static_cast<int>(count);
  const int j = number & (kPieces - 1);
  const Sum r =
      sumOf(x.high - count * (kLn2High / kPieces), x.low - count * (kLn2Low.high / kPieces));
  const double curved = r.high * r.high * polynomial(r.high, series);

  const Sum& root = kPowers[static_cast<std::size_t>(j)];
  const Sum linear = productOf(root.high, r.high);
  const Sum near = sumOfOrdered(root.high, linear.high);
  const double rest =
      near.low + (linear.low + root.low + (root.high * (r.low + curved) + root.low * r.high));
  const auto powerOfTwo =
      std::bit_cast<double>(static_cast<std::uint64_t>((number - j) / kPieces + 1023) << 52);
  return powerOfTwo * (near.high + rest);
}

constexpr double kLargestExponent = 708.0;  // results and their powers of two stay normal

}  // namespace

double logarithm(double x) {
  if (!isOrdinary(x)) return std::log(x);
  return logarithmOfOrdinary(x).high;
}

double decimalLogarithm(double x) {
  if (!isOrdinary(x)) return std::log10(x);
  return (logarithmOfOrdinary(x) * Sum{kInverseLn10High, kInverseLn10Low}).high;
}

double exponential(double x) {
  if (!(x > -kLargestExponent && x < kLargestExponent)) return std::exp(x);
  return exponentialOfOrdinary({x, 0.0});
}

double power(double x, double exponent) {
  if (!isOrdinary(x)) return std::pow(x, exponent);
  const Sum product = logarithmOfOrdinary(x) * Sum{exponent, 0.0};
  if (!(product.high > -kLargestExponent && product.high < kLargestExponent))
    return std::pow(x, exponent);
  return exponentialOfOrdinary(product);
}

double cubeRoot(double x) {
  if (x < 0.0) return -cubeRoot(-x);
  if (!isOrdinary(x)) return std::cbrt(x);
  return exponentialOfOrdinary(logarithmOfOrdinary(x) * kThird);
}

}  // namespace nivaro
