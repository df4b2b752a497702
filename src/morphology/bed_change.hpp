// From what the sweeps leave in the cells to the change of their bed.
#pragma once

#include "morphology/fields.hpp"

namespace nivaro {

// Weighs the bed change of the area with that of the step before and holds it within its limit. The
// result, 0 where no sand is carried, is both: the change of this step and what the next one weighs.
void centreAndLimit(const StepInput& in, const Area& area);

// Adds level changes to the beds of the area that may move.
void raiseBed(const StepInput& in, const Area& area, const Grid<double>& change);

}  // namespace nivaro
