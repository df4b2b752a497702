// Constants of capacity and deposition, for the plain functions and for the lanes.
#pragma once

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

constexpr double kSmallestDischarge = 0.000001;  // m2/s, so that still water has a concentration

// Of U / Y, where u*' = sqrt(0.03) / log10(e) U / Y meets its floor of 0.01 m/s.
constexpr double kLog10e = 0.43429448190325182765;
constexpr double kSqrtOfShearFactor = 0.17320508075688772935;  // sqrt(0.03)
constexpr double kSmallestShear = 0.01 * kLog10e / kSqrtOfShearFactor;

}  // namespace nivaro
