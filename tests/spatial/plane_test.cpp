#include "spatial/plane.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "spatial/random_integers.hpp"
#include "spatial/section.hpp"
#include "spatial/segments.hpp"

namespace nivaro {
namespace {

TEST(Plane, DistancesHaveTheirZeroTolerances) {
  EXPECT_EQ(distance(0, 0, 3, -4), 5);
  EXPECT_EQ(distance(0, 0, 1e-6, 0), 1e-6);
  EXPECT_EQ(distance(0, 0, 0.9e-6, 0.9e-6), 0);
  EXPECT_EQ(vectorMagnitude(1e-6, -1e-6), 0);
  EXPECT_EQ(vectorMagnitude(0, 1.1e-6), 1.1e-6);
  EXPECT_TRUE(samePoint(1, 1, 1.4, 0.6, 0.5));
  EXPECT_FALSE(samePoint(1, 1, 1.5, 1, 0.5));
}

TEST(Plane, AngleIsTheSmallerOneBetweenDirections) {
  EXPECT_DOUBLE_EQ(angle2d(0, 0, 1, 0, 5, 5, 6, 6), 45);
  EXPECT_DOUBLE_EQ(angle2d(0, 0, -1, -1, 0, 0, -1, 1), 90);  // over the jump from 180 to -180
  EXPECT_EQ(angle2d(0, 0, 1e-7, 1e-7, 0, 0, 1, 0), 0);
}

TEST(Plane, ShiftTurnsIntoTheFrameOfTheGrid) {
  // Along the direction (3, 4), and to its left, in the third quadrant too.
  const std::array x{1000003.0, 999996.0}, y{7000004.0, 7000003.0};
  std::array<double, 2> xs{}, ys{};
  geoShift(x, y, 1000000, 7000000, std::atan2(4, 3), xs, ys);
  EXPECT_NEAR(xs[0], 5, 1e-8);
  EXPECT_NEAR(ys[0], 0, 1e-8);
  EXPECT_NEAR(xs[1], 0, 1e-8);
  EXPECT_NEAR(ys[1], 5, 1e-8);
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
      ASSERT_FALSE(found || xi != -77 || yi != -77);
    } else if (!parallel) {
      ASSERT_TRUE(found);
      const double along = static_cast<double>(s1) / (s1 - s2);
      ASSERT_NEAR(xi, x1 + along * (x2 - x1), 1e-9);
      ASSERT_NEAR(yi, y1 + along * (y2 - y1), 1e-9);
    }
  }
}

TEST(Section, PipeHasASurfaceBetweenEmptyAndFull) {
  EXPECT_DOUBLE_EQ(circleWidth(5, 1), 6);  // 2 sqrt(25 - 16)
  EXPECT_EQ(circleWidth(2, 0.9e-5), 0);
  EXPECT_GT(circleWidth(2, 1e-5), 0);
  EXPECT_EQ(circleWidth(2, 4 - 0.9e-5), 0);
}

// 4 m of bed that rises by 3 m, 5 m along itself, and a flat one.
TEST(Section, BedIsWetUpToTheLevel) {
  const struct {
    double z1, z2, level, area, width, perimeter;
  } cases[] = {
      {0, 3, -1, 0, 0, 0},      {0, 3, 0, 0, 0, 0},
      {0, 3, 1.5, 1.5, 2, 2.5},                       // a wedge of half the bed: 1.5 * 2 / 2
      {0, 3, 3, 6, 4, 5},       {0, 3, 4, 10, 4, 5},  // (4 - 1.5) * 4
      {2, 2, 2, 0, 4, 4},
  };
  for (const auto& [z1, z2, level, area, width, perimeter] : cases)
    for (const WetSection& wet :
         {hydParam(7, z1, 11, z2, level, 1), hydParam(7, z2, 11, z1, level, 1)}) {
      EXPECT_DOUBLE_EQ(wet.area, area) << level;
      EXPECT_DOUBLE_EQ(wet.width, width) << level;
      EXPECT_DOUBLE_EQ(wet.perimeter, perimeter) << level;
    }
  EXPECT_EQ(hydParam(0, 0, 4, 0, 2, 0).width, 0);  // switched off

  const auto [lower, upper] = hydParam2(7, 0, 1, 11, 3, 1, 2);
  EXPECT_DOUBLE_EQ(lower.area, 2.5);         // (2 - 0.75) * 2
  EXPECT_DOUBLE_EQ(upper.width, 2.0 / 3.0);  // 0.5 / 1.5 of 2
  EXPECT_EQ(hydParam2(0, 0, 1, 4, 0, -1, 2).first.area, 4);
  EXPECT_EQ(hydParam2(0, 0, 1, 4, 0, -1, 2).second.area, 0);
}

}  // namespace
}  // namespace nivaro
