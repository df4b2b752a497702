// Flow and transport at the sides of a cell, as that cell sees them.
#pragma once

#include "morphology/cell.hpp"

namespace nivaro {

enum class Side { Lower, Upper };  // toward the smaller and the larger index

// Positive toward the larger index; 0 where no water passes.
struct SideFlow {
  double depth = 0.0;       // h, m
  double normal = 0.0;      // un, along the axis, m/s
  double tangential = 0.0;  // ut, across it
};

// What moves sand at a side.
struct Current {
  double depth = 0.0;
  double speed = 0.0;
  double normal = 0.0;  // what of the speed is along the axis
};

// Components along the axis, kg/(m s).
struct SideTransport {
  double suspended = 0.0;
  double bedLoad = 0.0;
};

// The cell is active and wet. `downstream` says that a sweep leaves it through this side.
SideFlow sideFlow(const StepInput& in, Cell cell, Axis axis, Side side, bool downstream);

// Capacity with the grains of the cell, resolved along the axis.
SideTransport sideTransport(const StepInput& in, Cell cell, const SideFlow& flow);

// The same for grains in m. Where there is no direction the capacity is left as it is.
SideTransport resolvedCapacity(const Current& current, double d50, double d90,
                               const MorphologyParameters& p);

}  // namespace nivaro
