// The host's bed at corners and sides, derived from the cells, and the smoothing call, which settles beds
// and codes before the first step.
#pragma once

#include "morphology/cell.hpp"

namespace nivaro {

// Corners and sides of the area and those on its rim. Only movable beds count; a corner or a side
// without them keeps its value.
void rebuildCornersAndSides(const StepInput& in, const Area& area);

// Those above `count` cells of a row.
void rebuildCornersAndSides(const StepInput& in, Cell first, int count);

// Set-up of a domain: confines the bed codes to the area, lowers bed limits that lie above the bed
// and rebuilds corners and sides from the cells. Flow and settings are not read.
void smoothBed(const StepInput& in, const Area& area);

}  // namespace nivaro
