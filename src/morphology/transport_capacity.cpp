// Equations, in the order and notation of docs/numerics.md:
//
//   D*  = D50 ((s - 1) g / nu^2)^(1/3)                    grain size
//   Lc  = log10(12 h / ks), Lg = log10(12 h / (3 D90))    velocity profile over bed and over grains
//   tau' = 0.03 U^2 rho_w mu / Lc^2, mu = fc' / fc        effective bed shear stress
//   T   = (theta' - theta_cr) / theta_cr                  transport stage
//   ca  = 0.015 (D50 / a) T^1.5 / D*^0.3                  reference concentration
//   Z   = ws / (0.4 beta u*)                              suspension number
//   F   = ((a/h)^Z - (a/h)^1.2) / ((1 - a/h)^Z (1.2 - Z)) profile factor
//   qs  = U h rho_s ca F                                  suspended transport
//   qb  = 0.25 D50 u*' T^1.5 / D*^0.3 rho_s               bed load
//
// Comparisons are written so that a number that is not one passes through guards, floors and caps.
#include "morphology/transport_capacity.hpp"

#include <cmath>

#include "morphology/elementary.hpp"

namespace nivaro {
namespace {

double atMost(double value, double limit) {
  return value > limit ? limit : value;
}
double atLeast(double value, double limit) {
  return value < limit ? limit : value;
}

// Too slow, or too shallow for the reference level and the mixing layer to make sense.
bool isStill(double depth, double speed, const MorphologyParameters& p) {
  return speed <= kSmallestSpeed || depth <= kSmallestDepth || depth <= 1.25 * p.referenceLevel ||
         depth <= 1.25 * p.mixingLayerThickness;
}

double dimensionlessGrainSize(double d50, const MorphologyParameters& p) {
  return d50 * cubeRoot(((p.sandGrainDensity - p.waterDensity) / p.waterDensity) * kGravity /
                        (kViscosity * kViscosity));
}

// Shields' curve in pieces, each closed at its upper end.
double criticalShields(double grainSize) {
  if (grainSize <= 4.0) return 0.24 / grainSize;
  if (grainSize <= 10.0) return 0.14 * power(grainSize, -0.64);
  if (grainSize <= 20.0) return 0.04 * power(grainSize, -0.1);
  if (grainSize <= 150.0) return 0.013 * power(grainSize, 0.29);
  return 0.055;
}

// Share of the shear stress that acts on grains instead of on bed forms: fc' / fc.
double frictionEfficiency(double bedLogarithm, double grainLogarithm) {
  const double currentFriction = 0.24 / (bedLogarithm * bedLogarithm);
  const double grainFriction = 0.24 / (grainLogarithm * grainLogarithm);
  return grainFriction / currentFriction;
}

double transportStage(double stress, const GrainTerms& grain, const MorphologyParameters& p) {
  const double shields = stress / ((p.sandGrainDensity - p.waterDensity) * kGravity * grain.d50);
  return atLeast((shields - grain.criticalShields) / grain.criticalShields, kSmallestStage);
}

double suspensionNumber(double shearVelocity, const MorphologyParameters& p) {
  return atMost(p.fallVelocity / kKarman / p.mixingCoefficient / shearVelocity,
                kLargestSuspensionNumber);
}

// Depth integral of the suspended load relative to ca h U. Z = 1.2 divides by zero on purpose: what
// comes out is left to the caps.
double profileFactor(double relativeLevel, double z) {
  return (power(relativeLevel, z) - power(relativeLevel, 1.2)) /
         (power(1.0 - relativeLevel, z) * (1.2 - z));
}

}  // namespace

GrainTerms grainTerms(double d50, const MorphologyParameters& p) {
  const double grainSize = dimensionlessGrainSize(d50, p);
  return {d50, criticalShields(grainSize), power(grainSize, 0.3)};
}

Transport transportCapacity(double depth, double speed, const GrainTerms& grain, double d90,
                            const MorphologyParameters& p) {
  if (isStill(depth, speed, p)) return {};

  const double bedLogarithm = decimalLogarithm(12.0 * depth / p.currentRelatedRoughness);
  const double grainLogarithm = decimalLogarithm((12.0 * depth / 3.0) / d90);
  const double efficiency = frictionEfficiency(bedLogarithm, grainLogarithm);
  const double stress =
      0.03 * speed * speed * p.waterDensity * efficiency / (bedLogarithm * bedLogarithm);
  const double stage = transportStage(stress, grain, p);

  const double concentration =
      0.015 * (grain.d50 / p.referenceLevel) * stage * std::sqrt(stage) / grain.sizeFactor;
  if (concentration >= kLargestConcentration)
    return {concentration, kLargestTransport, kLargestTransport};

  const double shearVelocity = kSqrtGravity * speed / (18.0 * bedLogarithm);
  const double profile =
      profileFactor(p.referenceLevel / depth, suspensionNumber(shearVelocity, p));
  const double suspended = speed * depth * p.sandGrainDensity * concentration * profile;

  const double grainShearVelocity =
      std::sqrt(atLeast(stress / p.waterDensity, kSmallestShearVelocitySquared));
  const double bedLoad = 0.25 * grain.d50 * grainShearVelocity * stage * std::sqrt(stage) /
                         grain.sizeFactor * p.sandGrainDensity;

  return {concentration, atMost(suspended, kLargestTransport), atMost(bedLoad, kLargestTransport)};
}

}  // namespace nivaro
