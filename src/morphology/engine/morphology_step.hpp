// The step of one domain, on the processor at hand: the plain one, or the same many sides at once.
// docs/engine.md tells how grid, strips, blocks, columns and masks hang together.
#pragma once

#include "morphology/engine/workspace.hpp"
#include "morphology/fields.hpp"
#include "platform/grid.hpp"

namespace nivaro {

// One morphology time step: transport, bed change, slumping, rebuild of corners and sides. The area
// lies inside the grid with at least one cell to spare on each side. Never fails: numbers that make
// no sense pass into the fields.
void morphologyStep(const StepInput& in, const Area& area, StepWorkspace& workspace);

}  // namespace nivaro
