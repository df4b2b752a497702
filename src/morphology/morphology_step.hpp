// The two computations of a morphology call, one domain each.
#pragma once

#include "morphology/fields.hpp"
#include "morphology/step_scratch.hpp"
#include "platform/grid.hpp"

namespace nivaro {

// One morphology time step: transport, bed change, slumping, rebuild of corners and sides. The area
// lies inside the grid with at least one cell to spare on each side. Never fails: numbers that make
// no sense pass into the fields.
void morphologyStep(const StepInput& in, const Area& area, StepScratch& scratch);

// Set-up of a domain: confines the bed codes to the area, lowers bed limits that lie above the bed
// and rebuilds corners and sides from the cells. Flow and settings are not read.
void smoothBed(const StepInput& in, const Area& area);

}  // namespace nivaro
