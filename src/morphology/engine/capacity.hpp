// Transport capacity of many sides at once: transport_capacity.hpp by the lane, with the algebra that
// lets two logarithms and two exponentials do. With X = ln(12 h / ks), Y = ln(4 h / D90), e = log10(e):
//
//   Lc = e X, Lg = e Y                         both share ln h
//   mu / Lc^2 = 1 / Lg^2                       since mu = (Lc / Lg)^2: the roughness cancels in tau'
//   T  = k (U / Y)^2 - 1                       k = 0.03 rho_w / (e^2 (rho_s - rho_w) g D50 theta_cr)
//   u*' = sqrt(0.03) / e (U / Y)               the root of tau' / rho_w needs no root
//   Z  = z X / U                               z = 18 e ws / (0.4 beta sqrt(g))
//   F  = (e^(Z ln(r / (1 - r))) - e^(1.2 ln r - Z ln(1 - r))) / (1.2 - Z),
//        ln r = ln a - ln h, ln(1 - r) = ln(h - a) - ln h
//
// Depth, speed and grain part ways here, so that the two cells of a side share what they can. Sides
// whose values are not ordinary are marked, and are computed by the plain function: every guard, cap
// and number that is none is found there alone.
#pragma once

#include "morphology/engine/vector.hpp"
#include "morphology/parameters.hpp"
#include "morphology/transport_capacity.hpp"

namespace nivaro {

// Of U / Y, where u*' = sqrt(0.03) / log10(e) U / Y meets its floor of 0.01 m/s.
constexpr double kLog10e = 0.43429448190325182765;
constexpr double kSqrtOfShearFactor = 0.17320508075688772935;  // sqrt(0.03)
constexpr double kSmallestShear = 0.01 * kLog10e / kSqrtOfShearFactor;

// What the capacity of a whole step has in common, worked out once before the lanes start. Plain data:
// the lanes of all processors read it.
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

template <class Real>
struct GrainLanes {
  Real stage;      // k of T
  Real suspended;  // ca / T^1.5
  Real bedLoad;    // qb / (T^1.5 U / Y)
  Real logGrain;   // ln(4 / D90)
};

template <class Real>
struct DepthLanes {
  Real depth;
  Real logDepth;  // ln h
  Real logLevel;  // ln r
  Real logAbove;  // ln(1 - r)
  Real logRough;  // X
};

template <class Real>
struct SuspensionLanes {
  Real load;  // U h rho_s F: qs / ca
  MaskOf<Real> ordinary;
};

template <class Real>
struct CapacityLanes {
  Real suspended;
  Real bedLoad;
  MaskOf<Real> ordinary;
};

// Shields' curve as a power c D*^k of the grain size, in its five pieces.
template <class Real>
[[gnu::always_inline]] inline Real powerOfShields(Real grainSize) {
  Real power = all<Real>(-1.0);
  power = grainSize <= 4.0 ? power : all<Real>(-0.64);
  power = grainSize <= 10.0 ? power : all<Real>(-0.1);
  power = grainSize <= 20.0 ? power : all<Real>(0.29);
  return grainSize <= 150.0 ? power : all<Real>(0.0);
}

template <class Real>
[[gnu::always_inline]] inline Real logarithmOfShields(Real grainSize, const CapacityTerms& p) {
  Real factor = all<Real>(p.logShields[0]);
  factor = grainSize <= 4.0 ? factor : all<Real>(p.logShields[1]);
  factor = grainSize <= 10.0 ? factor : all<Real>(p.logShields[2]);
  factor = grainSize <= 20.0 ? factor : all<Real>(p.logShields[3]);
  return grainSize <= 150.0 ? factor : all<Real>(p.logShields[4]);
}

template <class Real>
[[gnu::always_inline]] inline MaskOf<Real> isOrdinaryGrain(Real d50, Real d90) {
  return (d50 > 1e-6) & (d50 < 1.0) & (d90 > 1e-6) & (d90 < 1.0);
}

// D*^-0.3 and 1 / (D* theta_cr) = 1 / (c D*^(1 + k)) from one logarithm.
template <class Real>
[[gnu::always_inline]] inline GrainLanes<Real> grainLanes(Real d50, Real d90,
                                                          const CapacityTerms& p) {
  const Real grainSize = d50 * p.grainScale;
  const Real log = logarithm(grainSize);
  const Real power = exponential(log * -0.3);
  const Real shields = logarithmOfShields(grainSize, p) + (powerOfShields(grainSize) + 1.0) * log;
  return {p.stage * exponential(-shields), p.suspended * d50 * power, p.bedLoad * d50 * power,
          p.logFour - logarithm(d90)};
}

template <class Real>
[[gnu::always_inline]] inline DepthLanes<Real> depthLanes(Real depth, const CapacityTerms& p) {
  const Real log = logarithm(depth);
  return {depth, log, p.logReference - log, logarithm(depth - p.referenceLevel) - log,
          log + p.logRoughness};
}

// Near Z = 1.2 numerator and denominator both vanish, and near X = 0 the roughness is as large as the
// depth: too little of either is left for these forms.
template <class Real>
[[gnu::always_inline]] inline SuspensionLanes<Real> suspensionLanes(const DepthLanes<Real>& d,
                                                                    Real speed, Real perSpeed,
                                                                    const CapacityTerms& p) {
  const Real z = atMost(p.suspension * d.logRough * perSpeed, all<Real>(25.0));
  const Real distance = 1.2 - z;
  const Real profile = (exponential(z * (d.logLevel - d.logAbove)) -
                        exponential(1.2 * d.logLevel - z * d.logAbove)) /
                       distance;
  return {speed * d.depth * p.density * profile,
          (d.logRough > 0.25) & ((distance > 1e-4) | (distance < -1e-4))};
}

template <class Real>
[[gnu::always_inline]] inline CapacityLanes<Real> capacityLanes(const DepthLanes<Real>& d,
                                                                const SuspensionLanes<Real>& s,
                                                                Real speed,
                                                                const GrainLanes<Real>& grain) {
  const Real profile = d.logDepth + grain.logGrain;  // Y
  const Real shear = speed / profile;                // U / Y
  const Real stage = atLeast(grain.stage * shear * shear - 1.0, all<Real>(kSmallestStage));
  const Real power = stage * squareRoot(stage);
  const Real concentration = grain.suspended * power;
  const Real suspended = s.load * concentration;
  const Real bedLoad = grain.bedLoad * power * atLeast(shear, all<Real>(kSmallestShear));
  return {suspended, bedLoad,
          s.ordinary & (profile > 0.25) & (concentration < 0.99 * kLargestConcentration) &
              (suspended < 0.99 * kLargestTransport) & (bedLoad < 0.99 * kLargestTransport)};
}

}  // namespace nivaro
