#include "spatial/region_fill.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

#include "spatial/random_integers.hpp"

namespace nivaro {
namespace {

struct IntegerPoint {
  int x, y;
};
using Ring = std::vector<IntegerPoint>;
using Elements = std::set<std::pair<int, int>>;

// Cells are 2 x 2, offsets 2: in field coordinates, 5 further on, element (i, j) has its centre at
// (2 j, 2 i).
constexpr int kSize = 2;
constexpr int kShift = 5;
constexpr GridFrame kFrame{.dx = kSize, .dy = kSize};

Elements filled(const std::vector<Ring>& rings, int n, int m, RegionFill& fill) {
  std::vector<double> x, y;
  std::vector<std::int32_t> ends;
  for (const Ring& ring : rings) {
    for (const auto& [px, py] : ring) {
      x.push_back(px);
      y.push_back(py);
    }
    ends.push_back(static_cast<std::int32_t>(x.size()));
    x.push_back(ring.front().x);
    y.push_back(ring.front().y);
  }
  const auto cells = fill.find(x, y, ends, kFrame, n, m).value();
  Elements elements;
  auto inside = cells.inside.begin();
  for (int j = cells.range.firstJ; j <= cells.range.lastJ; ++j)
    for (int i = cells.range.firstI; i <= cells.range.lastI; ++i)
      if (*inside++ != 0) elements.emplace(i, j);
  return elements;
}

// The rules once more, centre by centre: inside when an odd number of edges, lower ends left out,
// crosses the centre's row to its left. In integers.
bool isInside(const std::vector<Ring>& rings, int i, int j) {
  const int cx = kSize * j - kShift;
  const int cy = kSize * i - kShift;
  int crossings = 0;
  for (const Ring& ring : rings)
    for (std::size_t k = 1; k < ring.size(); ++k) {
      IntegerPoint low = ring[k - 1], high = ring[k];
      if (low.y > high.y) std::swap(low, high);
      if (!(low.y < cy && cy <= high.y)) continue;
      const int rise = high.y - low.y;
      if (low.x * rise + (cy - low.y) * (high.x - low.x) < cx * rise) ++crossings;
    }
  return crossings % 2 == 1;
}

// Only the elements from 2 to 2 before the field's end, and none right of the region's box: an open
// ring would otherwise fill its rows to the end.
Elements expected(const std::vector<Ring>& rings, int n, int m) {
  int maxX = rings[0][0].x;
  for (const Ring& ring : rings)
    for (const IntegerPoint& p : ring) maxX = std::max(maxX, p.x);
  const int lastJ = std::min((maxX + kShift) / kSize + 1, m - 2);
  Elements elements;
  for (int i = 2; i <= n - 2; ++i)
    for (int j = 2; j <= lastJ; ++j)
      if (isInside(rings, i, j)) elements.emplace(i, j);
  return elements;
}

TEST(RegionFill, FollowsItsRulesOnAllKindsOfTies) {
  test::RandomIntegers random(5);
  RegionFill fill;
  for (int count = 0; count < 20000; ++count) {
    const int n = random.between(4, 14), m = random.between(4, 14);
    std::vector<Ring> rings(static_cast<std::size_t>(random.between(1, 4)));
    const bool closed = random.between(0, 9) > 0;
    for (Ring& ring : rings) {
      for (int k = random.between(1, 7); k > 0; --k)
        ring.push_back({random.between(-9, 26), random.between(-9, 26)});
      if (closed) ring.push_back(ring.front());
    }
    ASSERT_EQ(filled(rings, n, m, fill), expected(rings, n, m)) << count;
  }
}

// Half these sizes, moved by two and a half of them, lie one rounding error below three times the
// size, the centre of row 3, but divided by the size they are 3.
TEST(RegionFill, AVertexThatRoundsOntoACentreLineLosesNoCrossing) {
  RegionFill fill;
  for (const double size : {1.3, 2.1, 2.6, 4.2, 4.7}) {
    std::vector<double> x{1.2, 3.2, 6.2, 6.2, 3.2, 1.2, 1.2};
    std::vector<double> y{0.5, -3.0, -3.0, 4.0, 4.0, 0.5, 0.5};
    for (double& c : x) c *= size;
    for (double& c : y) c *= size;
    const auto [range, inside] =
        fill.find(x, y, std::vector<std::int32_t>{6}, {.dx = size, .dy = size}, 12, 12).value();
    // Between 1.2 and 6.2 sizes lie the centres of columns 4 to 8.
    const auto rows = static_cast<std::size_t>(range.lastI - range.firstI + 1);
    auto at = static_cast<std::size_t>(3 - range.firstI);
    for (int j = range.firstJ; j <= range.lastJ; ++j, at += rows)
      EXPECT_EQ(inside[at] != 0, j >= 4 && j <= 8) << size << " column " << j;
  }
}

TEST(RegionFill, VerticesBehindTheLastPolygonAreReported) {
  RegionFill fill;
  std::vector<double> x{0, 8, 8, 0, 0, 0, 1, 2, 3};
  std::vector<double> y{0, 0, 8, 8, 0, 0, 1, 2, 3};
  const auto bad = fill.find(x, y, std::vector<std::int32_t>{5}, kFrame, 20, 20);
  ASSERT_FALSE(bad);
  EXPECT_TRUE(bad.report().line1.starts_with(
      "Invalid number of polygons in region sent to grid_inside_polygon routine [1] - contact "));
  EXPECT_EQ(bad.report().blankLines, 1);
}

}  // namespace
}  // namespace nivaro
