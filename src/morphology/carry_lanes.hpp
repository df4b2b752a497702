// Suspended sand carried cell to cell along the lines of a strip, a line in each lane. The case tables
// are those of docs/numerics.md: t is what is carried, u the transport through the side that the sweep
// comes from, w that through the side that it goes to. A number that is none meets no case.
#pragma once

#include "morphology/deposition.hpp"
#include "morphology/lanes_math.hpp"
#include "morphology/step_data.hpp"
#include "morphology/strip.hpp"

namespace nivaro {

template <class Real>
struct SettlingLanes {
  Real concentration;
  Real adaptation;
  Real deposited;
};

// deposition.hpp has the equations. One division serves c and alpha, and with r = (qe / qi)^0.2
//
//   1 - r = (1 - qe / qi) / (1 + r + r^2 + r^3 + r^4)
//
// keeps the digits that the difference loses. Rounding it as the plain difference is rounded (r has its
// last place, and 1 - r no better one) gives the plain method's number where r is almost 1. What a
// division or the root could take out of its range is left to the plain function.
template <class Real>
[[gnu::always_inline]] inline Real shareAboveRoot(Real ratio) {
  const MaskOf<Real> carries = ratio > 1e-300;
  const Real r = carries ? fifthRoot(carries ? ratio : all<Real>(1.0)) : Real{};
  const Real share = (1.0 - ratio) / (1.0 + r * (1.0 + r * (1.0 + r * (1.0 + r))));
  return 1.0 - (1.0 - share);
}

template <class Real>
[[gnu::always_inline]] inline SettlingLanes<Real> settlingLanes(const StepData& step,
                                                                MaskOf<Real> lanes, Real inflow,
                                                                Real equilibrium, Real discharge) {
  const Real excess = inflow - equilibrium;
  const Real mean = atLeast(discharge, all<Real>(kSmallestDischarge));
  const Real perBoth = inflow / (mean * excess);

  SettlingLanes<Real> result;
  result.concentration = perBoth * excess;
  result.adaptation = shareAboveRoot(equilibrium / inflow) * (step.settlingVelocity * perBoth);
  const Real wanted = -result.adaptation * step.cellSize;
  const Real exponent = atMost(atLeast(wanted, all<Real>(-10.0)), all<Real>(10.0));
  result.deposited = (1.0 - exponential(exponent)) * excess;

  const MaskOf<Real> ordinary = (inflow > 1e-60) & (inflow < 1e60) & (discharge < 1e60);
  const MaskOf<Real> plain = step.terms.ordinary ? lanes & ~ordinary : lanes;
  if (!anyOf<Real>(plain)) return result;
  for (int lane = 0; lane < kLanes<Real>; ++lane) {
    if (plain[lane] == 0) continue;
    const PlainSettling s = plainSettling(step, inflow[lane], equilibrium[lane], discharge[lane]);
    result.concentration[lane] = s.concentration;
    result.adaptation[lane] = s.adaptation;
    result.deposited[lane] = s.deposited;
  }
  return result;
}

template <class Real>
[[gnu::always_inline]] inline MaskOf<Real> hasBit(MaskOf<Real> flags, std::int64_t bit) {
  return (flags & bit) != 0;
}

// Both sweeps over lines that lie in arrays [position][line]. What they leave in a cell goes to the
// exchange, in which the first position of a call is number 0.
template <class Real>
struct Carry {
  using Mask = MaskOf<Real>;
  static constexpr std::ptrdiff_t kVectors = kFirstStripLines / kLanes<Real>;

  const StepData& step;
  const SideArrays& sides;
  const std::int64_t* flags;
  unsigned char* descends;
  std::ptrdiff_t stride;  // lines in the arrays

  struct Carried {
    Real lines[kVectors] = {};
  };

  static void settle(const Exchange& out, std::ptrdiff_t e, const SettlingLanes<Real>& s) {
    store(out.concentration + e, s.concentration);
    store(out.adaptation + e, s.adaptation);
  }

  static void leaveAlone(const Exchange& out, std::ptrdiff_t e) {
    store(out.net + e, Real{});
    store(out.outcome + e, Mask{});
  }

  // In cell k with its sides k and k + stride; the carried transport afterwards.
  [[gnu::always_inline]] Real forward(std::ptrdiff_t k, Real carried, const Exchange& out,
                                      std::ptrdiff_t e) const {
    const Real none{};
    const Mask cell = load<Mask>(flags + k);
    const Mask active = hasBit<Real>(cell, kActiveCell);
    if (!anyOf<Real>(active)) {
      leaveAlone(out, e);
      descends[k / kLanes<Real>] = 0;
      return carried;
    }
    const Real lower = load<Real>(sides.suspendedAbove + k);
    const Real u = carried != 0.0 ? carried : lower;
    const Real w = load<Real>(sides.centredSuspendedBelow + k + stride);

    const Mask erosion = active & (((u < 0.0) & (w > 0.0)) | ((u >= 0.0) & (w >= 0.0) & (u <= w)));
    const Mask taken = erosion & ~hasBit<Real>(cell, kAtBedLimit);
    const Mask converging = active & (u >= 0.0) & (w < 0.0);
    const Mask settling = active & (u >= 0.0) & (w >= 0.0) & (w < u);

    Real net = (taken | converging) ? u - w : none;
    Real left = taken ? w : carried;
    left = converging ? none : left;
    if (anyOf<Real>(settling)) {
      const Real discharge = 0.5 * (load<Real>(sides.discharge + k) +
                                    load<Real>(sides.centredDischargeBelow + k + stride));
      const SettlingLanes<Real> s = settlingLanes(step, settling, u, w, discharge);
      settle(out, e, s);
      net = settling ? s.deposited : net;
      left = settling ? u - s.deposited : left;
    }
    store(out.net + e, net);
    store(out.outcome + e, (erosion & kErosion) | (settling & kSettled));
    // The reverse sweep takes sand only through sides where it goes down.
    const Mask down = load<Real>(sides.centredSuspendedAbove + k) <= 0.0;
    descends[k / kLanes<Real>] =
        anyOf<Real>(active & (down | ~hasBit<Real>(cell, kPlainVoids))) ? 1 : 0;
    return left;
  }

  [[gnu::always_inline]] Real reverse(std::ptrdiff_t k, Real carried, const Exchange& out,
                                      std::ptrdiff_t e, Mask& touched) const {
    const Real none{};
    const Mask cell = load<Mask>(flags + k);
    const Mask active = hasBit<Real>(cell, kActiveCell);
    const Real upper = load<Real>(sides.suspendedBelow + k + stride);
    const Real u = carried != 0.0 ? carried : upper;
    const Real w = load<Real>(sides.centredSuspendedAbove + k);

    const Mask downward = active & (w <= 0.0) & (u <= 0.0);
    const Mask erosion = downward & (w <= u);
    const Mask taken = erosion & ~hasBit<Real>(cell, kAtBedLimit);
    const Mask settling = downward & (w > u);

    Real net = taken ? w - u : none;
    Real left = taken ? w : carried;
    if (anyOf<Real>(settling)) {
      const Real discharge = 0.5 * (-load<Real>(sides.discharge + k + stride) -
                                    load<Real>(sides.centredDischargeAbove + k));
      const SettlingLanes<Real> s = settlingLanes(step, settling, -u, -w, discharge);
      settle(out, e, s);
      net = settling ? s.deposited : net;
      left = settling ? u + s.deposited : left;
    }
    store(out.net + e, net);
    store(out.outcome + e, (erosion & kErosion) | (settling & kSettled));
    touched |= taken | settling | (active & ~hasBit<Real>(cell, kPlainVoids));
    return left;
  }

  // Whole strips along the first index. Whether the reverse sweep has anything to do there.
  bool carryForward(std::ptrdiff_t first, std::ptrdiff_t last, Carried& carried,
                    const Exchange& out) const {
    std::ptrdiff_t k = first * stride;
    unsigned char some = 0;
    for (std::ptrdiff_t position = first, e = 0; position < last; ++position)
      for (Real& t : carried.lines) {
        t = forward(k, t, out, e);
        some |= descends[k / kLanes<Real>];
        k += kLanes<Real>;
        e += kLanes<Real>;
      }
    return some != 0;
  }

  // Whether the bed of any cell changes.
  bool carryReverse(std::ptrdiff_t first, std::ptrdiff_t last, Carried& carried,
                    const Exchange& out) const {
    Mask touched{};
    for (std::ptrdiff_t position = last; position-- > first;) {
      std::ptrdiff_t k = position * stride;
      std::ptrdiff_t e = (position - first) * stride;
      for (Real& t : carried.lines) {
        if (descends[k / kLanes<Real>] != 0) {
          t = reverse(k, t, out, e, touched);
        } else {
          leaveAlone(out, e);
        }
        k += kLanes<Real>;
        e += kLanes<Real>;
      }
    }
    return anyOf<Real>(touched);
  }
};

}  // namespace nivaro
