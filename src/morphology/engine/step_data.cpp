#include "morphology/engine/step_data.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "morphology/engine/kernel.hpp"
#include "morphology/slumping.hpp"

namespace nivaro {
namespace {

// A step in the bed between neighbours at a distance that is not higher than this slumps nothing. A
// trifle lower than the rule's own bound, which divides the other way.
double stableStep(double distance, double slope) {
  if (!(distance > 0.0) || !(slope > 0.0)) return kSmallestSlumpStep;
  const double bound = (1.0 - 1e-12) * distance / slope;
  return bound <= std::numeric_limits<double>::max() ? std::max(kSmallestSlumpStep, bound)
                                                     : kSmallestSlumpStep;
}

std::ptrdiff_t cellOfBlock(const StepData& step, std::ptrdiff_t row, std::ptrdiff_t block) {
  return (step.firstJ - 1 + row) * step.n + step.firstI - 1 + block * kBlock;
}

// Calls `see` with the first cell and the number of cells of each block that carries sand, until it
// returns false.
template <class See>
void forCarryingBlocks(const StepData& step, const See& see) {
  const std::ptrdiff_t width = step.lastI - step.firstI + 1;
  for (std::ptrdiff_t row = 0; row <= step.lastJ - step.firstJ; ++row)
    for (std::ptrdiff_t block = 0; block < step.map.perRow; ++block)
      if (step.map.has(row, block, kCarriesSand) &&
          !see(cellOfBlock(step, row, block), std::min(kBlock, width - block * kBlock)))
        return;
}

// Whether a field has one value in all these blocks, which are the copies then.
bool isUniform(const StepData& step, const StepKernel& kernel, const double* field,
               double (&copies)[UniformValues::kCopies]) {
  bool uniform = false;
  const double* first = nullptr;
  forCarryingBlocks(step, [&](std::ptrdiff_t cell, std::ptrdiff_t count) {
    if (first == nullptr) {
      first = field + cell;
      std::fill_n(copies, UniformValues::kCopies, *first);
    }
    uniform = kernel.isUniform(field + cell, count, copies);
    return uniform;
  });
  return uniform;
}

bool isOrdinaryLevel(double level) {
  return std::abs(level) > 1e-60 && std::abs(level) < 1e60;
}

// What a transport does to a bed with uniform voids is one factor, where its size is ordinary.
void useUniformVoids(StepData& step) {
  if (step.inSituVoids.stride != 0 || step.depositionVoids.stride != 0) return;
  step.erosionLevel = step.levelFactor / (1.0 - *step.inSituVoids.first);
  step.depositionLevel = step.levelFactor / (1.0 - *step.depositionVoids.first);
  step.uniformVoids = isOrdinaryLevel(step.levelFactor) && isOrdinaryLevel(step.erosionLevel) &&
                      isOrdinaryLevel(step.depositionLevel);
}

}  // namespace

StepData stepData(const StepInput& in, const Area& area) {
  StepData step;
  step.n = in.bed.zc.n();
  step.firstI = area.firstI;
  step.firstJ = area.firstJ;
  step.lastI = area.lastI;
  step.lastJ = area.lastJ;
  step.wet = in.flow.wet.cells().data();
  step.flow = in.flow.flow.cells().data();
  step.bedCode = in.fields.bedCode.cells().data();
  step.waterLevel = in.flow.waterLevel.cells().data();
  step.firstVelocity = in.flow.v1.cells().data();
  step.secondVelocity = in.flow.v2.cells().data();
  step.firstSideDepth = in.bed.z1.cells().data();
  step.secondSideDepth = in.bed.z2.cells().data();
  step.bedDepth = in.bed.zc.cells().data();
  step.d50.first = in.fields.d50.cells().data();
  step.d90.first = in.fields.d90.cells().data();
  step.inSituVoids.first = in.fields.inSituVoids.cells().data();
  step.depositionVoids.first = in.fields.depositionVoids.cells().data();
  step.bedLimit.first = in.fields.bedLimit.cells().data();
  step.change = in.fields.cellChange.cells().data();
  step.concentration = in.fields.concentration.cells().data();
  step.adaptation = in.fields.adaptation.cells().data();
  step.cornerDepth = in.bed.zpts.cells().data();
  step.previousChange = in.fields.previousChange.cells().data();
  step.slumps = in.fields.appliedChange.cells().data();
  step.spare = in.fields.spare.cells().data();
  step.input = &in;
  step.raiseSideDepth = in.settings.raiseSideDepth;
  step.raiseFactor = in.settings.raiseFactor;
  step.cellSize = in.settings.cellSize;
  step.settlingVelocity = in.parameters.fallVelocity * in.parameters.concentrationFactor;
  step.levelFactor = in.settings.timeStep / in.parameters.sandGrainDensity / in.settings.cellSize;
  step.stableStepFirst = stableStep(in.settings.slumpDistanceFirst, in.parameters.slumpSlope);
  step.stableStepSecond = stableStep(in.settings.slumpDistanceSecond, in.parameters.slumpSlope);
  step.parameters = in.parameters;
  step.terms = capacityTerms(in.parameters);
  return step;
}

void useUniformValues(StepData& step, const StepKernel& kernel, UniformValues& values) {
  auto* copies = values.of;
  for (CellValues* field :
       {&step.d50, &step.d90, &step.inSituVoids, &step.depositionVoids, &step.bedLimit}) {
    if (isUniform(step, kernel, field->first, *copies)) *field = {*copies, 0};
    ++copies;
  }
  step.uniformGrain = step.d50.stride == 0 && step.d90.stride == 0;
  useUniformVoids(step);
}

}  // namespace nivaro
