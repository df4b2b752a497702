#include "spatial/grid_assignment.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
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
  GridAssignment assignment{diagnostics, reader};
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

  std::string pointAt(double localX, double localY) const {
    const double c = std::cos(frame.angle), s = std::sin(frame.angle);
    char text[80];
    std::snprintf(text, sizeof text, "%.6f %.6f\n", frame.x0 + localX * c - localY * s,
                  frame.y0 + localX * s + localY * c);
    return text;
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
  EXPECT_TRUE(wasWritten("...MIF POINT (     1 vertices) assigned a value of 1. to     1 cells\n"));
  EXPECT_TRUE(wasWritten("...MIF POINT (     1 vertices) assigned a value of 7. to     0 cells\n"));
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
  assignAll(square + square + "Point 1.5 1.5\n", "1\n2\n7\n", target);

  EXPECT_THAT(cellsOf(reals), UnorderedElementsAre(Pair(Pair(2, 2), 7.0), Pair(Pair(2, 3), 3.0),
                                                   Pair(Pair(3, 2), 3.0), Pair(Pair(3, 3), 3.0)));
  EXPECT_TRUE(
      wasWritten("...MIF REGION (     6 vertices /  1 polygons) assigned 2. to     4 cells\n"));
}

TEST_F(GridAssignmentTest, IntegerSumsStopAtTheBound) {
  AssignmentTarget target = integerTarget();
  target.regionsAdd = true;
  const std::string square = "Region 1\n5\n1 1\n2 1\n2 2\n1 2\n1 1\n";
  assignAll(square + square, "2e9\n2e9\n", target);

  EXPECT_THAT(cellsOf(integers), ElementsAre(Pair(Pair(2, 2), 2147483647)));
}

TEST_F(GridAssignmentTest, TurnedGridsFarFromTheOriginFindTheSameCells) {
  for (const double angle : {0.0, 0.5, 2.2, -1.9, 3.1}) {
    frame = {.x0 = 2512345.25,
             .y0 = 6512345.5,
             .angle = angle,
             .dx = 5,
             .dy = 5,
             .firstBound = kRows,
             .secondBound = kColumns};
    std::ranges::fill(reals, 0.0);
    // A region around the centres of rows 3 to 8 and columns 4 to 9 with a hole around those of
    // rows 5 to 6 and columns 6 to 7; a line over row 10, entering and leaving the grid;
    // a point; a line up column 12, leaving the grid.
    std::string objects = "Region 2\n5\n";
    for (const auto& [x, y] : {std::pair(16, 11), {44, 11}, {44, 39}, {16, 39}, {16, 11}})
      objects += pointAt(x, y);
    objects += "5\n";
    for (const auto& [x, y] : {std::pair(26, 21), {34, 21}, {34, 29}, {26, 29}, {26, 21}})
      objects += pointAt(x, y);
    objects += "  Center 0 0\nPline 2\n" + pointAt(-33, 46) + pointAt(133, 49);
    objects += "Point\n" + pointAt(97, 1);
    objects += "Pline 2\n" + pointAt(58, 36) + pointAt(58, 77);

    assignAll(objects, "1\n2\n3\n4\n", realTarget());

    std::map<std::pair<int, int>, double> expected{{{1, 20}, 3.0}};
    for (int i = 3; i <= 8; ++i)
      for (int j = 4; j <= 9; ++j)
        if (i < 5 || i > 6 || j < 6 || j > 7) expected[{i, j}] = 1.0;
    for (int j = 1; j <= 20; ++j) expected[{10, j}] = 2.0;
    for (int i = 8; i <= 10; ++i) expected[{i, 12}] = 4.0;
    EXPECT_EQ(cellsOf(reals), expected) << angle;
  }
}

TEST_F(GridAssignmentTest, ObjectsWithoutExtentSetNothing) {
  assignAll(
      "Line 5 5 5 5\nPline 0\nPline 1\n4.5 4.5\nPline 3\n2 2\n2 2\n2 2\n"
      "Region 1\n5\n4.5 4.5\n4.5 4.5\n4.5 4.5\n4.5 4.5\n4.5 4.5\n",
      "1\n2\n3\n4\n5\n", realTarget());

  EXPECT_TRUE(cellsOf(reals).empty());
  EXPECT_TRUE(wasWritten("...MIF PLINE (     0 vertices)"));
}

TEST_F(GridAssignmentTest, SegmentOverTooManyCellsEndsTheRunOnTheScreen) {
  EXPECT_THROW(assignAll("Line 0 0.5 10001 0.5\n", "1\n", realTarget()), test::ProcessEnded);
  EXPECT_TRUE(console.output.starts_with("SORRY - Exceeded limit of    10000 HX cells"));
  EXPECT_EQ(record->error_count, 0);
}

TEST(GridFrame, SubGridAreaIsRaisedToZeroAndLoweredToTheBounds) {
  const std::vector<double> x{7, -30, 12.5};
  const std::vector<double> y{99, 4, 5};
  const SubGridArea area = setSubGridArea(x, y, 5, 10, 20);
  EXPECT_EQ(area.firstLow, 1);    // trunc(4 / 5) + 1
  EXPECT_EQ(area.secondLow, 0);   // trunc(-30 / 5) + 1 = -5
  EXPECT_EQ(area.firstHigh, 10);  // trunc(99 / 5) + 1 = 20
  EXPECT_EQ(area.secondHigh, 3);
  EXPECT_EQ(area.minX, -30);
  EXPECT_EQ(area.minY, 4);
  EXPECT_EQ(area.maxX, 12.5);
  EXPECT_EQ(area.maxY, 99);
}

}  // namespace
}  // namespace nivaro
