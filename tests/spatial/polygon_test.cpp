#include "spatial/polygon.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <vector>

#include "platform/support.hpp"
#include "spatial/interpolation.hpp"
#include "spatial/random_integers.hpp"

namespace nivaro {
namespace {

struct Polygons {
  std::vector<double> x, y;
  std::vector<std::int32_t> ends;

  void add(double px, double py) {
    x.push_back(px);
    y.push_back(py);
  }
  // The closing vertex, and the closing slot, which must not count: far away.
  void close(std::size_t first) {
    add(x[first], y[first]);
    ends.push_back(static_cast<std::int32_t>(x.size()));
    add(-50, 50);
  }
};

Polygons randomPolygons(test::RandomIntegers& random) {
  Polygons polygons;
  for (int p = random.between(1, 3); p > 0; --p) {
    const std::size_t first = polygons.x.size();
    for (int k = random.between(1, 6); k > 0; --k)
      polygons.add(random.between(0, 6), random.between(0, 6));
    polygons.close(first);
  }
  return polygons;
}

enum class Place { Inside, Outside, Boundary };

// Even-odd rule with half-open edges, in integers.
Place placeOf(int px, int py, const Polygons& polygons) {
  bool inside = false;
  std::size_t first = 0;
  for (const std::int32_t end : polygons.ends) {
    for (std::size_t k = first; k + 1 < static_cast<std::size_t>(end); ++k) {
      const double ax = polygons.x[k], ay = polygons.y[k];
      const double bx = polygons.x[k + 1], by = polygons.y[k + 1];
      const double side = (bx - ax) * (py - ay) - (by - ay) * (px - ax);
      const bool inBox = px >= std::min(ax, bx) && px <= std::max(ax, bx) &&
                         py >= std::min(ay, by) && py <= std::max(ay, by);
      if (side == 0 && inBox) return Place::Boundary;
      // Up-going edges have the points to their right on the negative side.
      if (ay <= py && by > py && side < 0) inside = !inside;
      if (by <= py && ay > py && side > 0) inside = !inside;
    }
    first = static_cast<std::size_t>(end) + 1;
  }
  return inside ? Place::Inside : Place::Outside;
}

TEST(Polygon, RayCountsAVertexOnItsLineOnceOrNotAtAll) {
  test::RandomIntegers random(2);
  for (int n = 0; n < 30000; ++n) {
    const Polygons set = randomPolygons(random);
    const int px = random.between(0, 6);
    const int py = random.between(0, 6);
    const Place place = placeOf(px, py, set);
    if (place == Place::Boundary) continue;
    const auto inside = insidePolygon(px, py, set.x, set.y, 0, set.ends);
    ASSERT_EQ(inside.value(), place == Place::Inside) << n;
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
  EXPECT_TRUE(insidePolygon(0, 0, c, c, 1, std::array{5, 11}));
  EXPECT_FALSE(insidePolygon(0, 0, c, c, 1, std::array{5}));
  EXPECT_FALSE(insidePolygon(0, 0, c, c, 1, std::span<const std::int32_t>()));
  EXPECT_TRUE(insidePolygon(0, 0, c, c, 1, std::array{99}));
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
