// What follows the sweeps, a row at a time and several cells at once: limiting and time centring,
// raising the bed, slumping, and the depths at corners and sides. Where lanes differ in kind the plain
// functions serve; both do the same operations in the same order, to the last bit.
#pragma once

#include "morphology/engine/fallback.hpp"
#include "morphology/engine/step_data.hpp"
#include "morphology/engine/vector.hpp"

namespace nivaro {

template <class Real>
[[gnu::always_inline]] inline MaskOf<Real> isMovable(const std::int32_t* bedCode, int count) {
  return loadFlags<Real>(bedCode, count) > 0;
}

// The cells of row j of the area, and of its rim.
template <class Real>
struct BedRow {
  using Mask = MaskOf<Real>;

  const StepData& step;
  std::ptrdiff_t j;
  std::ptrdiff_t first = (j - 1) * step.n + step.firstI - 1;
  int count = static_cast<int>(step.lastI - step.firstI + 1);

  // Calls `shape` with the first cell and the end of each block with the bit.
  template <class Shape>
  [[gnu::always_inline]] void forBlocks(unsigned char bit, const Shape& shape) const {
    for (int k = 0, block = 0; k < count; k += kBlock, ++block)
      if (step.map.has(j - step.firstJ, block, bit)) shape(k, smaller<Real>(count, k + kBlock));
  }

  [[gnu::always_inline]] Real centredChange(std::ptrdiff_t c, int left) const {
    const double weight = step.parameters.timeCentringFactor;
    const double limit = step.parameters.bedChangeLimit;
    const Real change = weight * load<Real>(step.change + c, left) +
                        (1.0 - weight) * load<Real>(step.previousChange + c, left);
    return change < -limit ? all<Real>(-limit) : atMost(change, all<Real>(limit));
  }

  void limitAndRaise() const {
    forBlocks(kCarriesSand, [this](int from, int end) { limitAndRaise(from, end); });
  }

  void limitAndRaise(int from, int end) const {
    for (int k = from; k < end; k += kLanes<Real>) {
      const std::ptrdiff_t c = first + k;
      const int left = count - k;
      const Mask active = isOdd<Real>(step.bedCode + c, left) & isOdd<Real>(step.wet + c, left);
      if (!anyOf<Real>(active)) {
        clearCells<Real>(step.change + c, smaller<Real>(left, kLanes<Real>));
        clearCells<Real>(step.previousChange + c, smaller<Real>(left, kLanes<Real>));
        continue;
      }
      const Real change = active ? centredChange(c, left) : Real{};
      store(step.change + c, change, left);
      store(step.previousChange + c, change, left);
      raiseCells(c, left, change);
    }
  }

  // Depths are positive downward.
  [[gnu::always_inline]] void raiseCells(std::ptrdiff_t c, int left, Real change) const {
    const Real depth = load<Real>(step.bedDepth + c, left);
    const Mask movable = isMovable<Real>(step.bedCode + c, left);
    store(step.bedDepth + c, movable ? depth - change : depth, left);
  }

  void addSlumping() const {
    forBlocks(kHasMovableBed, [this](int from, int end) { addSlumping(from, end); });
  }

  // Most cells slump nothing, which a look at their neighbours settles.
  void addSlumping(int from, int end) const {
    for (int k = from; k < end; k += kLanes<Real>) {
      const std::ptrdiff_t c = first + k;
      const int left = count - k;
      const Mask movable = isMovable<Real>(step.bedCode + c, left);
      if (!anyOf<Real>(movable)) continue;
      const Real depth = load<Real>(step.bedDepth + c, left);
      const auto below = [&](std::ptrdiff_t neighbour, double stable) {
        return depth - load<Real>(step.bedDepth + c + neighbour, left) > stable;
      };
      const Mask steep = below(step.n, step.stableStepSecond) |
                         below(-step.n, step.stableStepSecond) | below(1, step.stableStepFirst) |
                         below(-1, step.stableStepFirst);
      if (anyOf<Real>(movable & steep))
        plainSlumping(step, static_cast<int>(step.firstI) + k, static_cast<int>(j),
                      smaller<Real>(left, kLanes<Real>));
    }
  }

  void raiseBySlumps() const {
    forBlocks(kHasMovableBed, [this](int from, int end) {
      for (int k = from; k < end; k += kLanes<Real>) {
        const Real slumps = load<Real>(step.slumps + first + k, count - k);
        if (anyOf<Real>(slumps != 0.0)) raiseCells(first + k, count - k, slumps);
      }
    });
  }

  // Whether the cells around the corners of a block's cells, from the one before it on, may have movable
  // beds. Nothing is known of cells outside the area.
  bool mayHaveBeds(std::ptrdiff_t row, std::ptrdiff_t block) const {
    if (row < 0 || row > step.lastJ - step.firstJ) return true;
    return block == 0 || block + 1 >= step.map.perRow ||
           step.map.has(row, block - 1, kHasMovableBed) || step.map.has(row, block, kHasMovableBed);
  }

  // Corners and sides above the row, from the cell before the area on. Where none of the four cells
  // around a corner has a movable bed all stays.
  void rebuild() const {
    const std::ptrdiff_t row = j - step.firstJ;
    for (int k = -1, block = 0; k < count; k += kBlock, ++block)
      if (mayHaveBeds(row, block) || mayHaveBeds(row + 1, block))
        rebuild(k, smaller<Real>(count, k + kBlock));
  }

  void rebuild(int from, int end) const {
    for (int k = from; k < end; k += kLanes<Real>) {
      const std::ptrdiff_t c = first + k;
      const int left = count - k;
      const auto movable = [&](std::ptrdiff_t neighbour) {
        return isMovable<Real>(step.bedCode + c + neighbour, left);
      };
      const Mask here = movable(0), right = movable(1), up = movable(step.n),
                 across = movable(step.n + 1);
      const Mask some = here | right | up | across;
      if (!anyOf<Real>(some)) continue;
      const Mask all = here & right & up & across;
      if (anyOf<Real>(some & ~all))
        plainRebuild(step, static_cast<int>(step.firstI) + k, static_cast<int>(j),
                     smaller<Real>(left, kLanes<Real>));
      else
        rebuildCells(c, left, all);
    }
  }

  [[gnu::always_inline]] void rebuildCells(std::ptrdiff_t c, int left, Mask movable) const {
    const Real here = load<Real>(step.bedDepth + c, left);
    const Real right = load<Real>(step.bedDepth + c + 1, left);
    const Real up = load<Real>(step.bedDepth + c + step.n, left);
    const Real across = load<Real>(step.bedDepth + c + step.n + 1, left);
    const auto side = [this](Real a, Real b) {
      return step.parameters.cellSidesHigh ? (b < a ? b : a) : 0.5 * (a + b);
    };
    const auto set = [&](double* field, Real value) {
      store(field + c, movable ? value : load<Real>(field + c, left), left);
    };
    set(step.secondSideDepth, side(here, up));
    set(step.firstSideDepth, side(here, right));
    set(step.cornerDepth, (0.0 + here + right + up + across) / 4.0);
  }
};

template <class Real>
void limitAndRaiseRow(const StepData& step, std::ptrdiff_t j) {
  BedRow<Real>{step, j}.limitAndRaise();
}

template <class Real>
void slumpRow(const StepData& step, std::ptrdiff_t j) {
  BedRow<Real>{step, j}.addSlumping();
}

template <class Real>
void raiseRowBySlumps(const StepData& step, std::ptrdiff_t j) {
  BedRow<Real>{step, j}.raiseBySlumps();
}

template <class Real>
void rebuildRow(const StepData& step, std::ptrdiff_t j) {
  BedRow<Real>{step, j}.rebuild();
}

}  // namespace nivaro
