// What the lanes hand back to the plain loops, because its values are not ordinary or its lanes differ in
// kind.
#pragma once

#include "morphology/engine/step_data.hpp"
#include "morphology/side_flow.hpp"

namespace nivaro {

// Through a side, with the grain of a cell that looks at it.
SideTransport plainTransport(const StepData& step, std::ptrdiff_t cell, const Current& current);

struct PlainSettling {
  double concentration;
  double adaptation;
  double deposited;
};

PlainSettling plainSettling(const StepData& step, double inflow, double equilibrium,
                            double discharge);

// Of `count` cells from (i, j) on.
void plainSlumping(const StepData& step, int i, int j, int count);
void plainRebuild(const StepData& step, int i, int j, int count);

}  // namespace nivaro
