// Fall of over-steep beds into lower wet cells.
#pragma once

#include "morphology/fields.hpp"
#include "platform/grid.hpp"

namespace nivaro {

// Adds the level changes of one slumping pass over the area to the applied bed change, which the
// caller has cleared. The bed itself is not changed, so the cells do not see each other's slumps.
void addSlumping(const StepInput& in, const Area& area);

// The part of it that row j of the area takes: it looks at both neighbour rows and changes them.
void addSlumpingOfRow(const StepInput& in, const Area& area, int j);

}  // namespace nivaro
