// Sand transport capacity of a current after van Rijn (1989), without waves.
#pragma once

#include "morphology/parameters.hpp"

namespace nivaro {

constexpr double kGravity = 9.81;                   // m/s2
constexpr double kSqrtGravity = 3.132091952673165;  // its square root
constexpr double kKarman = 0.4;                     // -
constexpr double kViscosity = 0.000001;             // kinematic, m2/s
constexpr double kSmallestSpeed = 0.001;            // m/s; still water at this speed or less
constexpr double kSmallestDepth = 0.05;             // m; the same
constexpr double kLargestTransport = 100.0;         // kg/(m s)
constexpr double kLargestConcentration = 20.0;      // of ca, from which on the method is off
constexpr double kLargestSuspensionNumber = 25.0;   // beyond it nothing stays in suspension
constexpr double kSmallestStage = 0.0001;  // keeps a trace of transport below the threshold
constexpr double kSmallestShearVelocitySquared = 0.0001;  // m2/s2

// What depends on the grain size alone, so that one evaluation serves many sides.
struct GrainTerms {
  double d50 = 0.0;              // m
  double criticalShields = 0.0;  // Shields parameter at the threshold of motion
  double sizeFactor = 0.0;       // D*^0.3, D* being the dimensionless grain size
};

struct Transport {
  double referenceConcentration = 0.0;  // near the bed, volume fraction
  double suspended = 0.0;               // per unit width, kg/(m s)
  double bedLoad = 0.0;                 // per unit width, kg/(m s)
};

GrainTerms grainTerms(double d50, const MorphologyParameters& p);

// Equilibrium transport at water depth (m) and flow speed (m/s, not negative); d90 in m. Pure, and
// defined for every input: each transport is at most 100 kg/(m s), or not a number.
Transport transportCapacity(double depth, double speed, const GrainTerms& grain, double d90,
                            const MorphologyParameters& p);

}  // namespace nivaro
