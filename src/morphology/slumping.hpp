// Fall of over-steep beds into lower wet cells.
#pragma once

#include "morphology/cell.hpp"

namespace nivaro {

constexpr double kSmallestSlumpStep = 0.00001;  // m; below it beds count as level

// Adds to the applied bed change, which the caller has cleared, the level changes of one pass over the
// area: each cell looks at its neighbours and changes them. The bed itself is not changed, so the cells do
// not see each other's slumps.
void addSlumping(const StepInput& in, const Area& area);

// Those that `count` cells of a row of the area take part in.
void addSlumping(const StepInput& in, const Area& area, Cell first, int count);

}  // namespace nivaro
