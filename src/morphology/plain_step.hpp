// The morphology step as docs/numerics.md tells it, one cell after the other: what the engine computes
// many cells at once and is held to.
#pragma once

#include "morphology/fields.hpp"

namespace nivaro {

// The area lies inside the grid with at least one cell to spare on each side. Never fails: numbers that
// make no sense pass into the fields.
void plainStep(const StepInput& in, const Area& area);

}  // namespace nivaro
