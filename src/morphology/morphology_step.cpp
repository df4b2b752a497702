#include "morphology/morphology_step.hpp"

#include <algorithm>

#include "morphology/bed_change.hpp"
#include "morphology/bed_rebuild.hpp"
#include "morphology/slumping.hpp"
#include "morphology/transport_sweep.hpp"

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

}  // namespace

void morphologyStep(const StepInput& in, const Area& area) {
  clearStepFields(in.fields);
  addTransport<Axis::Second>(in, area);
  addTransport<Axis::First>(in, area);
  limitAndCentre(in, area);
  raiseBed(in, area, in.fields.cellChange);

  clear(in.fields.appliedChange);
  addSlumping(in, area);
  raiseBed(in, area, in.fields.appliedChange);
  rebuildCornersAndSides(in, area);
}

void smoothBed(const StepInput& in, const Area& area) {
  confineBedCodes(in, area);
  lowerBedLimits(in, area);
  rebuildCornersAndSides(in, area);
}

}  // namespace nivaro
