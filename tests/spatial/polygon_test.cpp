#include "spatial/polygon.hpp"

#include <gtest/gtest.h>

#include <algorithm>

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

}  // namespace
}  // namespace nivaro
