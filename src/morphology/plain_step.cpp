#include "morphology/plain_step.hpp"

#include <algorithm>

#include "morphology/bed_change.hpp"
#include "morphology/bed_rebuild.hpp"
#include "morphology/slumping.hpp"
#include "morphology/sweep.hpp"

namespace nivaro {
namespace {

void clear(const Grid<double>& field) {
  std::ranges::fill(field.cells(), 0.0);
}

void clearFieldsOfStep(const SedimentFields& fields) {
  clear(fields.cellChange);
  clear(fields.concentration);
  clear(fields.adaptation);
  clear(fields.spare);
}

}  // namespace

void plainStep(const StepInput& in, const Area& area) {
  clearFieldsOfStep(in.fields);
  for (const Axis axis : {Axis::Second, Axis::First})
    for (const Direction direction : {Direction::Forward, Direction::Reverse})
      sweep(in, area, axis, direction);
  centreAndLimit(in, area);
  raiseBed(in, area, in.fields.cellChange);
  clear(in.fields.appliedChange);
  addSlumping(in, area);
  raiseBed(in, area, in.fields.appliedChange);
  rebuildCornersAndSides(in, area);
}

}  // namespace nivaro
