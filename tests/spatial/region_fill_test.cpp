#include "spatial/region_fill.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

#include "spatial/rings.hpp"

namespace nivaro {
namespace {

using Elements = std::set<std::pair<int, int>>;

// Cells are 2 x 2, offsets 2: in field coordinates, 5 further on, element (i, j) has its centre at
// (2 j, 2 i).
constexpr int kSize = 2;
constexpr int kShift = 5;
constexpr GridFrame kFrame{.dx = kSize, .dy = kSize};

Elements filled(const test::Rings& rings, int n, int m, RegionFill& fill) {
  test::Vertices set(rings);
  const auto [range, marks] = fill.find(set.x, set.y, set.ends, kFrame, n, m).value();
  Elements elements;
  auto inside = marks.begin();
  for (int j = range.firstJ; j <= range.lastJ; ++j)
    for (int i = range.firstI; i <= range.lastI; ++i)
      if (*inside++ != 0) elements.emplace(i, j);
  return elements;
}

// The rules once more, centre by centre. Only the elements from 2 to 2 before the field's end, and
// none right of the region's box: an open ring would otherwise fill its rows to the end.
Elements expected(const test::Rings& rings, int n, int m) {
  const test::Vertices set(rings);
  const int maxX = static_cast<int>(std::ranges::max(set.x));
  const int lastJ = std::min((maxX + kShift) / kSize + 1, m - 2);
  Elements elements;
  for (int i = 2; i <= n - 2; ++i)
    for (int j = 2; j <= lastJ; ++j)
      if (test::isInside(rings, kSize * j - kShift, kSize * i - kShift)) elements.emplace(i, j);
  return elements;
}

TEST(RegionFill, FollowsItsRulesOnAllKindsOfTies) {
  test::RandomIntegers random(5);
  RegionFill fill;
  for (int count = 0; count < 20000; ++count) {
    const int n = random.between(4, 14), m = random.between(4, 14);
    const bool closed = random.between(0, 9) > 0;
    const test::Rings rings = test::randomRings(random, -9, 26, closed);
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
