#include "spatial/segment_walk.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

#include "spatial/random_integers.hpp"

namespace nivaro {
namespace {

// The rules once more, in integers: a walk through the rows, to which the walk through the columns
// is brought by exchanging the axes. Cell sizes are even, so that centres are integers too.
struct IntegerWalk {
  int ax, ay, bx, by, dx, dy;
  bool exchanged;

  static int cell(int c, int size) { return c / size + 1; }

  // Beyond the first end and not beyond the second.
  static bool reaches(int from, int to, int at) {
    return from < to ? from < at && at <= to : to <= at && at < from;
  }

  // Where the segment meets the row's centre line: the one inexact step, so it keeps the order of
  // operations of the slope form (which of the two depends on the axis).
  double crossing(int y) const {
    if (exchanged) return ax + static_cast<double>(bx - ax) / (by - ay) * (y - ay);
    if (ax == bx) return ax;
    const double slope = static_cast<double>(by - ay) / (bx - ax);
    return ((ay - y) - ax * slope) / -slope;
  }

  // Whether the segment meets the column's centre line within the row around y: not at the lower
  // end of that piece, but at its upper end.
  bool meetsWithinRow(int x, int y) const {
    if (ax == bx || !reaches(ax, bx, x)) return false;
    const int run = std::abs(bx - ax);
    const int rise = ay * run + (by - ay) * std::abs(x - ax);  // of the meeting point, times run
    return 2 * rise > (2 * y - dy) * run && 2 * rise <= (2 * y + dy) * run;
  }

  std::vector<CellIndex> cells() const {
    const int rowA = cell(ay, dy), rowB = cell(by, dy), colA = cell(ax, dx), colB = cell(bx, dx);
    const int steps = std::max(std::abs(rowB - rowA), std::abs(colB - colA)) + 1;
    std::vector<CellIndex> list;
    const auto add = [&](int row, int column) {
      list.push_back(exchanged ? CellIndex{column, row} : CellIndex{row, column});
    };
    for (int k = 0; k < steps; ++k) {
      const int row = rowB < rowA ? rowA - k : rowA + k;
      const int y = (2 * row - 1) * dy / 2;
      const bool isEnd = k == 0 || k == steps - 1;
      const int endColumn = k == 0 ? colA : colB;
      if (reaches(ay, by, y))
        add(cell(y, dy), static_cast<int>(crossing(y) / dx) + 1);
      else if (isEnd && meetsWithinRow((2 * endColumn - 1) * dx / 2, y))
        add(row, endColumn);
    }
    return list;
  }
};

std::vector<CellIndex> expectedCells(int ax, int ay, int bx, int by, int dx, int dy) {
  if (ax == bx && ay == by) return {};
  if (std::abs(by - ay) > std::abs(bx - ax))
    return IntegerWalk{ax, ay, bx, by, dx, dy, false}.cells();
  return IntegerWalk{ay, ax, by, bx, dy, dx, true}.cells();
}

std::vector<CellIndex> walked(const Segment& segment, double dx, double dy) {
  SegmentWalk walk;
  const auto cells = walk.cells(segment, dx, dy);
  return {cells.value().begin(), cells.value().end()};
}

TEST(SegmentWalk, FollowsItsRulesOnAllKindsOfTies) {
  test::RandomIntegers random(4);
  for (int n = 0; n < 100000; ++n) {
    const int size = random.between(1, 3);
    const int dx = 2 * random.between(1, 3);
    const int dy = random.between(0, 3) == 0 ? 2 * size : dx;  // square cells, as a rule
    const int ax = random.between(-9, 24), ay = random.between(-9, 24);
    const int bx = ax + random.between(-12, 12), by = ay + random.between(-12, 12);
    const Segment segment{1.0 * ax, 1.0 * ay, 1.0 * bx, 1.0 * by};
    ASSERT_EQ(walked(segment, dx, dy), expectedCells(ax, ay, bx, by, dx, dy))
        << ax << ' ' << ay << ' ' << bx << ' ' << by << " cells " << dx << " x " << dy;
  }
}

TEST(SegmentWalk, TakesNoCellOfAPoint) {
  EXPECT_TRUE(walked({0.5, 0.49995, 0.5, 0.50004}, 1, 1).empty());  // over a centre line
  EXPECT_EQ(walked({0.5, 0.4999, 0.5, 0.50004}, 1, 1).size(), 1U);
}

// A thousand million rows lie between the ends: not to be walked through.
TEST(SegmentWalk, EndsWithItsSegmentHoweverFlatTheCells) {
  const std::vector<CellIndex> cells = walked({0.25, 0, 3.75, 1}, 1, 1e-9);
  ASSERT_EQ(cells.size(), 4U);
  for (std::size_t k = 0; k < 4; ++k) EXPECT_EQ(cells[k].second, static_cast<int>(k) + 1);
}

TEST(SegmentWalk, ListsTenThousandCellsAndNoMore) {
  EXPECT_EQ(walked({0, 0.5, 10000.2, 0.5}, 1, 1).size(), 10000U);

  // One cell more, and ends so far off that their products overflow.
  for (const Segment& segment : {Segment{0.5, 0, 0.5, 10000.7}, Segment{1, 2, 1e200, 4}}) {
    SegmentWalk walk;
    EXPECT_FALSE(walk.cells(segment, 1, 1));
  }
}

}  // namespace
}  // namespace nivaro
