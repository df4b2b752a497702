// The host's bed at corners and sides, derived from the cells, and what the smoothing call settles
// beforehand.
#pragma once

#include "morphology/cell.hpp"
#include "morphology/fields.hpp"
#include "platform/grid.hpp"

namespace nivaro {

// Corners and sides of the area and those on its rim. Only movable beds count; a corner or a side
// without them keeps its value.
void rebuildCornersAndSides(const StepInput& in, const Area& area);

// Those above `count` cells of a row.
void rebuildCornersAndSides(const StepInput& in, Cell first, int count);

// Sets the bed code to 0 in every cell outside the area.
void confineBedCodes(const StepInput& in, const Area& area);

// Lowers the bed limits of the area that lie above the present bed to it.
void lowerBedLimits(const StepInput& in, const Area& area);

}  // namespace nivaro
