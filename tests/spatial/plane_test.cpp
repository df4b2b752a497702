#include "spatial/plane.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <numbers>
#include <vector>

#include "spatial/random_integers.hpp"
#include "spatial/section.hpp"
#include "spatial/segments.hpp"

namespace nivaro {
namespace {

TEST(Plane, DistancesHaveTheirZeroTolerances) {
  EXPECT_EQ(distance(0, 0, 3, -4), 5);
  EXPECT_EQ(distance(0, 0, 1e-6, 0), 1e-6);
  EXPECT_EQ(distance(0, 0, 0.9e-6, 0.9e-6), 0);
  EXPECT_EQ(vectorMagnitude(-3, 4), 5);
  EXPECT_EQ(vectorMagnitude(1e-6, -1e-6), 0);
  EXPECT_EQ(vectorMagnitude(0, 1.1e-6), 1.1e-6);
  EXPECT_TRUE(samePoint(1, 1, 1.4, 0.6, 0.5));
  EXPECT_FALSE(samePoint(1, 1, 1.5, 1, 0.5));
}

TEST(Plane, PipeSurfaceIsZeroWhereEmptyOrFull) {
  EXPECT_EQ(circleWidth(2, 2), 4);
  EXPECT_DOUBLE_EQ(circleWidth(5, 1), 6);  // 2 sqrt(25 - 16)
  EXPECT_EQ(circleWidth(2, 0.9e-5), 0);
  EXPECT_GT(circleWidth(2, 1e-5), 0);
  EXPECT_EQ(circleWidth(2, 4 - 0.9e-5), 0);
}

TEST(Plane, AngleIsTheSmallerOneBetweenDirections) {
  EXPECT_DOUBLE_EQ(angle2d(0, 0, 1, 0, 5, 5, 6, 6), 45);
  EXPECT_DOUBLE_EQ(angle2d(0, 0, -1, -1, 0, 0, -1, 1), 90);  // over the jump from 180 to -180
  EXPECT_DOUBLE_EQ(angle2d(0, 0, 1, 0, 0, 0, -1, 0), 180);
  EXPECT_DOUBLE_EQ(angle2d(0, 0, 0, 7, 0, 0, 1, 0), 90);
  EXPECT_EQ(angle2d(0, 0, 1e-7, 1e-7, 0, 0, 1, 0), 0);
}

TEST(Plane, ShiftTurnsIntoTheFrameOfTheGrid) {
  const std::vector<double> x{1000000.5, 7, -3};
  const std::vector<double> y{6000000.25, 8, 2};
  std::vector<double> xs(3);
  std::vector<double> ys(3);
  for (const double angle : {0.0, std::numbers::pi / 2, -1.1, 4.0}) {
    geoShift(x, y, 7, 7, angle, xs, ys);

    for (std::size_t i = 0; i < x.size(); ++i) {
      // Turning a vector back by an angle divides it by the unit vector of that angle.
      const auto turned = std::complex(x[i] - 7, y[i] - 7) / std::polar(1.0, angle);
      EXPECT_NEAR(xs[i], turned.real(), 1e-8);
      EXPECT_NEAR(ys[i], turned.imag(), 1e-8);
    }
  }
  geoShift(x, y, 7, 7, std::numbers::pi / 2, xs, ys);
  EXPECT_NEAR(xs[1], 1, 1e-12);
  EXPECT_NEAR(ys[1], 0, 1e-12);
}

// Twice the signed area of a triangle of integer points.
int area2(int ax, int ay, int bx, int by, int cx, int cy) {
  return ax * (by - cy) + bx * (cy - ay) + cx * (ay - by);
}

int sign(double v) {
  return v > 0 ? 1 : v < 0 ? -1 : 0;
}

// The position of the crossing along A is s1 / (s1 - s2) with the signed areas of its ends over B:
// above 0 and at most 1 exactly when the second end is on the line of B or they are on two sides.
bool onFirst(int s1, int s2) {
  return s2 == 0 || s1 * s2 < 0;
}

TEST(Segments, AgreeWithSignedAreasOnAllKindsOfTies) {
  test::RandomIntegers random(1);
  for (int n = 0; n < 200000; ++n) {
    int p[8];
    for (int& c : p) c = random.between(-3, 3);
    const auto [x1, y1, x2, y2, x3, y3, x4, y4] = p;
    const int s1 = area2(x3, y3, x4, y4, x1, y1);
    const int s2 = area2(x3, y3, x4, y4, x2, y2);
    const int s3 = area2(x1, y1, x2, y2, x3, y3);
    const int s4 = area2(x1, y1, x2, y2, x4, y4);
    const bool parallel = s1 == s2;
    const int code =
        parallel ? (s1 == 0 && s3 == 0 ? -1 : 0) : onFirst(s1, s2) * 1 + onFirst(s3, s4) * 2;

    ASSERT_EQ(intersectLineV2(x1, y1, x2, y2, x3, y3, x4, y4), parallel || code > 0 ? code : 4)
        << x1 << ' ' << y1 << ' ' << x2 << ' ' << y2 << ' ' << x3 << ' ' << y3 << ' ' << x4 << ' '
        << y4;
    ASSERT_EQ(intersectLine(x1, y1, x2, y2, x3, y3, x4, y4), s1 * s2 <= 0 && s3 * s4 <= 0);
    ASSERT_EQ(sign(sameSide(x1, y1, x2, y2, x3, y3, x4, y4)), sign(1.0 * s3 * s4));
    ASSERT_EQ(pointPosition(x1, y1, x2, y2, x3, y3), s3 >= 0 ? -1 : 1);
    ASSERT_EQ(intersectPoint(x1, y1, x2, y2, x3, y3), s3 == 0);

    double xi = -77;
    double yi = -77;
    const bool bothVertical = x1 == x2 && x3 == x4;
    const bool found = intersectionPoint(x1, y1, x2, y2, x3, y3, x4, y4, xi, yi);
    // Two points that coincide make a vertical line, which crosses any other that is not.
    if (parallel && (bothVertical || (x1 != x2 && x3 != x4))) {
      ASSERT_FALSE(found);
      ASSERT_EQ(xi, -77);
      ASSERT_EQ(yi, -77);
    } else if (!parallel) {
      ASSERT_TRUE(found);
      const double along = static_cast<double>(s1) / (s1 - s2);
      ASSERT_NEAR(xi, x1 + along * (x2 - x1), 1e-9);
      ASSERT_NEAR(yi, y1 + along * (y2 - y1), 1e-9);
    }
  }
}

// By slices: the exact area of a straight bed under water is the sum of many thin columns.
WetSection bySlices(double x1, double z1, double x2, double z2, double level) {
  constexpr int kSlices = 100000;
  const double dx = (x2 - x1) / kSlices;
  WetSection wet;
  for (int k = 0; k < kSlices; ++k) {
    const double depth = level - (z1 + (z2 - z1) * (k + 0.5) / kSlices);
    if (depth < 0) continue;
    wet.area += depth * dx;
    wet.width += dx;
    wet.perimeter += std::hypot(dx, (z2 - z1) / kSlices);
  }
  return wet;
}

TEST(Section, WetGeometryIsThatOfThinSlices) {
  for (const double level : {-1.0, 0.5, 1.7, 2.0, 9.0}) {
    for (const auto& [z1, z2] : {std::pair(0.0, 2.0), std::pair(2.0, -0.5), std::pair(1.0, 1.0)}) {
      const WetSection found = hydParam(3, z1, 8, z2, level, 1);
      const WetSection expected = bySlices(3, z1, 8, z2, level);
      EXPECT_NEAR(found.area, expected.area, 1e-3);
      EXPECT_NEAR(found.width, expected.width, 1e-3);
      EXPECT_NEAR(found.perimeter, expected.perimeter, 1e-3);

      const auto [first, second] = hydParam2(3, z1, 1, 8, z2, 1, level);
      EXPECT_NEAR(first.area + second.area, expected.area, 1e-3);
      EXPECT_NEAR(first.width, hydParam(3, z1, 5.5, (z1 + z2) / 2, level, 1).width, 1e-12);
    }
  }
}

TEST(Section, EndsAtTheLevelAreWetAndASwitchedOffPieceIsDry) {
  const WetSection full = hydParam(0, 2, 4, 2, 2, 1);
  EXPECT_EQ(full.area, 0);
  EXPECT_EQ(full.width, 4);
  EXPECT_EQ(full.perimeter, 4);
  EXPECT_EQ(hydParam(0, 0, 4, 0, 2, 0).width, 0);
  EXPECT_EQ(hydParam2(0, 0, 1, 4, 0, -1, 2).first.area, 4);
  EXPECT_EQ(hydParam2(0, 0, 1, 4, 0, -1, 2).second.area, 0);
}

}  // namespace
}  // namespace nivaro
