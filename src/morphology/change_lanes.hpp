// What the sweeps need to know of the cells they pass, and the bed change, concentration and adaptation
// that they leave in them.
#pragma once

#include "morphology/carry_lanes.hpp"
#include "morphology/lanes.hpp"
#include "morphology/step_data.hpp"
#include "morphology/strip.hpp"

namespace nivaro {

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
