#include "morphology/transport_capacity.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "morphology/test_domain.hpp"

namespace nivaro {
namespace {

const double kNoNumber = std::numeric_limits<double>::quiet_NaN();

// Sand of 0.2 mm in a rough channel: the worked example at depth 1 m and speed 1 m/s.
MorphologyParameters sand() {
  return TestDomain(3, 3).parameters;
}

Transport capacityOf(double depth, double speed, const MorphologyParameters& p = sand()) {
  return transportCapacity(depth, speed, grainTerms(0.0002, p), 0.0003, p);
}

TEST(TransportCapacity, WorkedExample) {
  // D* = 5.05919, theta_cr = 0.0496039, Lc = log10(240) = 2.38021, Lg = log10(13333.3) = 4.12494,
  // mu = (Lc/Lg)^2 = 0.332963, tau' = 30 mu / Lc^2 = 1.76314, T = 9.97961, u* = 0.0731049,
  // Z = 0.651380, F = 0.216016.
  const Transport q = capacityOf(1.0, 1.0);

  EXPECT_NEAR(q.referenceConcentration, 0.0011630, 5e-8);
  EXPECT_NEAR(q.suspended, 0.66578, 5e-6);
  EXPECT_NEAR(q.bedLoad, 0.10785, 5e-6);
}

TEST(TransportCapacity, BelowTheThresholdATraceRemains) {
  // At 0.2 m/s T is floored at 1e-4 and u*' at 0.01 m/s:
  // qb = 0.25 x 0.0002 x 0.01 x 1e-6 / 5.05919^0.3 x 2650 = 1.325e-9 / 1.62639.
  EXPECT_NEAR(capacityOf(1.0, 0.2).bedLoad, 8.1469e-10, 1e-14);

  // At 0.0011 m/s Z would be 592 and is held at 25: F = (0.05^25 - 0.05^1.2) / (0.95^25 (1.2 - 25))
  // = 0.0274640 / 6.60181 = 0.00416003, ca = 0.015 x 0.004 x 1e-6 / 1.62639, qs = 0.0011 x 2650 ca
  // F.
  EXPECT_NEAR(capacityOf(1.0, 0.0011).suspended, 4.4737e-13, 1e-17);
}

TEST(TransportCapacity, GuardsAreClosedAtTheirEdge) {
  struct Case {
    double depth, speed, referenceLevel, mixingLayer;
    bool moves;
  };
  const Case cases[] = {
      {1.0, 0.001, 0.01, 0.01, false},  {1.0, 0.0011, 0.01, 0.01, true},
      {0.05, 1.0, 0.01, 0.01, false},   {0.0501, 1.0, 0.01, 0.01, true},
      {0.3125, 1.0, 0.25, 0.01, false}, {0.3126, 1.0, 0.25, 0.01, true},
      {0.3125, 1.0, 0.01, 0.25, false}, {0.3126, 1.0, 0.01, 0.25, true},
  };
  for (const auto& [depth, speed, level, layer, moves] : cases) {
    MorphologyParameters p = sand();
    p.referenceLevel = level;
    p.mixingLayerThickness = layer;
    const Transport q = capacityOf(depth, speed, p);
    EXPECT_EQ(q.suspended > 0.0 && q.bedLoad > 0.0, moves) << depth << " " << speed;
    EXPECT_EQ(q.referenceConcentration > 0.0, moves) << depth << " " << speed;
  }
}

TEST(TransportCapacity, ShieldsBandsAreClosedAbove) {
  struct Case {
    double edge, at, beyond;
  };
  const Case cases[] = {
      {4.0, 0.24 / 4.0, 0.14 * std::pow(4.0, -0.64)},
      {10.0, 0.14 * std::pow(10.0, -0.64), 0.04 * std::pow(10.0, -0.1)},
      {20.0, 0.04 * std::pow(20.0, -0.1), 0.013 * std::pow(20.0, 0.29)},
      {150.0, 0.013 * std::pow(150.0, 0.29), 0.055},
  };
  // With these densities and the fixed viscosity D* is D50 times this number.
  const MorphologyParameters p = sand();
  const double scale = std::cbrt(1650.0 / 1000.0 * 9.81 / (0.000001 * 0.000001));
  for (const auto& [edge, at, beyond] : cases) {
    double d50 = edge / scale;
    while (d50 * scale > edge) d50 = std::nextafter(d50, 0.0);
    while (std::nextafter(d50, 1.0) * scale <= edge) d50 = std::nextafter(d50, 1.0);

    EXPECT_EQ(d50 * scale, edge);
    EXPECT_DOUBLE_EQ(grainTerms(d50, p).criticalShields, at);
    EXPECT_NEAR(grainTerms(std::nextafter(d50, 1.0), p).criticalShields, beyond, 1e-12);
  }
}

TEST(TransportCapacity, EndsAtOneHundred) {
  // At 20 m/s ca = 10.7 and both transports are beyond the cap.
  const Transport capped = capacityOf(1.0, 20.0);
  EXPECT_NEAR(capped.referenceConcentration, 10.7337, 1e-4);
  EXPECT_EQ(capped.suspended, 100.0);
  EXPECT_EQ(capped.bedLoad, 100.0);

  // A reference level of 0.02 m makes ca 2.5 times as large, beyond 20: then not even a profile
  // that is no number counts.
  MorphologyParameters p = sand();
  p.referenceLevel = 0.02;
  p.fallVelocity = kNoNumber;
  const Transport off = capacityOf(1.0, 20.0, p);
  EXPECT_NEAR(off.referenceConcentration, 26.8342, 1e-3);
  EXPECT_EQ(off.suspended, 100.0);
  EXPECT_EQ(off.bedLoad, 100.0);
}

TEST(TransportCapacity, UnsetParametersAreUsedAsTheyStand) {
  MorphologyParameters noLevel = sand();
  noLevel.referenceLevel = 0.0;
  EXPECT_TRUE(std::isinf(capacityOf(1.0, 1.0, noLevel).referenceConcentration));
  EXPECT_EQ(capacityOf(1.0, 1.0, noLevel).suspended, 100.0);

  // 12 h / 0 is infinite, and the stress infinite over infinite.
  MorphologyParameters noRoughness = sand();
  noRoughness.currentRelatedRoughness = 0.0;
  EXPECT_TRUE(std::isnan(capacityOf(1.0, 1.0, noRoughness).suspended));
  EXPECT_TRUE(std::isnan(capacityOf(1.0, 1.0, noRoughness).bedLoad));
}

}  // namespace
}  // namespace nivaro
