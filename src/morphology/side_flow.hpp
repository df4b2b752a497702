// Depth and velocity at one side of a wet cell.
#pragma once

#include "morphology/fields.hpp"
#include "morphology/grid_line.hpp"

namespace nivaro {

enum class Side { Lower, Upper };  // toward the smaller and toward the larger index

struct SideFlow {
  double depth = 0.0;       // m
  double normal = 0.0;      // velocity along the sweep's index, m/s
  double tangential = 0.0;  // m/s
  bool open = false;        // the cell across the side is wet
};

// Flow at a side of `cell` that the axis crosses. Reads the cells around, up to one step away.
template <Axis axis>
SideFlow sideFlow(const StepInput& in, Cell cell, Side side);

// The same with the normal velocity scaled to the depth at the cell centre, as velocity centring
// wants it at the downstream side of a sweep. A side to a dry cell is left as it is.
SideFlow centred(SideFlow flow, const StepInput& in, Cell cell);

double speed(const SideFlow& flow);

extern template SideFlow sideFlow<Axis::First>(const StepInput&, Cell, Side);
extern template SideFlow sideFlow<Axis::Second>(const StepInput&, Cell, Side);

}  // namespace nivaro
