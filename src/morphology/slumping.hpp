// Fall of over-steep beds into lower wet cells.
#pragma once

#include "morphology/cell.hpp"
#include "morphology/fields.hpp"

namespace nivaro {

// Adds the level changes that `count` cells of a row of the area take part in to the applied bed change,
// which the caller has cleared: each cell looks at its neighbours and changes them. The bed itself is not
// changed, so the cells do not see each other's slumps.
void addSlumping(const StepInput& in, const Area& area, Cell first, int count);

// A step in the bed between neighbours at a distance that is not higher than this slumps nothing. A
// trifle lower than the rule's own bound, which divides the other way.
double stableStep(double distance, double slope);

}  // namespace nivaro
