#include "morphology/engine/fallback.hpp"

#include "morphology/bed_rebuild.hpp"
#include "morphology/deposition.hpp"
#include "morphology/slumping.hpp"

namespace nivaro {

// Grains from the copies where they are uniform: the cell may lie outside the area then.
SideTransport plainTransport(const StepData& step, std::ptrdiff_t cell, const Current& current) {
  return resolvedCapacity(current, *step.d50.at(cell), *step.d90.at(cell), step.parameters);
}

// The mean discharge stands for velocity and depth of both sides.
PlainSettling plainSettling(const StepData& step, double inflow, double equilibrium,
                            double discharge) {
  const Deposition d =
      deposition({inflow, equilibrium, discharge, 1.0, discharge, 1.0}, step.cellSize,
                 step.parameters.fallVelocity, step.parameters.concentrationFactor);
  return {d.concentration, d.adaptation, d.deposited};
}

void plainSlumping(const StepData& step, int i, int j, int count) {
  const Area area{static_cast<int>(step.firstI), static_cast<int>(step.firstJ),
                  static_cast<int>(step.lastI), static_cast<int>(step.lastJ)};
  addSlumping(*step.input, area, {i, j}, count);
}

void plainRebuild(const StepData& step, int i, int j, int count) {
  rebuildCornersAndSides(*step.input, {i, j}, count);
}

}  // namespace nivaro
