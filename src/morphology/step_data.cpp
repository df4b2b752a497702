#include "morphology/step_data.hpp"

#include "morphology/deposition.hpp"
#include "morphology/transport_capacity.hpp"

namespace nivaro {

StepData stepData(const StepInput& in, const Area& area) {
  StepData step;
  step.n = in.bed.zc.n();
  step.firstI = area.firstI;
  step.firstJ = area.firstJ;
  step.lastI = area.lastI;
  step.lastJ = area.lastJ;
  step.wet = in.flow.wet.cells().data();
  step.flow = in.flow.flow.cells().data();
  step.bedCode = in.fields.bedCode.cells().data();
  step.waterLevel = in.flow.waterLevel.cells().data();
  step.firstVelocity = in.flow.v1.cells().data();
  step.secondVelocity = in.flow.v2.cells().data();
  step.firstSideDepth = in.bed.z1.cells().data();
  step.secondSideDepth = in.bed.z2.cells().data();
  step.bedDepth = in.bed.zc.cells().data();
  step.d50 = in.fields.d50.cells().data();
  step.d90 = in.fields.d90.cells().data();
  step.inSituVoids = in.fields.inSituVoids.cells().data();
  step.depositionVoids = in.fields.depositionVoids.cells().data();
  step.bedLimit = in.fields.bedLimit.cells().data();
  step.change = in.fields.cellChange.cells().data();
  step.concentration = in.fields.concentration.cells().data();
  step.adaptation = in.fields.adaptation.cells().data();
  step.raiseSideDepth = in.settings.raiseSideDepth;
  step.raiseFactor = in.settings.raiseFactor;
  step.cellSize = in.settings.cellSize;
  step.levelFactor = in.settings.timeStep / in.parameters.sandGrainDensity / in.settings.cellSize;
  step.parameters = in.parameters;
  step.terms = capacityTerms(in.parameters);
  return step;
}

// Resolved along the index where there is a direction.
ResolvedTransport plainTransport(const StepData& step, std::ptrdiff_t cell, double depth,
                                 double speed, double normal) {
  const Transport q = transportCapacity(depth, speed, grainTerms(step.d50[cell], step.parameters),
                                        step.d90[cell], step.parameters);
  if (!(speed > 0.0)) return {q.suspended, q.bedLoad};
  return {q.suspended * normal / speed, q.bedLoad * normal / speed};
}

PlainSettling plainSettling(const StepData& step, double inflow, double equilibrium,
                            double discharge) {
  // The mean discharge stands for velocity and depth of both sides.
  const Deposition d =
      deposition({inflow, equilibrium, discharge, 1.0, discharge, 1.0}, step.cellSize,
                 step.parameters.fallVelocity, step.parameters.concentrationFactor);
  return {d.concentration, d.adaptation, d.deposited};
}

}  // namespace nivaro
