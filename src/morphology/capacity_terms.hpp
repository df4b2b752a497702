// What the transport capacity of a whole step has in common, worked out once before the lanes start.
#pragma once

#include "morphology/parameters.hpp"
#include "morphology/transport_capacity.hpp"

namespace nivaro {

// Of U / Y, where u*' = sqrt(0.03) / log10(e) U / Y meets its floor of 0.01 m/s.
constexpr double kLog10e = 0.43429448190325182765;
constexpr double kSqrtOfShearFactor = 0.17320508075688772935;  // sqrt(0.03)
constexpr double kSmallestShear = 0.01 * kLog10e / kSqrtOfShearFactor;

// Plain data: the lanes of all processors read it. The symbols are those of transport_lanes.hpp.
struct CapacityTerms {
  bool ordinary = false;        // else no side is
  double stillDepth = 0.0;      // no transport at this depth or less, m
  double referenceLevel = 0.0;  // a
  double logReference = 0.0;    // ln a
  double logRoughness = 0.0;    // ln(12 / ks)
  double logFour = 0.0;         // ln 4
  double density = 0.0;         // rho_s
  double suspension = 0.0;      // z
  double grainScale = 0.0;      // D* / D50
  double stage = 0.0;           // k theta_cr D*
  double suspended = 0.0;       // ca D*^0.3 / (D50 T^1.5)
  double bedLoad = 0.0;         // qb D*^0.3 / (D50 T^1.5 U / Y)
  double logShields[5] = {};    // ln of the factors of Shields' curve
};

CapacityTerms capacityTerms(const MorphologyParameters& p);

}  // namespace nivaro
