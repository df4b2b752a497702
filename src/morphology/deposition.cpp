#include "morphology/deposition.hpp"

#include "morphology/elementary.hpp"

namespace nivaro {
namespace {

constexpr double kLargestExponent = 10.0;  // beyond it the cell keeps all that can settle

}  // namespace

// With inflow qi, equilibrium qe and mean discharge Q per unit width:
//
//   c = qi / Q
//   alpha = (1 - (qe / qi)^0.2) K c ws / (qi - qe)
//   D = (1 - e^(-alpha dx)) (qi - qe)
Deposition deposition(const Settling& cell, double cellSize, double fallVelocity,
                      double concentrationFactor) {
  double discharge = 0.5 * (cell.inVelocity * cell.inDepth + cell.outVelocity * cell.outDepth);
  if (discharge <= kSmallestDischarge) discharge = kSmallestDischarge;

  const double excess = cell.inflow - cell.equilibrium;
  Deposition result;
  result.concentration = cell.inflow / discharge;
  result.adaptation = (1.0 - power(cell.equilibrium / cell.inflow, 0.2)) *
                      (result.concentration * concentrationFactor) * fallVelocity / excess;
  const double exponent =
      clamped(-result.adaptation * cellSize, -kLargestExponent, kLargestExponent);
  result.deposited = (1.0 - exponential(exponent)) * excess;
  return result;
}

}  // namespace nivaro
