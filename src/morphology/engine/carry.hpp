// Suspended sand carried cell to cell along the lines of a strip, a line in each lane. The case tables
// are those of docs/numerics.md: t is what is carried, u the transport through the side that the sweep
// comes from, w that through the side that it goes to. A number that is none meets no case. And the change
// of the bed, with concentration and adaptation, that the sweeps leave in the cells they pass.
#pragma once

#include "morphology/deposition.hpp"
#include "morphology/engine/fallback.hpp"
#include "morphology/engine/step_data.hpp"
#include "morphology/engine/strip.hpp"
#include "morphology/engine/vector.hpp"

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

// Voids that leave a bed as it is where no sand comes or goes: all but those that fill it.
template <class Real>
[[gnu::always_inline]] inline MaskOf<Real> isPlainVoids(const StepData& step, std::ptrdiff_t cell,
                                                        int count) {
  using Mask = MaskOf<Real>;
  if (step.uniformVoids) return ~Mask{};
  const Mask finite = step.levelFactor - step.levelFactor == 0.0 ? ~Mask{} : Mask{};
  const Real inSitu = load<Real>(step.inSituVoids.at(cell), count);
  const Real fresh = load<Real>(step.depositionVoids.at(cell), count);
  return finite & ((inSitu < 1.0) | (inSitu > 1.0)) & ((fresh < 1.0) | (fresh > 1.0));
}

template <class Real>
void putFlags(const StepData& step, std::ptrdiff_t cell, int count, const std::int64_t* active,
              std::int64_t* flags) {
  using Mask = MaskOf<Real>;
  for (int k = 0; k < count; k += kLanes<Real>) {
    const std::ptrdiff_t c = cell + k;
    const int left = count - k;
    const Mask limited =
        -load<Real>(step.bedDepth + c, left) <= load<Real>(step.bedLimit.at(c), left);
    const Mask plain = isPlainVoids<Real>(step, c, left);
    store(flags + k,
          load<Mask>(active + k) & ((limited & kAtBedLimit) | (plain & kPlainVoids) | kActiveCell));
  }
}

// The level changes of a row of cells by one sweep.
template <class Real>
struct RowChange {
  using Mask = MaskOf<Real>;

  const StepData& step;
  std::ptrdiff_t cell;
  int count;
  const std::int64_t* flags;
  Exchange exchange;

  [[gnu::always_inline]] Mask activeAt(int k) const {
    return hasBit<Real>(load<Mask>(flags + k), kActiveCell);
  }

  [[gnu::always_inline]] Real levelOf(Real net, int k) const {
    const Mask erosion = hasBit<Real>(load<Mask>(exchange.outcome + k), kErosion);
    if (step.uniformVoids)
      return net * (erosion ? all<Real>(step.erosionLevel) : all<Real>(step.depositionLevel));
    const Real voids = erosion ? load<Real>(step.inSituVoids.at(cell + k), count - k)
                               : load<Real>(step.depositionVoids.at(cell + k), count - k);
    return net * step.levelFactor / (1.0 - voids);
  }

  [[gnu::always_inline]] void keepSettling(int k, Mask active) const {
    const Mask settled = active & hasBit<Real>(load<Mask>(exchange.outcome + k), kSettled);
    if (!anyOf<Real>(settled)) return;
    const auto keep = [&](double* field, const double* value) {
      double* const at = field + cell + k;
      store(at, settled ? load<Real>(value + k) : load<Real>(at, count - k), count - k);
    };
    keep(step.concentration, exchange.concentration);
    keep(step.adaptation, exchange.adaptation);
  }

  // Bed load counts once, in the forward sweep and with its voids. `in` and `out` are those through
  // the lower and the upper sides.
  [[gnu::always_inline]] Real forwardNet(const double* in, const double* out, int k) const {
    return load<Real>(in + k) - load<Real>(out + k) + load<Real>(exchange.net + k);
  }

  // The first sweep of a step over these cells, which finds them as the last step left them.
  void setForward(const double* in, const double* out) const {
    for (int k = 0; k < count; k += kLanes<Real>) {
      const Real none{};
      const Mask active = activeAt(k);
      const Mask settled = active & hasBit<Real>(load<Mask>(exchange.outcome + k), kSettled);
      const Real level = none + levelOf(forwardNet(in, out, k), k);
      const auto set = [this, k](double* field, Real value) {
        store(field + cell + k, value, count - k);
      };
      set(step.change, active ? level : none);
      set(step.concentration, settled ? load<Real>(exchange.concentration + k) : none);
      set(step.adaptation, settled ? load<Real>(exchange.adaptation + k) : none);
    }
  }

  void addForward(const double* in, const double* out) const {
    for (int k = 0; k < count; k += kLanes<Real>) {
      const Mask active = activeAt(k);
      if (!anyOf<Real>(active)) continue;
      double* const change = step.change + cell + k;
      const Real before = load<Real>(change, count - k);
      const Real net = forwardNet(in, out, k);
      store(change, active ? before + levelOf(net, k) : before, count - k);
      keepSettling(k, active);
    }
  }

  void addReverse() const {
    for (int k = 0; k < count; k += kLanes<Real>) {
      const Mask active = activeAt(k);
      const Real net = load<Real>(exchange.net + k);
      const Mask outcome = load<Mask>(exchange.outcome + k);
      const Mask plain = hasBit<Real>(load<Mask>(flags + k), kPlainVoids);
      if (!anyOf<Real>(active & ((outcome != 0) | ~plain))) continue;
      double* const change = step.change + cell + k;
      const Real before = load<Real>(change, count - k);
      store(change, active ? before + levelOf(net, k) : before, count - k);
      keepSettling(k, active);
    }
  }
};

}  // namespace nivaro
