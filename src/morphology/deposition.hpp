// Settling of suspended sand along one cell: the transport relaxes toward its equilibrium.
#pragma once

namespace nivaro {

constexpr double kSmallestDischarge = 0.000001;  // m2/s, so that still water has a concentration

// A cell that sand enters with more than its outflow side can carry. Velocities are positive in the
// direction of the sand.
struct Settling {
  double inflow = 0.0;       // transport that enters, kg/(m s)
  double equilibrium = 0.0;  // capacity at the outflow side, 0 or more and below the inflow
  double inVelocity = 0.0;   // normal to the inflow side, m/s
  double inDepth = 0.0;      // m
  double outVelocity = 0.0;
  double outDepth = 0.0;
};

struct Deposition {
  double concentration = 0.0;  // of the inflow, kg/m3
  double adaptation = 0.0;     // coefficient of the relaxation, 1/m
  double deposited = 0.0;      // transport that settles in the cell, kg/(m s)
};

Deposition deposition(const Settling& cell, double cellSize, double fallVelocity,
                      double concentrationFactor);

}  // namespace nivaro
