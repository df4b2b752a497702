#include "spatial/polygon.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <vector>

#include "platform/support.hpp"
#include "spatial/interpolation.hpp"
#include "spatial/rings.hpp"

namespace nivaro {
namespace {

bool isOnFlatEdge(const test::Rings& rings, double px, int py) {
  for (const test::Ring& ring : rings)
    for (std::size_t k = 1; k < ring.size(); ++k) {
      const auto [low, high] = std::minmax(ring[k - 1].x, ring[k].x);
      if (ring[k - 1].y == py && ring[k].y == py && low <= px && px <= high) return true;
    }
  return false;
}

TEST(Polygon, RayCountsAVertexOnItsLineOnceOrNotAtAll) {
  test::RandomIntegers random(2);
  for (int n = 0; n < 30000; ++n) {
    const test::Rings rings = test::randomRings(random, 0, 6, true);
    const test::Vertices set(rings);
    const double px = random.between(0, 6) + 0.01;  // other edges cross a row at sixths
    const int py = random.between(0, 6);
    if (isOnFlatEdge(rings, px, py)) continue;
    ASSERT_EQ(insidePolygon(px, py, set.x, set.y, 0, set.ends).value(),
              test::isInside(rings, px, py))
        << n;
  }
}

TEST(Polygon, LeftBoundaryIsInsideRightBoundaryOutside) {
  const std::vector<double> x{2, 4, 2, 0, 2}, y{0, 2, 4, 2, 0};
  const auto inside = [&](double px, double py) {
    return insidePolygon(px, py, x, y, 0, std::array{5}).value();
  };
  EXPECT_TRUE(inside(0, 2));  // corners
  EXPECT_FALSE(inside(4, 2));
  EXPECT_FALSE(inside(2, 4));  // where the boundary turns back it is met twice
  EXPECT_TRUE(inside(1, 1));   // sides
  EXPECT_FALSE(inside(3, 1));
}

TEST(Polygon, VerticesBehindTheLastPolygonAreReported) {
  const std::vector<double> c(12, 1.0);
  const auto isReported = [&](std::size_t vertices, std::span<const std::int32_t> ends) {
    const auto first = std::span(c).first(vertices);
    return !insidePolygon(0, 0, first, first, 1, ends);
  };
  EXPECT_FALSE(isReported(12, std::array{5, 11}));
  EXPECT_FALSE(isReported(12, std::array{99}));
  EXPECT_FALSE(isReported(7, std::array{5}));  // a vertex alone is no edge
  EXPECT_TRUE(isReported(8, std::array{5}));
  EXPECT_TRUE(isReported(12, {}));
  EXPECT_EQ(insidePolygon(0, 0, c, c, 1, std::array{5}).report().line1,
            "Invalid number of polygons in region sent to inside_polygon routine [1] - contact " +
                std::string(kSupportAddress));
}

using Corners = std::array<double, 3>;

// Corners on an integer grid, and a weighted mean of them, which is inside for certain.
TEST(Interpolation, TriangleGivesThePlaneThroughItsCorners) {
  test::RandomIntegers random(3);
  for (int n = 0; n < 2000; ++n) {
    Corners x{}, y{}, z{};
    double px = 0, py = 0, weights = 0;
    for (std::size_t i = 0; i < 3; ++i) {
      x[i] = random.between(0, 9);
      y[i] = random.between(0, 9);
      z[i] = 2 * x[i] - 3 * y[i] + 1;
      const int weight = random.between(1, 5);
      px += weight * x[i];
      py += weight * y[i];
      weights += weight;
    }
    if ((x[1] - x[0]) * (y[2] - y[0]) == (x[2] - x[0]) * (y[1] - y[0])) continue;
    px /= weights;
    py /= weights;

    double value = 0;
    ASSERT_TRUE(interpolateTriangle(px, py, x, y, z, value));
    ASSERT_NEAR(value, 2 * px - 3 * py + 1, 1e-6);
    ASSERT_NEAR(interpolateTriangleNoChecks(px, py, x, y, z), 2 * px - 3 * py + 1, 1e-6);
    double element = 0;
    ASSERT_TRUE(interpolateElement(px, py, x, y, z, 0, element).value());
    ASSERT_EQ(element, value);
  }
}

TEST(Interpolation, TriangleHasNoValueOnParallelLinesAndMeansOnPoints) {
  double value = 0;
  EXPECT_FALSE(interpolateTriangle(5, 2, Corners{0, 2, 0}, Corners{0, 0, 2}, Corners{}, value));
  EXPECT_EQ(value, kNoValue);

  // The foot is the double corner, of value (2 + 4) / 2; the point lies half way to it from 1.
  EXPECT_TRUE(interpolateTriangle(0.5, 0, Corners{1, 1, 0}, Corners{}, Corners{2, 4, 1}, value));
  EXPECT_EQ(value, 2);
}

TEST(Interpolation, ElementTakesTheMeanOfTheTrianglesAroundThePoint) {
  const std::array<double, 4> x{0, 1, 1, 0}, y{0, 0, 1, 1}, z{0, 1, 5, 2};
  double value = 7;
  // The centre lies on the left boundary of the triangles without corner 1 and without corner 4,
  // hence in them: there (1 + 2) / 2 and (0 + 5) / 2. Of the other two it is on the right boundary.
  EXPECT_TRUE(interpolateElement(0.5, 0.5, x, y, z, 0, value).value());
  EXPECT_EQ(value, 2);
  EXPECT_FALSE(interpolateElement(1.5, 0.5, x, y, z, 0, value).value());
  EXPECT_EQ(value, kNoValue);

  value = 7;
  const std::span<const double> sx(x), sy(y), sz(z);
  EXPECT_FALSE(interpolateElement(2, 2, sx.first(3), sy.first(3), sz.first(3), 0, value).value());
  EXPECT_FALSE(interpolateElement(0, 0, sx.first(2), sy.first(2), sz.first(2), 0, value).value());
  EXPECT_EQ(value, 7);
}

}  // namespace
}  // namespace nivaro
