#include "morphology/morphology_step.hpp"

#include <algorithm>

#include "morphology/bed_change.hpp"
#include "morphology/bed_rebuild.hpp"
#include "morphology/slumping.hpp"
#include "morphology/step_data.hpp"

namespace nivaro {
namespace {

void clear(Grid<double> field) {
  std::ranges::fill(field.cells(), 0.0);
}

void clearStepFields(const SedimentFields& fields) {
  clear(fields.cellChange);
  clear(fields.concentration);
  clear(fields.adaptation);
  clear(fields.spare);
}

// Neither the bed nor the flow is changed, so the sweeps do not see each other; their order fixes the
// last bits only.
void addTransport(const StepInput& in, const Area& area, StepScratch& scratch) {
  const int positions = std::max(area.lastI - area.firstI, area.lastJ - area.firstJ) + 1;
  if (area.lastI < area.firstI || area.lastJ < area.firstJ) return;
  const StripArrays strip = scratch.strip(positions, in.parameters.velocityCentred);
  stepKernel(scratch.processor()).addTransport(stepData(in, area), strip);
}

Area rowOf(const Area& area, int j) {
  return {area.firstI, j, area.lastI, j};
}

// Limiting, raising, slumping and rebuilding follow each other row by row, each as far behind the one
// before as the rows that it looks at, so that a row is still at hand when the next stage needs it.
// Slumping in a row reads the beds of both neighbours before they slump, and changes both.
void changeBed(const StepInput& in, const Area& area) {
  const auto has = [&area](int j) { return j >= area.firstJ && j <= area.lastJ; };
  clear(in.fields.appliedChange);
  for (int j = area.firstJ - 1; j <= area.lastJ + 2; ++j) {
    if (has(j + 1)) {
      limitAndCentre(in, rowOf(area, j + 1));
      raiseBed(in, rowOf(area, j + 1), in.fields.cellChange);
    }
    if (has(j)) addSlumpingOfRow(in, area, j);
    if (has(j - 1)) raiseBed(in, rowOf(area, j - 1), in.fields.appliedChange);
    if (j - 2 >= area.firstJ - 1) rebuildRow(in, area, j - 2);
  }
}

}  // namespace

void morphologyStep(const StepInput& in, const Area& area, StepScratch& scratch) {
  clearStepFields(in.fields);
  addTransport(in, area, scratch);
  changeBed(in, area);
}

void morphologyStep(const StepInput& in, const Area& area) {
  StepScratch scratch;
  morphologyStep(in, area, scratch);
}

void smoothBed(const StepInput& in, const Area& area) {
  confineBedCodes(in, area);
  lowerBedLimits(in, area);
  rebuildCornersAndSides(in, area);
}

}  // namespace nivaro
