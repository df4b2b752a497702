// The vector type of the kernel: several reals, one in each lane, worked on at once. It is the
// compiler's own vector extension; what the extension leaves out is a member of Lanes.
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

}  // namespace nivaro
