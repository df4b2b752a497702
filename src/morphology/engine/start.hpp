// What a step starts with, a row of the grid at a time: the fields of the step are cleared where the sweeps
// will not set them, and the blocks of a row of the area are told apart.
#pragma once

#include "morphology/engine/step_data.hpp"
#include "morphology/engine/vector.hpp"

namespace nivaro {

template <class Real>
struct StartOfRow {
  using Mask = MaskOf<Real>;

  const StepData& step;
  std::ptrdiff_t j;
  std::ptrdiff_t row = (j - 1) * step.n;

  // Cells that the sweeps do not come to.
  void clear(std::ptrdiff_t from, std::ptrdiff_t count) const {
    for (double* field :
         {step.slumps, step.spare, step.change, step.concentration, step.adaptation})
      clearCells<Real>(field + row + from, count);
  }

  unsigned char bitsOf(std::ptrdiff_t from, std::ptrdiff_t count) const {
    Mask odd{}, movable{};
    for (std::ptrdiff_t k = 0; k < count; k += kLanes<Real>) {
      const Mask codes =
          loadFlags<Real>(step.bedCode + row + from + k, smaller<Real>(count - k, kLanes<Real>));
      odd |= codes & 1;
      movable |= codes > 0;
    }
    return static_cast<unsigned char>((anyOf<Real>(odd) ? kCarriesSand : 0) |
                                      (anyOf<Real>(movable) ? kHasMovableBed : 0));
  }

  // Field after field: memory serves several at once faster than one by one.
  void clearBlock(std::ptrdiff_t from, std::ptrdiff_t count, bool carriesSand) const {
    if (!carriesSand) {
      clear(from, count);
      return clearCells<Real>(step.previousChange + row + from, count);
    }
    clearCells<Real>(step.slumps + row + from, count);
    clearCells<Real>(step.spare + row + from, count);
  }

  void prepare() const {
    if (j < step.firstJ || j > step.lastJ || step.firstI > step.lastI) return clear(0, step.n);
    clear(0, step.firstI - 1);
    clear(step.lastI, step.n - step.lastI);
    unsigned char* bits = step.map.blocks + (j - step.firstJ) * step.map.perRow;
    for (std::ptrdiff_t from = step.firstI - 1; from < step.lastI; from += kBlock) {
      const std::ptrdiff_t count = smaller<Real>(step.lastI - from, kBlock);
      *bits = bitsOf(from, count);
      clearBlock(from, count, (*bits & kCarriesSand) != 0);
      ++bits;
    }
  }
};

template <class Real>
bool isUniform(const double* values, std::ptrdiff_t count, const double* copies) {
  using Word = typename Lanes<Real>::Word;
  const Word wanted = load<Word>(copies);
  Word differs{};
  std::ptrdiff_t k = 0;
  for (; k + kLanes<Real> <= count; k += kLanes<Real>) differs |= load<Word>(values + k) ^ wanted;
  if (k < count) {
    const int left = smaller<Real>(count - k, kLanes<Real>);
    differs |= as<Word>(load<Real>(values + k, left)) ^ as<Word>(load<Real>(copies, left));
  }
  return !anyOf<Real>(as<MaskOf<Real>>(differs));
}

template <class Real>
void startRow(const StepData& step, std::ptrdiff_t j) {
  StartOfRow<Real>{step, j}.prepare();
}

}  // namespace nivaro
