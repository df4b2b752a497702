#include "spatial/grid_assignment.hpp"

#include <map>
#include <vector>

#include "spatial/layer_fixture.hpp"

namespace nivaro {
namespace {

using testing::ElementsAre;
using testing::Pair;
using testing::UnorderedElementsAre;

constexpr int kRows = 10;  // cells; the fields have two more elements at each side
constexpr int kColumns = 20;
constexpr int kN = kRows + 4;
constexpr int kM = kColumns + 4;

struct GridAssignmentTest : test::LayerTest {
  GridAssignment assignment{module.diagnostics, reader};
  GridFrame frame{.firstBound = kRows, .secondBound = kColumns};
  std::vector<double> reals = std::vector<double>(kN * kM, 0.0);
  std::vector<std::int32_t> integers = std::vector<std::int32_t>(kN * kM, 0);

  AssignmentTarget realTarget() { return {Grid<double>(reals.data(), kN, kM)}; }
  AssignmentTarget integerTarget() { return {Grid<std::int32_t>(integers.data(), kN, kM)}; }

  std::int32_t assignAll(std::string_view objects, std::string_view values,
                         const AssignmentTarget& target) {
    openLayer(objects, values);
    console.output.clear();
    std::int32_t count = 0;
    while (reader.objectsLeft(mif, mid))
      count = assignment.processNextObject(mif, mid, frame, target);
    return count;
  }

  // Cells (row, column) of the grid that hold something.
  template <typename T>
  static std::map<std::pair<int, int>, T> cellsOf(const std::vector<T>& field) {
    std::map<std::pair<int, int>, T> cells;
    for (int k = 0; k < kN * kM; ++k)
      if (const T value = field[static_cast<std::size_t>(k)]; value != T{})
        cells[{k % kN - 1, k / kN - 1}] = value;
    return cells;
  }
};

TEST_F(GridAssignmentTest, PointSetsTheCellAroundIt) {
  // Between two cells: the higher one. Up to one cell before the first edge: index 1; up to two:
  // index 0, which only the offset lifts into the field. Farther out: nothing.
  assignAll(
      "Point 3 4\nPoint -0.9 7.5\nPoint 5.5 -1.5\nPoint 5 -2\nPoint 20 5\nPoint 1 10\nPoint 1 "
      "-1e9\n",
      "1\n2\n3\n4\n5\n6\n7\n", realTarget());

  EXPECT_THAT(cellsOf(reals), UnorderedElementsAre(Pair(Pair(5, 4), 1.0), Pair(Pair(8, 1), 2.0),
                                                   Pair(Pair(0, 6), 3.0)));
  EXPECT_TRUE(shown("...MIF POINT (     1 vertices) assigned a value of 1. to     1 cells\n"));
  EXPECT_TRUE(shown("...MIF POINT (     1 vertices) assigned a value of 7. to     0 cells\n"));
}

TEST_F(GridAssignmentTest, EveryPointOfAMultipointAndSectionOfALineTellsItsCount) {
  const std::int32_t count = assignAll(
      "Multipoint 2\n1.5 1.5\n-9 0\nPline Multiple 2\n2\n-3 2.5\n4 2.5\n3\n1 3.5\n3 3.5\n1 3.5\n",
      "2.5\n-1.5\n", integerTarget());

  // Rounded away from zero. The first section sets columns 1 to 4 of row 3 (the cells of columns
  // before the grid do not count), the second columns 2 and 3 of row 4 twice.
  EXPECT_EQ(console.output,
            "...MIF MULTIPOINT (     1 vertices) assigned a value of 3 to     1 cells\n"
            "...MIF MULTIPOINT (     1 vertices) assigned a value of 3 to     0 cells\n"
            "...MIF PLINE MULTIPLE (     2 vertices) assigned a value of -2 to     5 cells\n"
            "...MIF PLINE MULTIPLE (     3 vertices) assigned a value of -2 to     4 cells\n");
  EXPECT_EQ(count, 4);
  EXPECT_THAT(cellsOf(integers),
              UnorderedElementsAre(Pair(Pair(2, 2), 3), Pair(Pair(3, 1), -2), Pair(Pair(3, 2), -2),
                                   Pair(Pair(3, 3), -2), Pair(Pair(3, 4), -2), Pair(Pair(4, 2), -2),
                                   Pair(Pair(4, 3), -2)));
}

TEST_F(GridAssignmentTest, RegionsAddWherePointsAndLinesSet) {
  AssignmentTarget target = realTarget();
  target.regionsAdd = true;
  const std::string square = "Region 1\n5\n1 1\n3 1\n3 3\n1 3\n1 1\n";
  // The first line leaves its first centre out, and the grid behind the last column; the second comes
  // from index 0, which no line sets: cell 1 reaches down to -1.
  assignAll(square + square + "Point 1.5 1.5\nLine 18.5 8.5 30 8.5\nLine 7.5 -2.5 7.5 1.5\n",
            "1\n2\n7\n5\n4\n", target);

  EXPECT_THAT(cellsOf(reals), UnorderedElementsAre(Pair(Pair(2, 2), 7.0), Pair(Pair(2, 3), 3.0),
                                                   Pair(Pair(3, 2), 3.0), Pair(Pair(3, 3), 3.0),
                                                   Pair(Pair(9, 20), 5.0), Pair(Pair(1, 8), 4.0),
                                                   Pair(Pair(2, 8), 4.0)));
  EXPECT_TRUE(shown("...MIF REGION (     6 vertices /  1 polygons) assigned 2. to     4 cells\n"));

  target = integerTarget();
  target.regionsAdd = true;
  const std::string cell = "Region 1\n5\n1 1\n2 1\n2 2\n1 2\n1 1\n";
  assignAll(cell + cell, "2e9\n2e9\n", target);  // as far as the integers go
  EXPECT_THAT(cellsOf(integers), ElementsAre(Pair(Pair(2, 2), 2147483647)));
  EXPECT_THROW(assignAll(cell, "2147483647.5\n", target), test::ProcessEnded);
  EXPECT_TRUE(shown("\nIts value is beyond the integers of 4 bytes: 2147483648.\n"));
}

TEST_F(GridAssignmentTest, SegmentOverTooManyCellsEndsTheRunOnTheScreen) {
  EXPECT_THROW(assignAll("Line 0 0.5 10001 0.5\n", "1\n", realTarget()), test::ProcessEnded);
  EXPECT_TRUE(console.output.starts_with(
      "SORRY - Exceeded limit of    10000 HX cells per HX polyline segment.  Contact "));
  EXPECT_EQ(record->error_count, 0);
}

}  // namespace
}  // namespace nivaro
