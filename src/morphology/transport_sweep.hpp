// Transport across the sides of the active wet cells, turned into bed change.
#pragma once

#include "morphology/fields.hpp"
#include "morphology/grid_line.hpp"
#include "platform/grid.hpp"

namespace nivaro {

// Adds the bed change of the forward and of the reverse sweep along one axis to the cell bed change
// of the area, and leaves concentration and adaptation of the latest deposition. Neither the bed
// nor the flow is changed, so the axes do not see each other; their order fixes the last bits only.
template <Axis axis>
void addTransport(const StepInput& in, const Area& area);

extern template void addTransport<Axis::First>(const StepInput&, const Area&);
extern template void addTransport<Axis::Second>(const StepInput&, const Area&);

}  // namespace nivaro
