#include "morphology/engine/capacity.hpp"

#include <algorithm>

#include "morphology/elementary.hpp"

namespace nivaro {
namespace {

bool isWithin(double value, double low, double high) {
  return value >= low && value <= high;
}

// Wide of anything that occurs in nature, and so narrow that nothing over- or underflows.
bool isOrdinary(const MorphologyParameters& p) {
  return isWithin(p.fallVelocity, 0.0, 10.0) && isWithin(p.currentRelatedRoughness, 1e-6, 100.0) &&
         isWithin(p.mixingLayerThickness, 0.0, 1e3) && isWithin(p.referenceLevel, 1e-5, 1e3) &&
         isWithin(p.mixingCoefficient, 1e-3, 1e3) && isWithin(p.waterDensity, 1.0, 1e5) &&
         isWithin(p.concentrationFactor, -1e6, 1e6) &&
         isWithin(p.sandGrainDensity, 1.001 * p.waterDensity, 1e5);
}

}  // namespace

CapacityTerms capacityTerms(const MorphologyParameters& p) {
  CapacityTerms terms;
  terms.stillDepth = kSmallestDepth;
  terms.ordinary = isOrdinary(p);
  if (!terms.ordinary) return terms;

  const double buoyancy = (p.sandGrainDensity - p.waterDensity) * kGravity;
  terms.stillDepth =
      std::max({kSmallestDepth, 1.25 * p.referenceLevel, 1.25 * p.mixingLayerThickness});
  terms.referenceLevel = p.referenceLevel;
  terms.logReference = logarithm(p.referenceLevel);
  terms.logRoughness = logarithm(12.0 / p.currentRelatedRoughness);
  terms.logFour = logarithm(4.0);
  terms.density = p.sandGrainDensity;
  terms.suspension = p.fallVelocity / kKarman / p.mixingCoefficient * 18.0 * kLog10e / kSqrtGravity;
  terms.grainScale = cubeRoot(((p.sandGrainDensity - p.waterDensity) / p.waterDensity) * kGravity /
                              (kViscosity * kViscosity));
  terms.stage = 0.03 * p.waterDensity / (kLog10e * kLog10e) / buoyancy * terms.grainScale;
  terms.suspended = 0.015 / p.referenceLevel;
  terms.bedLoad = 0.25 * p.sandGrainDensity * kSqrtOfShearFactor / kLog10e;
  constexpr double factors[] = {0.24, 0.14, 0.04, 0.013, 0.055};
  for (int k = 0; k < 5; ++k) terms.logShields[k] = logarithm(factors[k]);
  return terms;
}

}  // namespace nivaro
