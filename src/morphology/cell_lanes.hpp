// What the sides of a row of cells need to know of them: which are active, and their grains.
#pragma once

#include "morphology/step_data.hpp"
#include "morphology/transport_lanes.hpp"

namespace nivaro {

// Cells of one row: what both their sides need. Masks are 0 or -1.
template <class Real>
struct CellRow {
  std::int64_t* active = nullptr;  // and in the area
  std::int64_t* ordinary = nullptr;
  double* stage = nullptr;  // grain terms, as in GrainLanes
  double* suspended = nullptr;
  double* bedLoad = nullptr;
  double* logGrain = nullptr;

  CellRow from(std::ptrdiff_t k) const {
    return {active + k, ordinary + k, stage + k, suspended + k, bedLoad + k, logGrain + k};
  }
};

// Cells of a row, or of a piece of one.
template <class Real, std::ptrdiff_t length>
struct CellRowMemory {
  std::int64_t active[length];
  std::int64_t ordinary[length];
  double stage[length];
  double suspended[length];
  double bedLoad[length];
  double logGrain[length];

  CellRow<Real> row() { return {active, ordinary, stage, suspended, bedLoad, logGrain}; }
};

// Grain terms come in patches, so those of the lanes before mostly serve again.
template <class Real>
struct GrainMemory {
  Real d50{};
  Real d90{};
  GrainLanes<Real> terms{};
  MaskOf<Real> ordinary{};

  explicit GrainMemory(const StepData& step) {
    if (step.uniformGrain)
      compute(load<Real>(step.d50.first), load<Real>(step.d90.first), step.terms);
  }

  [[gnu::always_inline]] bool has(Real otherD50, Real otherD90, MaskOf<Real> needed) const {
    using Word = typename Lanes<Real>::Word;
    const Word differs =
        (as<Word>(d50) ^ as<Word>(otherD50)) | (as<Word>(d90) ^ as<Word>(otherD90));
    return !anyOf<Real>(as<MaskOf<Real>>(differs) & needed);
  }

  void compute(Real newD50, Real newD90, const CapacityTerms& p) {
    d50 = newD50;
    d90 = newD90;
    ordinary = isOrdinaryGrain(d50, d90);
    const Real usual = all<Real>(0.0002);
    terms = grainLanes(ordinary ? d50 : usual, ordinary ? d90 : usual, p);
  }
};

// True when any of the cells is active.
template <class Real>
bool readCells(const StepData& step, std::ptrdiff_t cell, int count, GrainMemory<Real>& grain,
               const CellRow<Real>& out) {
  using Mask = MaskOf<Real>;
  Mask found{};
  for (int k = 0; k < count; k += kLanes<Real>) {
    Mask active = isOdd<Real>(step.bedCode + cell + k, count - k);
    if (anyOf<Real>(active)) active &= isOdd<Real>(step.wet + cell + k, count - k);
    store(out.active + k, active);
    found |= active;
    if (step.uniformGrain) continue;

    if (anyOf<Real>(active)) {
      const Real d50 = load<Real>(step.d50.at(cell + k), count - k);
      const Real d90 = load<Real>(step.d90.at(cell + k), count - k);
      if (!grain.has(d50, d90, active)) grain.compute(d50, d90, step.terms);
    }
    // Sides of active cells are computed for lanes beside them too. What these find here is thrown
    // away, but a slow number would cost time.
    store(out.ordinary + k, grain.ordinary);
    store(out.stage + k, grain.terms.stage);
    store(out.suspended + k, grain.terms.suspended);
    store(out.bedLoad + k, grain.terms.bedLoad);
    store(out.logGrain + k, grain.terms.logGrain);
  }
  return anyOf<Real>(found);
}

}  // namespace nivaro
