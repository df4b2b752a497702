// The vector type of the kernel: several reals, one in each lane, worked on at once. It is the
// compiler's own vector extension; what the extension leaves out is a member of Lanes.
//
// Code over lanes is compiled once for each kind of processor. It consists of templates over the
// vector type, which no two kinds share, and calls no inline function of another header: the linker
// could otherwise keep a copy of it that older processors cannot run.
#pragma once

#include <cstddef>
#include <cstdint>

namespace nivaro {

// The portable form; the sources for one kind of processor specialise it for their width. A mask
// has all bits of a lane set, or none.
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
  Real result;
  for (int lane = 0; lane < kLanes<Real>; ++lane) result[lane] = value;
  return result;
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

// The end of a row may leave lanes over, which read as 0 and are not written: host arrays end there.
template <class Vector, class Element>
[[gnu::always_inline]] inline Vector load(const Element* from, int count) {
  constexpr int lanes = sizeof(Vector) / sizeof(Element);
  if (count >= lanes) return load<Vector>(from);
  Vector result{};
  for (int lane = 0; lane < lanes; ++lane)
    if (lane < count) result[lane] = from[lane];
  return result;
}

template <class Vector, class Element>
[[gnu::always_inline]] inline void store(Element* to, Vector value, int count) {
  constexpr int lanes = sizeof(Vector) / sizeof(Element);
  if (count >= lanes) return store(to, value);
  for (int lane = 0; lane < lanes; ++lane)
    if (lane < count) to[lane] = value[lane];
}

// Lanes whose flag has its lowest bit set, as logicals and bed codes are read.
template <class Real>
[[gnu::always_inline]] inline MaskOf<Real> isOdd(const std::int32_t* from, int count) {
  using Flags = typename Lanes<Real>::Flags;
  return -(__builtin_convertvector(load<Flags>(from, count), MaskOf<Real>) & 1);
}

template <class Real>
[[gnu::always_inline]] inline MaskOf<Real> isPositive(const std::int32_t* from, int count) {
  using Flags = typename Lanes<Real>::Flags;
  return __builtin_convertvector(load<Flags>(from, count), MaskOf<Real>) > 0;
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

}  // namespace nivaro
