// Suspended sand carried cell to cell along the lines of a strip, a line in each lane. The case tables
// are those of docs/numerics.md: t is what is carried, u the transport through the side that the sweep
// comes from, w that through the side that it goes to. A number that is none meets no case.
#pragma once

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

// (qe / qi)^0.2 as an exponential; deposition.hpp has the equations. Transports too small or too
// large for the logarithm are left to the plain function.
template <class Real>
[[gnu::always_inline]] inline SettlingLanes<Real> settlingLanes(const StepData& step,
                                                                MaskOf<Real> lanes, Real inflow,
                                                                Real equilibrium, Real discharge) {
  const Real ratio = equilibrium / inflow;
  const MaskOf<Real> carries = ratio > 1e-300;
  const Real root = exponential(0.2 * logarithm(carries ? ratio : all<Real>(1.0)));
  const Real excess = inflow - equilibrium;
  const Real mean = discharge > 0.000001 ? discharge : all<Real>(0.000001);

  SettlingLanes<Real> result;
  result.concentration = inflow / mean;
  result.adaptation = (1.0 - (carries ? root : Real{})) *
                      (result.concentration * step.parameters.concentrationFactor) *
                      step.parameters.fallVelocity / excess;
  const Real wanted = -result.adaptation * step.cellSize;
  const Real exponent = atMost(atLeast(wanted, all<Real>(-10.0)), all<Real>(10.0));
  result.deposited = (1.0 - exponential(exponent)) * excess;

  const MaskOf<Real> ordinary = (inflow > 1e-200) & (inflow < 1e200) & (discharge < 1e200);
  const MaskOf<Real> plain = lanes & ~ordinary;
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

template <class Real, std::ptrdiff_t kStripLines>
struct Carry {
  using Mask = MaskOf<Real>;

  const StepData& step;
  const StripArrays& strip;

  static Mask hasBit(Mask flags, std::int64_t bit) { return (flags & bit) != 0; }

  [[gnu::always_inline]] void settle(std::ptrdiff_t k, Mask lanes,
                                     const SettlingLanes<Real>& s) const {
    const auto keep = [k, lanes](double* field, Real value) {
      store(field + k, lanes ? value : load<Real>(field + k));
    };
    keep(strip.concentration, s.concentration);
    keep(strip.adaptation, s.adaptation);
  }

  // In cell k with its sides k and k + kStripLines; the carried transport afterwards.
  [[gnu::always_inline]] Real forward(std::ptrdiff_t k, Real carried) const {
    const Real none{};
    const Mask flags = load<Mask>(strip.flags + k);
    const Mask active = hasBit(flags, kActiveCell);
    const Real lower = load<Real>(strip.sides.suspendedAbove + k);
    const Real u = carried != 0.0 ? carried : lower;
    const Real w = load<Real>(strip.sides.centredSuspendedBelow + k + kStripLines);

    const Mask erosion = active & (((u < 0.0) & (w > 0.0)) | ((u >= 0.0) & (w >= 0.0) & (u <= w)));
    const Mask taken = erosion & ~hasBit(flags, kAtBedLimit);
    const Mask converging = active & (u >= 0.0) & (w < 0.0);
    const Mask settling = active & (u >= 0.0) & (w >= 0.0) & (w < u);

    Real net = (taken | converging) ? u - w : none;
    Real left = taken ? w : carried;
    left = converging ? none : left;
    if (anyOf<Real>(settling)) {
      const Real discharge =
          0.5 * (load<Real>(strip.sides.discharge + k) +
                 load<Real>(strip.sides.centredDischargeBelow + k + kStripLines));
      const SettlingLanes<Real> s = settlingLanes(step, settling, u, w, discharge);
      settle(k, settling, s);
      net = settling ? s.deposited : net;
      left = settling ? u - s.deposited : left;
    }
    store(strip.forward + k, net);
    store(strip.outcome + k, (erosion & kForwardErosion) | (settling & kSettled));
    return left;
  }

  [[gnu::always_inline]] Real reverse(std::ptrdiff_t k, Real carried) const {
    const Real none{};
    const Mask flags = load<Mask>(strip.flags + k);
    const Mask active = hasBit(flags, kActiveCell);
    const Real upper = load<Real>(strip.sides.suspendedBelow + k + kStripLines);
    const Real u = carried != 0.0 ? carried : upper;
    const Real w = load<Real>(strip.sides.centredSuspendedAbove + k);

    const Mask downward = active & (w <= 0.0) & (u <= 0.0);
    const Mask erosion = downward & (w <= u);
    const Mask taken = erosion & ~hasBit(flags, kAtBedLimit);
    const Mask settling = downward & (w > u);

    Real net = taken ? w - u : none;
    Real left = taken ? w : carried;
    if (anyOf<Real>(settling)) {
      const Real discharge = 0.5 * (-load<Real>(strip.sides.discharge + k + kStripLines) -
                                    load<Real>(strip.sides.centredDischargeAbove + k));
      const SettlingLanes<Real> s = settlingLanes(step, settling, -u, -w, discharge);
      settle(k, settling, s);
      net = settling ? s.deposited : net;
      left = settling ? u + s.deposited : left;
    }
    store(strip.reverse + k, net);
    store(strip.outcome + k,
          load<Mask>(strip.outcome + k) | (erosion & kReverseErosion) | (settling & kSettled));
    return left;
  }

  // Rows of the strip without an active cell leave everything as it is.
  bool hasActive(std::ptrdiff_t position) const { return strip.rowActive[position] != 0; }

  void carryForward(std::ptrdiff_t positions) const {
    Real carried[kStripLines / kLanes<Real>] = {};
    for (std::ptrdiff_t position = 0; position < positions; ++position) {
      if (!hasActive(position)) continue;
      std::ptrdiff_t k = position * kStripLines;
      for (Real& t : carried) {
        t = forward(k, t);
        k += kLanes<Real>;
      }
    }
  }

  void carryReverse(std::ptrdiff_t positions) const {
    Real carried[kStripLines / kLanes<Real>] = {};
    for (std::ptrdiff_t position = positions; position-- > 0;) {
      if (!hasActive(position)) continue;
      std::ptrdiff_t k = position * kStripLines;
      for (Real& t : carried) {
        t = reverse(k, t);
        k += kLanes<Real>;
      }
    }
  }
};

}  // namespace nivaro
