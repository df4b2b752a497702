// Transport sweeps: sand is carried from cell to cell along the lines of the area.
#pragma once

#include "morphology/cell.hpp"

namespace nivaro {

enum class Direction { Forward, Reverse };  // toward larger or smaller indices

// One sweep over all lines along an axis. Adds to the bed change of active wet cells; where sand settles
// it sets concentration and adaptation.
void sweep(const StepInput& in, const Area& area, Axis axis, Direction direction);

}  // namespace nivaro
