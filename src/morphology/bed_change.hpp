// From the bed change that the sweeps found to the new bed at the cell centres.
#pragma once

#include "morphology/fields.hpp"
#include "platform/grid.hpp"

namespace nivaro {

// Time-centres and limits the cell bed change of the area, and keeps the outcome as the previous
// change of the next step. Cells without transport get 0.
void limitAndCentre(const StepInput& in, const Area& area);

// Raises the movable beds of the area by a change (positive upward; depths are positive downward).
void raiseBed(const StepInput& in, const Area& area, Grid<const double> change);

}  // namespace nivaro
